#include "tests/ui/UiFixture.h"

#include "platform/toolkit/Windows.h"
#include "plugin/link/linkPorts.h"
#include "plugin/link/linkSession.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/vlCommon.h"
#include "plugin/link/vlMeetingCommon.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/workflowPorts.h"
#include "plugin/workflow/workflowSession.h"

#include <QApplication>
#include <QDialog>

namespace {

template<typename T, auto Member>
rt::Value read(rt::Object *self, rt::Selector, rt::Args) {
    return rt::Value::fromValue(static_cast<T *>(self)->*Member);
}

rt::Class *eventClass() {
    static rt::Class *cls = [] {
        rt::Class *made = rt::defineClass(u"ECCalendarEvent"_s);
        rt::addMethod(made, "isOwner", read<HostEvent, &HostEvent::owner>, "B@:");
        rt::addMethod(made, "isOccurrence", read<HostEvent, &HostEvent::occurrence>, "B@:");
        rt::addMethod(made, "isModifiedException", read<HostEvent, &HostEvent::exception>, "B@:");
        rt::addMethod(made, "olmUCCapabilities", read<HostEvent, &HostEvent::stored>, "@@:");
        rt::addMethod(
            made, "summary", [](rt::Object *, rt::Selector, rt::Args) { return rt::Value("Review"); }, "@@:");
        return made;
    }();
    return cls;
}

rt::Class *accountClass() {
    static rt::Class *cls = [] {
        rt::Class *made = rt::defineClass(u"ECEmailAccount"_s);
        rt::addMethod(made, "emailAddress", read<HostAccount, &HostAccount::address>, "@@:");
        return made;
    }();
    return cls;
}

rt::Class *editorClass() {
    static rt::Class *cls = [] {
        rt::Class *made = rt::defineClass(u"ERCalendarEventEditorViewController"_s);
        rt::addMethod(
            made, "content",
            [](rt::Object *self, rt::Selector, rt::Args) {
                return rt::fromObject(&static_cast<HostEditor *>(self)->event);
            },
            "@@:");
        rt::addMethod(
            made, "view",
            [](rt::Object *self, rt::Selector, rt::Args) {
                return rt::fromWidget(static_cast<HostEditor *>(self)->view);
            },
            "@@:");
        rt::addMethod(
            made, "currentEmailAccount",
            [](rt::Object *self, rt::Selector, rt::Args) {
                return rt::fromObject(&static_cast<HostEditor *>(self)->account);
            },
            "@@:");
        rt::addMethod(made, "uncommittedChanges", read<HostEditor, &HostEditor::uncommitted>, "@@:");
        rt::addMethod(made, "isCancelMode", read<HostEditor, &HostEditor::cancelMode>, "B@:");
        rt::addMethod(made, "isOccurrenceOrException", read<HostEditor, &HostEditor::occurrenceOrException>,
                      "B@:");
        rt::addMethod(made, "isDirty", read<HostEditor, &HostEditor::dirty>, "B@:");
        rt::addMethod(made, "isDelegating", read<HostEditor, &HostEditor::delegating>, "B@:");
        rt::addMethod(
            made, "setIsDirty:",
            [](rt::Object *self, rt::Selector, rt::Args arguments) {
                static_cast<HostEditor *>(self)->dirty = rt::boolValue(arguments[0]);
                return rt::Value();
            },
            "v@:B");
        rt::addMethod(
            made, "vl_ERCalendarEventEditorViewController_save",
            [](rt::Object *self, rt::Selector, rt::Args) {
                auto *editor = static_cast<HostEditor *>(self);
                ++editor->hostSaves;
                if (editor->onSave)
                    editor->onSave();
                return rt::Value(true);
            },
            "B@:");
        return made;
    }();
    return cls;
}

rt::Class *windowControllerClass() {
    static rt::Class *cls = [] {
        rt::Class *made = rt::defineClass(u"ERCalendarEventEditorWindowController"_s);
        rt::addMethod(
            made, "window",
            [](rt::Object *self, rt::Selector, rt::Args) {
                return rt::fromWidget(static_cast<HostEditorWindow *>(self)->window);
            },
            "@@:");
        rt::addMethod(
            made, "editorViewController",
            [](rt::Object *self, rt::Selector, rt::Args) {
                return rt::fromObject(&static_cast<HostEditorWindow *>(self)->editor);
            },
            "@@:");
        return made;
    }();
    return cls;
}

} // namespace

HostEvent::HostEvent()
    : Object(eventClass()) {}

HostAccount::HostAccount()
    : Object(accountClass()) {}

HostEditor::HostEditor()
    : Object(editorClass()) {}

HostEditorWindow::HostEditorWindow()
    : Object(windowControllerClass()) {
    window->resize(1000, 300);
    header->setGeometry(0, 0, 1000, 150);
    editor.view = header;
    platform::registerWindow(window, this);
    vlActionAdditionView::create(header, g_vlAdditionViewFrame);
    m_strip = header->findChild<vlActionAdditionView *>();
    m_context = m_strip->context();
    m_atHand = std::make_unique<RequestOwner::Scope>(m_context);
}

HostEditorWindow::~HostEditorWindow() {
    delete window;
}

void HostEditorWindow::open() {
    vlActionAdditionView::onChangeUINotification(
        {{keyECCalendarEvent, rt::fromObject(&editor.event)},
         {keyERCalendarEventEditorWindowController, rt::fromObject(this)}});
}

void HostEditorWindow::close() {
    platform::windowWillClose(window);
    delete window;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QString echo(const QString &key) {
    return QLatin1Char('[') + key + QLatin1Char(']');
}

UiTest::UiTest()
    : desktop(platform::installTestServices()) {
    desktop.workspace->documents = documents.path();
    desktop.bundle->interfaceFolder = u"" PLUGIN_RESOURCES ""_s;
    startLinkAfresh();
    startWorkflowAfresh();
    LinkPorts::instance() = {};
    WorkflowPorts::instance() = {};
    WorkflowPorts::instance().strips = &vlActionAdditionViewMonitor::sharedInstance();
    vlMeetingMgr::sharedInstance(); // listens for what the sheets tell
}

UiTest::~UiTest() {
    qDeleteAll(dialogs());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    LinkPorts::instance() = {};
    WorkflowPorts::instance() = {};
}

void UiTest::enableAudioConferences(bool enabled) {
    vlCommon::createDocumentOutlookPluginRootPath();
    vlMeetingCommon::setSiteConfigMember(vl_LocalProfile_EnablePAC, enabled);
}

void UiTest::signIn(const QString &userId) {
    vlUserProfileHelper::sharedInstance().setUserProfile(
        QVariantMap{{"userId", userId}, {"roomMeetingId", "1234567890"}});
}

QStringList UiTest::shownButtons(const vlActionAdditionView &strip) {
    QStringList titles;
    for (const QAbstractButton *button : strip.findChildren<QAbstractButton *>())
        if (!button->isHidden())
            titles.append(button->accessibleName());
    titles.sort();
    return titles;
}

QAbstractButton *UiTest::button(const vlActionAdditionView &strip, const QString &key) {
    for (QAbstractButton *button : strip.findChildren<QAbstractButton *>())
        if (button->accessibleName() == echo(key))
            return button;
    return nullptr;
}

QList<QDialog *> UiTest::dialogs() {
    QList<QDialog *> shown;
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (auto *dialog = qobject_cast<QDialog *>(widget); dialog && dialog->isVisible())
            shown.append(dialog);
    return shown;
}
