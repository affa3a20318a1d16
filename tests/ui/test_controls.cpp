// How the buttons of the strip and the tool-bar draw themselves and react to pointer and keys.
#include "plugin/ui/controls/vlKeyUpTextField.h"
#include "plugin/ui/controls/vlPopupButton.h"
#include "plugin/ui/controls/vlPopupToolbarView.h"
#include "plugin/ui/controls/vlSettingsButton.h"
#include "tests/support/Warnings.h"
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
};

// A picture that was drawn for the other ratio has soft edges.
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
    }
}

// All sizes are in points. While a button is pressed, its title moves and its image does not.
TEST_F(Controls, DrawEachStateInItsPlace) {
    const auto check = [](auto &button, int imageTop, int titleTop, int pressedShift) {
        const QRect image((buttonWidth - imageSide) / 2, imageTop, imageSide, imageSide);
        const QRect aroundImage(0, 0, buttonWidth, titleTop);
        const QRect title(0, titleTop, buttonWidth, buttonHeight - titleTop);
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
        pointerAway(button);
        button.setEnabled(false);
        EXPECT_EQ(inkOf(picture(button), title), text);
        EXPECT_NE(picture(button).copy(title), plain.copy(title)) << "a disabled title is grey";
        button.setEnabled(true);
        EXPECT_EQ(picture(button), plain);
    };
    vlSettingsButton settings;
    prepare(settings);
    check(settings, 10, 40, -1);
    settings.setEnabled(false);
    pointerOver(settings);
    EXPECT_FALSE(settings.isEntered());
    vlPopupButton popup;
    prepare(popup);
    check(popup, buttonHeight - imageSide - 20, 43, 1);
}

TEST_F(Controls, StayLegibleOnADarkPalette) {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, QColor(240, 240, 240));
    dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(130, 130, 130));
    vlSettingsButton button;
    EXPECT_EQ(textColor(button, false), QColor(Qt::darkGray));
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
    const QPoint belowTheImage((buttonWidth - imageSide) / 2 - 3, buttonHeight - 20 + 6);
    EXPECT_EQ(menu.pos(), button.mapToGlobal(belowTheImage));
    menu.close();
    EXPECT_EQ(actions, 0) << "a press only opens the menu";
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
    EXPECT_EQ(view.focusPolicy(), Qt::TabFocus);
    QTest::keyClick(&view, Qt::Key_A);
    EXPECT_FALSE(menu->isVisible());
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
