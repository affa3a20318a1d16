#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"
#include "standin/mailhost/windows/main/MainWindowController.h"

namespace mailhost {

rt::Value MainWindowController::toolBarItem(const rt::Value &, const QString &identifier, bool) {
    return rt::fromObject(m_toolBarItems->item(identifier));
}

QVariantList MainWindowController::defaultIdentifiers(const rt::Value &) {
    return MainToolBarItems::defaultIdentifiers();
}

QVariantList MainWindowController::allowedIdentifiers(const rt::Value &) {
    return MainToolBarItems::allowedIdentifiers();
}

AppDelegate::AppDelegate()
    : rt::Object(rt::classNamed(u"ErageAppDelegate"_s)) {}

void AppDelegate::newCalendarMeeting(const rt::Value &) {
    rt::send(editorWindowClass(), "showWindowForNewMeeting");
}

void defineMainWindowClasses() {
    using C = MainWindowController;
    addMethods(rt::defineClass(u"ERageMainWindowController"_s),
               {{"window", bind<&C::window>, "@@:"},
                {"toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:", bind<&C::toolBarItem>, "@@:@@B"},
                {"toolbarDefaultItemIdentifiers:", bind<&C::defaultIdentifiers>, "@@:@"},
                {"toolbarAllowedItemIdentifiers:", bind<&C::allowedIdentifiers>, "@@:@"}});
    addMethods(rt::defineClass(u"ErageAppDelegate"_s),
               {{"newCalendarMeeting:", bind<&AppDelegate::newCalendarMeeting>, "v@:@"}});
}

} // namespace mailhost
