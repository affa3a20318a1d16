// The meeting workflow between doubles of the host, the client and the user interface.
#pragma once

#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "plugin/link/vlCommon.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FreshPlugin.h"
#include "tests/support/RecordingPorts.h"
#include "tests/support/ScriptedClient.h"

#include <gtest/gtest.h>

class WorkflowTest : public testing::Test {
protected:
    using Asked = ScriptedClient::Asked;
    using enum MeetingCommand;
    using enum WorkflowState;

    // The meeting that the client holds.
    inline static const QString key = u"key-1"_s;
    inline static const QString joinUrl = u"https://meet.example/j/1"_s;
    inline static const QString invitation = u"You are invited. Join at https://meet.example/j/1 today."_s;
    // The number of the user's personal meeting.
    inline static const QString roomNumber = u"5551234567"_s;

    WorkflowTest() {
        WorkflowPorts::instance() = {&strips, &sheets, &alerts, nullptr};
        LinkPorts::instance() = {&alerts, &manager()};
        BodyPorts::instance().holder = &manager();
        static_cast<void>(vlAPIMgr::sharedInstance()); // it observes the bus from now on
        client.knowsTheUser(theUser());
        client.hasAccounts({});
    }
    ~WorkflowTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    // The meeting of the usual appointment, as the client sends it.
    static QVariantMap theMeeting(const QVariantMap &changes = {}) {
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
    static QVariantMap theUser(const QVariantMap &more = {}) {
        QVariantMap profile{{"userId", "user-1"}, {"roomMeetingId", roomNumber}};
        profile.insert(more);
        return profile;
    }

    // It is open in an editor and has no meeting.
    void givenAnAppointment() {
        editor = std::make_unique<FakeEditor>(*appointment);
        strip = std::make_unique<RecordingStrip>(*editor);
        strips.live = {strip.get()};
        atHand.reset();
        atHand = std::make_unique<RequestOwner::Scope>(strip->context());
        manager().setOLWordMailEditor(editor->bodyEditor());
    }
    // The client holds the meeting.
    void givenAnAppointmentWithAMeeting() {
        appointment->carriesTheMeeting(key, joinUrl);
        givenAnAppointment();
        store().setMeetingKey(key);
        client.holdsTheMeeting(theMeeting());
    }
    void givenTheMeetingIsLoaded(const QVariantMap &changes = {}) {
        vlGetMeetingHelper::sharedInstance().setMeetingData(theMeeting(changes), false);
    }
    void givenTheProfileIsLoaded(const QVariantMap &more = {}) {
        vlUserProfileHelper::sharedInstance().setUserProfile(theUser(more));
    }
    void givenTheAccountsAreLoaded(const QList<ScriptedClient::Account> &accounts = {
                                       {"800", 123, "Dial 800"}}) {
        vlGetPACHelper::sharedInstance().setPACInfo(ScriptedClient::accountsAnswer(accounts));
    }
    // In the profile file of theUser().
    void givenSavedSettings(const QVariantMap &settings) {
        vlCommon::createDocumentOutlookPluginRootPath();
        vlOLUtils::saveStrToFile(vlOLUtils::toJSONString(settings),
                                 vlCommon::getVlUserProfilePath(theUser().value("userId").toString()));
    }

    // The strip goes, too. The workflow is not told.
    void theEditorCloses() {
        strips.live.clear();
        atHand.reset();
        strip.reset();
        editor.reset();
    }
    // Returns the result for the hook of the host's operation.
    int presses(HostAction action) {
        return vlApptUIActionMgr::sharedInstance().handleVLMeeting(editor.get(),
                                                                   {{keyApptViewActionID, quint32(action)}});
    }
    void turn() { desktop.runLoop->advance(0); }
    void answer(MeetingCommand command, const QVariantMap &response = {}) {
        manager().onExcuteCommandFinished(command,
                                          {{keyVlAPIResponse, response}, {keyApptWindowID, windowID()}});
    }

    [[nodiscard]] QString windowID() const { return strip->getAppointmentWindowID(); }
    // Without the prefix of the plug-in's selectors.
    [[nodiscard]] QStringList hostOperations() const {
        QStringList operations = editor->called;
        return operations.replaceInStrings("vl_ERCalendarEventEditorViewController_", "");
    }
    static vlMeetingMgr &manager() { return vlMeetingMgr::sharedInstance(); }
    static vlMeetingDataMgr &store() { return vlMeetingDataMgr::sharedInstance(); }

    FreshPlugin fresh;
    platform::TestDesktop &desktop = fresh.desktop;
    ScriptedClient client{desktop};
    RecordingStrips strips;
    RecordingSheets sheets;
    RecordingAlerts alerts;
    std::unique_ptr<FakeAppointment> appointment = std::make_unique<FakeAppointment>();
    std::unique_ptr<FakeEditor> editor;
    std::unique_ptr<RecordingStrip> strip;
    std::unique_ptr<RequestOwner::Scope> atHand; // the context of the strip
};
