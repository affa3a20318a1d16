// The meeting workflow between doubles of the host, the client and the user interface.
#pragma once

#include "plugin/link/meetingKeys.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
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

    static const QString key;        // of the meeting that the client holds
    static const QString joinUrl;    // likewise
    static const QString invitation; // likewise
    static const QString roomNumber; // of the user's personal meeting

    WorkflowTest();
    ~WorkflowTest() override;

    // The meeting of the usual appointment, as the client sends it.
    [[nodiscard]] static QVariantMap theMeeting(const QVariantMap &changes = {});
    [[nodiscard]] static QVariantMap theUser(const QVariantMap &more = {});

    void givenAnAppointment();             // in an open editor, without a meeting
    void givenAnAppointmentWithAMeeting(); // that the client holds
    void givenTheMeetingIsLoaded(const QVariantMap &changes = {});
    void givenTheProfileIsLoaded(const QVariantMap &more = {});
    void givenTheAccountsAreLoaded(const QList<ScriptedClient::Account> &accounts = {
                                       {"800", 123, "Dial 800"}});
    void givenSavedSettings(const QVariantMap &settings); // in the profile file of theUser()

    void theEditorCloses(); // with its strip; the workflow is not told
    void theSheetIsLeft(bool withOK);
    int presses(HostAction action); // the result for the hook of the host's operation
    void turn() { desktop.runLoop->advance(0); }
    void answer(MeetingCommand command, const QVariantMap &response = {});

    [[nodiscard]] QString windowID() const { return strip->getAppointmentWindowID(); }
    [[nodiscard]] QStringList hostOperations() const; // without the prefix of the plug-in's selectors
    [[nodiscard]] static vlMeetingMgr &manager() { return vlMeetingMgr::sharedInstance(); }
    [[nodiscard]] static vlMeetingDataMgr &store() { return vlMeetingDataMgr::sharedInstance(); }

    FreshPlugin fresh;
    platform::TestDesktop &desktop = fresh.desktop;
    ScriptedClient client{desktop};
    RecordingStrips strips;
    RecordingSheets sheets;
    RecordingAlerts alerts;
    FakeObject mainController{"ERageMainWindowController"};
    QWidget mainWindow;
    std::unique_ptr<FakeAppointment> appointment = std::make_unique<FakeAppointment>();
    std::unique_ptr<FakeEditor> editor;
    std::unique_ptr<RecordingStrip> strip;
    std::unique_ptr<RequestOwner::Scope> atHand; // the strip's context, while there is one
};
