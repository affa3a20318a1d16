#include "tests/workflow/WorkflowFixture.h"

#include "platform/runtime/Runtime.h"
#include "platform/services/Services.h"
#include "platform/toolkit/Windows.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "plugin/link/vlCommon.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/vlApptUIActionMgr.h"

const QString WorkflowTest::key = u"key-1"_s;
const QString WorkflowTest::joinUrl = u"https://meet.example/j/1"_s;
const QString WorkflowTest::invitation = u"You are invited. Join at https://meet.example/j/1 today."_s;
const QString WorkflowTest::roomNumber = u"5551234567"_s;

WorkflowTest::WorkflowTest() {
    WorkflowPorts::instance() = {&strips, &sheets, &alerts, nullptr};
    LinkPorts::instance() = {&alerts, &manager()};
    BodyPorts::instance().holder = &manager();
    platform::registerWindow(&mainWindow, &mainController);
    static_cast<void>(vlAPIMgr::sharedInstance()); // listens from now on
    client.knowsTheUser(theUser());
    client.hasAccounts({});
}

WorkflowTest::~WorkflowTest() {
    platform::unregisterWindow(&mainWindow);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QVariantMap WorkflowTest::theMeeting(const QVariantMap &changes) {
    QVariantMap meeting{{"subject", "Review"},
                        {"duration", "60"},
                        {"recurrence", false},
                        {"startTime", FakeAppointment::usualStart().toSecsSinceEpoch()},
                        {"audioOption", 2},
                        {"enableHostVideo", true},
                        {"usePMI", 0},
                        {"meetingPassword", ""},
                        {"meetingKey", key},
                        {"originalMeetingNumber", "0"},
                        {"invitationEmail", invitation},
                        {"joinUrl", joinUrl}};
    meeting.insert(changes);
    return meeting;
}

QVariantMap WorkflowTest::theUser(const QVariantMap &more) {
    QVariantMap profile{{"userId", "user-1"}, {"roomMeetingId", roomNumber}};
    profile.insert(more);
    return profile;
}

void WorkflowTest::givenAnAppointment() {
    editor = std::make_unique<FakeEditor>(*appointment);
    strip = std::make_unique<RecordingStrip>(*editor);
    strips.live = {strip.get()};
    atHand.reset();
    atHand = std::make_unique<RequestOwner::Scope>(strip->context());
    manager().setOLWordMailEditor(editor->bodyEditor());
}

void WorkflowTest::givenAnAppointmentWithAMeeting() {
    appointment->carriesTheMeeting(key, joinUrl);
    givenAnAppointment();
    store().setMeetingKey(key);
    client.holdsTheMeeting(theMeeting());
}

void WorkflowTest::givenTheMeetingIsLoaded(const QVariantMap &changes) {
    vlGetMeetingHelper::sharedInstance().setMeetingData(theMeeting(changes), false);
}

void WorkflowTest::givenTheProfileIsLoaded(const QVariantMap &more) {
    vlUserProfileHelper::sharedInstance().setUserProfile(theUser(more));
}

void WorkflowTest::givenTheAccountsAreLoaded(const QList<ScriptedClient::Account> &accounts) {
    vlGetPACHelper::sharedInstance().setPACInfo(ScriptedClient::accountsAnswer(accounts));
}

void WorkflowTest::givenSavedSettings(const QVariantMap &settings) {
    vlCommon::createDocumentOutlookPluginRootPath();
    vlOLUtils::saveStrToFile(vlOLUtils::toJSONString(settings),
                             vlCommon::getVlUserProfilePath(theUser().value("userId").toString()));
}

void WorkflowTest::theEditorCloses() {
    strips.live.clear();
    atHand.reset();
    strip.reset();
    editor.reset();
}

void WorkflowTest::theSheetIsLeft(bool withOK) {
    platform::services().notifications->post(notify_SettingCommit, {{keyVLUserOperator, keyVLSettingCommit},
                                                                    {keyButtonClickIsOK, withOK},
                                                                    {keyApptWindowID, windowID()}});
    turn();
}

int WorkflowTest::presses(HostAction action) {
    return vlApptUIActionMgr::sharedInstance().handleVLMeeting(editor.get(),
                                                               {{keyApptViewActionID, quint32(action)}});
}

void WorkflowTest::answer(MeetingCommand command, const QVariantMap &response) {
    QVariantMap data{{keyVlAPIResponse, response}};
    if (strip)
        data.insert(keyApptWindowID, windowID());
    manager().onExcuteCommandFinished(command, data);
}

QStringList WorkflowTest::hostOperations() const {
    QStringList operations = editor->called;
    return operations.replaceInStrings("vl_ERCalendarEventEditorViewController_", "");
}
