#include "tests/ui/UiFixture.h"

#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/vlCommon.h"
#include "plugin/link/vlMeetingCommon.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/workflow/vlMeetingMgr.h"

EditorWithStrip::EditorWithStrip() {
    window->resize(1000, 300);
    editor.header()->setGeometry(0, 0, 1000, 150);
    editor.values.insert("currentEmailAccount", rt::fromObject(&account));
    vlActionAdditionView::create(editor.header(), g_vlAdditionViewFrame);
    m_strip = editor.header()->findChild<vlActionAdditionView *>();
    m_context = m_strip->context();
    m_atHand = std::make_unique<RequestOwner::Scope>(m_context);
}

void EditorWithStrip::open() {
    vlActionAdditionView::onChangeUINotification(
        {{keyECCalendarEvent, rt::fromObject(&event)},
         {keyERCalendarEventEditorWindowController, rt::fromObject(editor.windowController())}});
}

UiTest::UiTest() {
    desktop.workspace->root = documents.path();
    desktop.workspace->documents = documents.path();
    desktop.bundle->interfaceFolder = u"" PLUGIN_RESOURCES ""_s;
    WorkflowPorts::instance().strips = &vlActionAdditionViewMonitor::sharedInstance();
    static_cast<void>(vlMeetingMgr::sharedInstance()); // listens for what the sheets tell
}

UiTest::~UiTest() {
    qDeleteAll(dialogs());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void UiTest::enableAudioConferences(bool enabled) {
    vlCommon::createDocumentOutlookPluginRootPath();
    vlMeetingCommon::setSiteConfigMember(vl_LocalProfile_EnablePAC, enabled);
}

void UiTest::signIn(const QVariantMap &more) {
    QVariantMap profile{{"userId", "user"}, {"roomMeetingId", "1234567890"}};
    profile.insert(more);
    vlUserProfileHelper::sharedInstance().setUserProfile(profile);
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
