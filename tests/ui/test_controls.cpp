// How the bar and the buttons draw themselves, and whom a text field tells.
#include "plugin/ui/controls/BusyBar.h"
#include "plugin/ui/controls/vlKeyUpTextField.h"
#include "plugin/ui/controls/vlPopupButton.h"
#include "plugin/ui/controls/vlPopupToolbarView.h"
#include "plugin/ui/controls/vlSettingsButton.h"
#include "tests/ui/UiFixture.h"

namespace {

constexpr int buttonWidth = 168;
constexpr int buttonHeight = 60;
constexpr int imageSide = 16; // the side of a test image

// The smallest rectangle around all pixels that are not white.
QRect inkOf(const QImage &image, const QRect &within) {
    QRect ink;
    for (int y = within.top(); y <= within.bottom(); ++y)
        for (int x = within.left(); x <= within.right(); ++x)
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                ink |= QRect(x, y, 1, 1);
    return ink;
}

struct DesktopStyle : QProxyStyle {
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override {
        return hints.value(hint, QProxyStyle::styleHint(hint, option, widget, data));
    }
    QMap<StyleHint, int> hints;
};

} // namespace

class Controls : public UiTest {};

// All sizes are in points. While a button is pressed, its title moves and its image does not. A picture that
// was drawn for the other ratio has soft edges.
TEST_F(Controls, DrawEachStateInItsPlace) {
    ButtonFace face;
    face.setTitle(u"Add a meeting"_s);
    const TitleLine line = face.titleLine(buttonWidth);
    const auto check = [&line](auto &button, int imageTop, int titleTop, double baseline, int pressedShift) {
        const QRect image((buttonWidth - imageSide) / 2, imageTop, imageSide, imageSide);
        const QRect aroundImage(0, 0, buttonWidth, titleTop);
        const QRect upperHalf(0, 0, buttonWidth, imageTop + imageSide / 2);
        const QRect title(0, titleTop, buttonWidth, buttonHeight - titleTop);
        button.resize(buttonWidth, buttonHeight);
        button.setImage(BundleImage(u"some image"_s));
        QImage expected = picture(button);
        EXPECT_TRUE(inkOf(expected, expected.rect()).isEmpty()) << "it has no title yet";
        QPainter painter(&expected);
        painter.setFont(line.font);
        painter.drawText(QPointF(line.x, baseline), line.text);
        button.setTitle(u"Add a meeting"_s);
        button.show();
        const QImage plain = picture(button);
        EXPECT_EQ(plain.copy(title), expected.copy(title));
        EXPECT_EQ(inkOf(plain, aroundImage), image);
        const QRect text = inkOf(plain, title);
        EXPECT_NEAR(text.center().x(), button.width() / 2, 8);
        button.setDown(true);
        EXPECT_EQ(inkOf(picture(button), aroundImage), image);
        EXPECT_EQ(inkOf(picture(button), title).top(), text.top() + pressedShift);
        button.setDown(false);
        EXPECT_TRUE(repaints(button, [&button] { pointerOver(button); }));
        ASSERT_TRUE(QTest::qWaitForWindowActive(&button));
        button.setFocus();
        EXPECT_EQ(inkOf(picture(button), upperHalf), image.adjusted(-4, -4, 4, 4) & upperHalf);
        button.clearFocus();
        EXPECT_EQ(inkOf(picture(button), aroundImage), image.adjusted(-3, -3, 3, 3));
        button.hide();
        EXPECT_FALSE(button.isEntered());
        button.show(); // forgets where the pointer was
        EXPECT_EQ(inkOf(picture(button), aroundImage), image);
        button.resize(buttonWidth, buttonHeight + 1);
        EXPECT_TRUE(button.isEntered()) << "the pointer is over it";
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&button, &leave);
        EXPECT_FALSE(button.isEntered());
        button.resize(buttonWidth, buttonHeight);
        button.setEnabled(false);
        EXPECT_EQ(inkOf(picture(button), title), text);
        EXPECT_NE(picture(button).copy(title), plain.copy(title)) << "a disabled title is grey";
        button.setEnabled(true);
        EXPECT_EQ(picture(button, 2).pixelColor(2 * image.center()), QColor(Qt::darkBlue));
        QPalette palette;
        palette.setColor(QPalette::ButtonText, Qt::red);
        button.setPalette(palette);
        button.setFont(QFont(u"Sans"_s, 30));
        EXPECT_EQ(picture(button), plain) << "a title has its own colour and size";
    };
    vlSettingsButton settings;
    check(settings, 10, 40, buttonHeight - 2 - line.descent, -1);
    pointerOver(settings);
    settings.setEnabled(false);
    EXPECT_FALSE(settings.isEntered());
    pointerOver(settings);
    EXPECT_FALSE(settings.isEntered());
    vlPopupButton popup;
    check(popup, buttonHeight - imageSide - 20, 43, buttonHeight - 20 + 5 + line.ascent, 1);
    EXPECT_EQ(textColor(popup, false), QColor(Qt::darkGray));
    popup.setPalette(QColor(30, 30, 30));
    EXPECT_EQ(textColor(popup, true), QColor(Qt::white)) << "on a dark palette it stays legible";
}

TEST_F(Controls, LeaveOtherKeysToTheirWindow) {
    QDialog window;
    vlSettingsButton settings(&window);
    EXPECT_FALSE(settings.autoDefault()) << "Return in a field would press it";
    vlPopupButton popup;
    vlPopupToolbarView view;
    for (QWidget *control : std::initializer_list<QWidget *>{&settings, &popup, &view}) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        QApplication::sendEvent(control, &key);
        EXPECT_FALSE(key.isAccepted()) << control->metaObject()->className();
    }
}

// The letters of these titles have no descenders: the underline is all that is below them.
TEST_F(Controls, UnderlineOneMnemonicAndShortenATitleThatIsTooLong) {
    DesktopStyle style;
    vlSettingsButton button;
    button.setStyle(&style);
    button.resize(buttonWidth, buttonHeight);
    button.setImage(BundleImage(u"some image"_s));
    constexpr int sharp = 8; // the underline may be less than a point below the letters
    const QRect lower(0, 40 * sharp, buttonWidth * sharp, (buttonHeight - 40) * sharp);
    for (const bool first : {true, false}) {
        button.setTitle(first ? u"&nnnnn &nnnn"_s : u"nnnnn nnn&n"_s);
        style.hints[QStyle::SH_UnderlineShortcut] = 0;
        const QRect text = inkOf(picture(button, sharp), lower);
        style.hints[QStyle::SH_UnderlineShortcut] = 1;
        const QRect below(QPoint(0, text.bottom() + 1), lower.bottomRight());
        const QRect line = inkOf(picture(button, sharp), below);
        EXPECT_TRUE(line.height() > sharp / 2 && line.width() < text.width() / 4) << line.width();
        EXPECT_NEAR(first ? line.left() : line.right(), first ? text.left() : text.right(), 2 * sharp);
    }
    button.show();
    EXPECT_TRUE(repaints(button, [&button] { button.setImage(BundleImage()); }));
    button.setTitle(u"Fish && chips &"_s);
    EXPECT_EQ(button.title(), u"Fish & chips &"_s);

    ButtonFace face;
    face.setTitle(u"WWWWWWWWWW"_s);
    for (const bool fits : {false, true}) {
        const double width = fits ? 300 : 100;
        const TitleLine line = face.titleLine(width);
        EXPECT_LE(line.x + QFontMetricsF(line.font).horizontalAdvance(line.text), width);
        EXPECT_EQ(line.text == face.mLable, fits);
    }
}

// A still bar must not look complete: the segment is in the middle of a faint groove.
TEST_F(Controls, OfUnknownDurationMoveWhileTheyAreShownIfTheDesktopAnimates) {
    DesktopStyle style;
    style.hints[QStyle::SH_Widget_Animation_Duration] = 0;
    BusyBar bar;
    bar.setStyle(&style);
    bar.resize(bar.sizeHint() + QSize(0, 20)); // it keeps its height
    bar.show();
    QTest::qWait(50);
    const QImage still = picture(bar);
    EXPECT_EQ(inkOf(still, still.rect()), QRect(0, 0, 312, 8));
    const QColor piece = bar.palette().color(QPalette::Highlight);
    EXPECT_TRUE(still.pixelColor(120, 0) == piece && still.pixelColor(191, 7) == piece);
    EXPECT_TRUE(still.pixelColor(109, 4) != piece && still.pixel(109, 4) != still.pixel(20, 4)) << "jagged";
    for (const int x : {20, 290}) {
        const int lightness = still.pixelColor(x, 4).lightness();
        EXPECT_TRUE(lightness > 128 && lightness < 255) << lightness;
        EXPECT_EQ(still.pixel(x, 0), still.pixel(x, 4)) << "it has a frame";
    }
    EXPECT_TRUE(bar.minimum() == 0 && bar.maximum() == 0) << "a screen reader would read a percentage";
    bar.hide();
    style.hints[QStyle::SH_Widget_Animation_Duration] = 1;
    bar.show();
    EXPECT_TRUE(repaints(bar, [] {}));
    EXPECT_NE(picture(bar), still);
    bar.hide();
    EXPECT_EQ(picture(bar), still);
    auto *timer = bar.findChild<QTimer *>();
    EXPECT_FALSE(timer->isActive());
    for (const int x : {311 - 10, 156, 10, 156}) { // to the right, to the left and back
        for (int frame = 0; frame < 20; ++frame)
            QMetaObject::invokeMethod(timer, "timeout");
        EXPECT_EQ(picture(bar).pixelColor(x, 4), piece);
    }
    EXPECT_EQ(picture(bar), still);
}

TEST_F(Controls, OfTheTextKindTellTheirTargetsUntilTheseAreGoneOrDropped) {
    for (const bool drops : {false, true}) {
        QString told;
        vlKeyUpTextField field;
        auto target = std::make_unique<QObject>();
        field.setKeyup(target.get(), [&told](vlKeyUpTextField *) { told += "key"; });
        field.setTextChange(target.get(),
                            [&told](vlKeyUpTextField *sender) { told += sender->text() + ", "; });
        QTest::keyClick(&field, Qt::Key_A);
        drops ? field.cleanUp() : target.reset();
        QTest::keyClick(&field, Qt::Key_B);
        EXPECT_EQ(told, "a, key");
    }
}
