// How the buttons of the strip draw themselves, and whom a text field tells.
#include "plugin/ui/controls/vlKeyUpTextField.h"
#include "plugin/ui/controls/vlPopupButton.h"
#include "plugin/ui/controls/vlSettingsButton.h"
#include "tests/ui/UiFixture.h"

namespace {

constexpr int buttonWidth = 168;
constexpr int buttonHeight = 60;
constexpr int imageSide = 16; // the side of a test image

QImage picture(QWidget &widget, int ratio = 1) {
    QImage image(widget.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

// The smallest rectangle around all pixels that are not white.
QRect inkOf(const QImage &image, const QRect &within) {
    QRect ink;
    for (int y = within.top(); y <= within.bottom(); ++y)
        for (int x = within.left(); x <= within.right(); ++x)
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                ink |= QRect(x, y, 1, 1);
    return ink;
}

} // namespace

class Controls : public UiTest {};

// All sizes are in points. While a button is pressed, its title moves and its image does not. A picture that
// was drawn for the other ratio has soft edges.
TEST_F(Controls, DrawEachStateInItsPlace) {
    const auto check = [](auto &button, int imageTop, int titleTop, int pressedShift) {
        const QRect image((buttonWidth - imageSide) / 2, imageTop, imageSide, imageSide);
        const QRect aroundImage(0, 0, buttonWidth, titleTop);
        const QRect title(0, titleTop, buttonWidth, buttonHeight - titleTop);
        button.resize(buttonWidth, buttonHeight);
        button.setImage(BundleImage(u"some image"_s));
        button.setTitle(u"Add a meeting"_s);
        button.show();
        const QImage plain = picture(button);
        EXPECT_EQ(inkOf(plain, aroundImage), image);
        const QRect text = inkOf(plain, title);
        EXPECT_NEAR(text.center().x(), button.width() / 2, 8);
        button.setDown(true);
        EXPECT_EQ(inkOf(picture(button), aroundImage), image);
        EXPECT_EQ(inkOf(picture(button), title).top(), text.top() + pressedShift);
        button.setDown(false);
        pointerOver(button);
        EXPECT_EQ(inkOf(picture(button), aroundImage), image.adjusted(-3, -3, 3, 3));
        button.hide();
        button.show(); // forgets where the pointer was
        EXPECT_EQ(inkOf(picture(button), aroundImage), image);
        pointerOver(button);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&button, &leave);
        button.setEnabled(false);
        EXPECT_EQ(inkOf(picture(button), title), text);
        EXPECT_NE(picture(button).copy(title), plain.copy(title)) << "a disabled title is grey";
        button.setEnabled(true);
        EXPECT_EQ(picture(button, 2).pixelColor(2 * image.center()), QColor(Qt::darkBlue));
        EXPECT_EQ(picture(button), plain);
    };
    vlSettingsButton settings;
    check(settings, 10, 40, -1);
    settings.setEnabled(false);
    pointerOver(settings);
    EXPECT_FALSE(settings.isEntered());
    vlPopupButton popup;
    check(popup, buttonHeight - imageSide - 20, 43, 1);
    EXPECT_EQ(textColor(popup, false), QColor(Qt::darkGray));
    popup.setPalette(QColor(30, 30, 30));
    EXPECT_EQ(textColor(popup, true), QColor(Qt::white)) << "on a dark palette it stays legible";
}

TEST_F(Controls, OfTheTextKindTellTheirTargetsUntilTheseAreGone) {
    QString told;
    vlKeyUpTextField field;
    auto target = std::make_unique<QObject>();
    field.setKeyup(target.get(), [&told](vlKeyUpTextField *sender) { told += "key " + sender->text(); });
    field.setTextChange(target.get(), [&told](vlKeyUpTextField *sender) { told += sender->text() + ", "; });
    QTest::keyClick(&field, Qt::Key_A);
    EXPECT_EQ(told, "a, key a");
    target.reset();
    QTest::keyClick(&field, Qt::Key_B);
    EXPECT_EQ(told, "a, key a");
}
