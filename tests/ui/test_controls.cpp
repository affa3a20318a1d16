#include "plugin/ui/controls/vlKeyUpTextField.h"
#include "plugin/ui/controls/vlPopupButton.h"
#include "plugin/ui/controls/vlPopupToolbarView.h"
#include "plugin/ui/controls/vlSettingsButton.h"
#include "tests/support/Warnings.h"
#include "tests/ui/UiFixture.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QMenu>
#include <QPainter>
#include <QtTest/QTest>

namespace {

constexpr int buttonWidth = 168;
constexpr int buttonHeight = 60;
constexpr int imageSide = 16; // of the doubles' images
constexpr QRect imageArea((buttonWidth - imageSide) / 2, 10, imageSide, imageSide);

QImage picture(QWidget &widget, int ratio = 1) {
    QImage image(widget.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

// The smallest rectangle that holds every pixel that is not white.
QRect inkOf(const QImage &image, const QRect &within) {
    QRect ink;
    for (int y = within.top(); y <= within.bottom(); ++y)
        for (int x = within.left(); x <= within.right(); ++x)
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                ink |= QRect(x, y, 1, 1);
    return ink;
}

void pointerOver(QWidget &widget) {
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QApplication::sendEvent(&widget, &enter);
}

void pointerAway(QWidget &widget) {
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&widget, &leave);
}

} // namespace

class Controls : public UiTest {
protected:
    template<typename Button>
    void prepare(Button &button) {
        button.resize(buttonWidth, buttonHeight);
        button.setImage(BundleImage(u"some image"_s));
        button.setTitle(u"Add a meeting"_s);
    }
    static constexpr QRect titleArea{0, 30, buttonWidth, 30};
};

TEST_F(Controls, DrawNothingWithoutImageOrTitle) {
    desktop.bundle->missingImages.insert(u"absent"_s);
    const auto check = [](auto &button) {
        button.resize(buttonWidth, buttonHeight);
        button.setTitle(u"Title"_s);
        button.setImage(BundleImage(u"absent"_s));
        EXPECT_TRUE(inkOf(picture(button), button.rect()).isNull());
        button.setTitle(QString());
        button.setImage(BundleImage(u"there"_s));
        EXPECT_TRUE(inkOf(picture(button), button.rect()).isNull());
        button.setTitle(u"Title"_s);
        EXPECT_FALSE(inkOf(picture(button), button.rect()).isNull());
        button.setTitle(u""_s); // a table without the words is no reason to hide the picture
        EXPECT_FALSE(inkOf(picture(button), button.rect()).isNull());
    };
    vlSettingsButton settings;
    check(settings);
    vlPopupButton popup;
    check(popup);
}

TEST_F(Controls, PutTheImageTenPointsBelowTheTopAndTheTitleAtTheBottom) {
    vlSettingsButton button;
    prepare(button);
    const QImage drawn = picture(button);
    EXPECT_EQ(inkOf(drawn, QRect(0, 0, buttonWidth, 30)), imageArea);
    const QRect title = inkOf(drawn, titleArea);
    EXPECT_GE(title.top(), 45);
    EXPECT_LE(title.bottom(), buttonHeight - 3);
    button.setTitle(u"12345678901234567890"_s);
    EXPECT_DOUBLE_EQ(button.titleX(), 26);
}

// Of the plug-in's own pictures, at every pixel: a drawing that was made for the other ratio has soft edges.
TEST_F(Controls, AreCrispAtEveryRatio) {
    platform::services().pluginBundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    constexpr QRect area((buttonWidth - 32) / 2, 10, 32, 32); // points
    for (const int ratio : {1, 2}) {
        vlSettingsButton settings;
        prepare(settings);
        settings.setImage(BundleImage(u"Schedule_Meeting_normal"_s));
        const QImage drawn = picture(settings, ratio);
        const QRect pixels(area.topLeft() * ratio, area.size() * ratio);
        QImage expected(pixels.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::white);
        QPainter painter(&expected);
        painter.drawImage(expected.rect(),
                          platform::services().pluginBundle->image(u"Schedule_Meeting_normal"_s, ratio));
        painter.end();
        EXPECT_EQ(drawn.copy(pixels), expected) << ratio;
        pointerOver(settings);
        const QImage hovered = picture(settings, ratio);
        const QRect ring = pixels.adjusted(-3 * ratio, -3 * ratio, 3 * ratio, 3 * ratio);
        EXPECT_EQ(inkOf(hovered, QRect(0, 0, buttonWidth * ratio, 45 * ratio)), ring) << ratio;
    }
}

// Each kind in each state, in points: what is drawn at the double ratio is the same, twice as large.
TEST_F(Controls, DrawEachStateInItsPlaceAtEveryRatio) {
    const auto check = [](auto &button, int imageTop, int titleTop, int pressedShift) {
        const QRect image((buttonWidth - imageSide) / 2, imageTop, imageSide, imageSide);
        button.show();
        for (const int ratio : {1, 2}) {
            SCOPED_TRACE(ratio);
            const auto scaled = [ratio](const QRect &area) {
                return QRect(area.topLeft() * ratio, area.size() * ratio);
            };
            const QRect aroundImage = scaled(QRect(0, 0, buttonWidth, titleTop));
            const QRect title = scaled(QRect(0, titleTop, buttonWidth, buttonHeight - titleTop));
            const QImage plain = picture(button, ratio);
            EXPECT_EQ(inkOf(plain, aroundImage), scaled(image));
            const QRect words = inkOf(plain, title);
            EXPECT_NEAR(words.center().x(), button.width() * ratio / 2, 8 * ratio);
            button.setDown(true);
            const QImage pressed = picture(button, ratio);
            button.setDown(false);
            EXPECT_EQ(inkOf(pressed, aroundImage), scaled(image));
            EXPECT_EQ(inkOf(pressed, title).top(), words.top() + pressedShift * ratio);
            pointerOver(button);
            EXPECT_EQ(inkOf(picture(button, ratio), aroundImage), scaled(image.adjusted(-3, -3, 3, 3)));
            pointerAway(button);
            button.setEnabled(false);
            const QImage disabled = picture(button, ratio);
            button.setEnabled(true);
            EXPECT_EQ(inkOf(disabled, aroundImage), scaled(image));
            EXPECT_EQ(inkOf(disabled, title), words);
            EXPECT_NE(disabled.copy(title), plain.copy(title)) << "in gray";
            EXPECT_EQ(picture(button, ratio), plain);
        }
    };
    vlSettingsButton settings;
    prepare(settings);
    check(settings, 10, 40, -1);
    vlPopupButton popup;
    prepare(popup);
    check(popup, buttonHeight - imageSide - 20, 43, 1);
}

TEST_F(Controls, CutATitleThatDoesNotFitWithAnEllipsis) {
    vlSettingsButton button;
    prepare(button);
    const auto shown = [](const QString &title, int width) {
        ButtonFace face;
        face.setTitle(title);
        return face.titleLine(width);
    };
    const QString title = u"Add a meeting to this appointment"_s;
    EXPECT_EQ(shown(title, 400).text, title);
    const TitleLine cut = shown(title, 60);
    EXPECT_TRUE(cut.text.endsWith(QChar(0x2026))) << qPrintable(cut.text);
    EXPECT_LE(cut.x + QFontMetricsF(cut.font).horizontalAdvance(cut.text), 60);
    EXPECT_EQ(cut.x, 0) << "its beginning is not cut";
    EXPECT_EQ(shown(u"&Add"_s, 60).underlineX, shown(u"&Add"_s, 60).x);
}

TEST_F(Controls, KeepTheFocusMarkOffTheTitle) {
    const auto check = [](auto &button, int imageBottom) {
        QWidget window;
        button.setParent(&window);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        button.show();
        button.clearFocus();
        const QImage plain = picture(button);
        button.setFocus(Qt::TabFocusReason);
        const QImage marked = picture(button);
        EXPECT_NE(marked, plain);
        const QRect below(0, imageBottom + 4, buttonWidth, buttonHeight - imageBottom - 4);
        EXPECT_EQ(marked.copy(below), plain.copy(below));
        button.setParent(nullptr);
    };
    vlSettingsButton settings;
    prepare(settings);
    check(settings, 10 + imageSide);
    vlPopupButton popup;
    prepare(popup);
    check(popup, buttonHeight - 20);
}

TEST_F(Controls, MoveTheTitleUpByOnePointWhilePressed) {
    vlSettingsButton button;
    prepare(button);
    const QRect before = inkOf(picture(button), titleArea);
    button.setDown(true);
    EXPECT_EQ(inkOf(picture(button), titleArea), before.translated(0, -1));
}

TEST_F(Controls, OfThePopUpKindMeasureFromTheBottomAndMoveTheTitleDown) {
    vlPopupButton button;
    prepare(button);
    const QImage drawn = picture(button);
    const QRect image((buttonWidth - imageSide) / 2, buttonHeight - imageSide - 20, imageSide, imageSide);
    EXPECT_EQ(inkOf(drawn, QRect(0, 0, buttonWidth, 41)), image);
    EXPECT_EQ(button.iconRect(), QRectF(image.x() - 3, image.y() + imageSide + 6, imageSide, imageSide));
    const QRect before = inkOf(drawn, QRect(0, 42, buttonWidth, 18));
    button.setDown(true);
    EXPECT_EQ(inkOf(picture(button), QRect(0, 42, buttonWidth, 18)).top(), before.top() + 1);
}

TEST_F(Controls, ShowTheHighlightWhileThePointerIsOver) {
    vlSettingsButton button;
    prepare(button);
    button.show();
    pointerOver(button);
    const QRect top(0, 0, buttonWidth, 40);
    EXPECT_EQ(inkOf(picture(button), top), imageArea.adjusted(-3, -3, 3, 3));
    button.setEnabled(false);
    EXPECT_EQ(inkOf(picture(button), top), imageArea) << "disabled under the pointer";
    button.setEnabled(true);
    pointerAway(button);
    EXPECT_EQ(inkOf(picture(button), top), imageArea);
    button.setEnabled(false);
    pointerOver(button);
    EXPECT_FALSE(button.isEntered());
}

TEST_F(Controls, DrawTheirTitleInGrayWhenDisabled) {
    const auto darkest = [](const QImage &image) {
        int gray = 255;
        for (int y = titleArea.top(); y <= titleArea.bottom(); ++y)
            for (int x = 0; x < image.width(); ++x)
                gray = std::min(gray, qGray(image.pixel(x, y)));
        return gray;
    };
    vlSettingsButton button;
    prepare(button);
    EXPECT_LT(darkest(picture(button)), 90);
    button.setEnabled(false);
    EXPECT_GT(darkest(picture(button)), 120);
    EXPECT_LT(darkest(picture(button)), 150) << "too pale to be read";
}

TEST_F(Controls, StayLegibleOnADarkPalette) {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, QColor(240, 240, 240));
    dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(130, 130, 130));
    vlSettingsButton button;
    button.setPalette(dark);
    EXPECT_EQ(textColor(button, true), QColor(240, 240, 240));
    EXPECT_EQ(textColor(button, false), QColor(130, 130, 130));
}

TEST_F(Controls, OpenTheMenuOnlyForAPointerThatIsInside) {
    expectWarning(u"This plugin does not support"_s); // menus, without a real display
    QMenu menu;
    menu.addAction(u"Item"_s);
    vlPopupButton button;
    prepare(button);
    button.setMenu(&menu);
    int actions = 0;
    QObject::connect(&button, &QAbstractButton::clicked, [&actions] { ++actions; });
    button.show();
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), button.mapToGlobal(QPointF(5, 5)),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&button, &press);
    EXPECT_FALSE(menu.isVisible());
    pointerOver(button);
    QApplication::sendEvent(&button, &press);
    EXPECT_TRUE(menu.isVisible());
    EXPECT_EQ(menu.pos(), button.mapToGlobal(button.iconRect().topLeft().toPoint()));
    menu.close();
    EXPECT_EQ(actions, 0) << "the button's own action is not for a press";
}

TEST_F(Controls, OfTheToolBarOpenTheirMenuByPointerAndByKey) {
    expectWarning(u"This plugin does not support"_s);
    auto menu = std::make_shared<QMenu>();
    menu->addAction(u"Item"_s);
    vlPopupToolbarView view;
    view.resize(32, 32);
    view.setImage(BundleImage(u"some image"_s));
    QTest::mouseClick(&view, Qt::LeftButton); // without a menu nothing happens
    view.setMenu(menu);
    EXPECT_EQ(inkOf(picture(view), view.rect()), view.rect()) << "the image fills the view";
    view.show();
    QTest::mousePress(&view, Qt::LeftButton);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(menu->pos(), view.mapToGlobal(QPoint(0, 32)));
    menu->close();
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_TRUE(menu->isVisible());
    menu->close();
}

TEST_F(Controls, OfTheTextKindTellTheirTargetsUntilTheseAreGone) {
    QStringList told;
    vlKeyUpTextField field;
    auto target = std::make_unique<QObject>();
    field.setKeyup(target.get(), [&told](vlKeyUpTextField *sender) { told.append("key " + sender->text()); });
    field.setTextChange(target.get(),
                        [&told](vlKeyUpTextField *sender) { told.append("text " + sender->text()); });
    QTest::keyClick(&field, Qt::Key_A);
    EXPECT_EQ(told, QStringList({"text a", "key a"}));
    field.setText(u"by program"_s);
    EXPECT_EQ(told.size(), 2);
    target.reset();
    QTest::keyClick(&field, Qt::Key_B);
    EXPECT_EQ(told.size(), 2);
}

TEST_F(Controls, MarkTheMnemonicAndLeaveItOutOfTheName) {
    vlSettingsButton button;
    button.setTitle(u"Save && &close"_s);
    EXPECT_EQ(button.title(), u"Save & close"_s);
    EXPECT_EQ(button.accessibleName(), u"Save & close"_s);
    EXPECT_EQ(button.shortcut(), QKeySequence(Qt::ALT | Qt::Key_C));
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&button);
    ASSERT_TRUE(accessible);
    EXPECT_EQ(accessible->role(), QAccessible::Button);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"Save & close"_s);
}
