#include "tests/workflow/WorkflowFixture.h"

#include "plugin/workflow/vlApptUIActionMgr.h"

namespace {

class EditorEnd : public WorkflowTest {};

} // namespace

TEST_F(EditorEnd, WhatIsRunDependsOnTheAttendeesAndOnWhatWasHeldBack) {
    struct Case {
        bool attendees;
        HostAction action;
        QStringList operations;
        QVariantList arguments;
        bool closes;
        bool forgets = closes; // the saved data
    };
    using enum HostAction;
    const QString saveWithError = "saveAndCloseWindowAndReturnError:andReturnError:";
    const Case cases[] = {{false, ActionSave, {"saveArg:"}, {QVariant()}, false},
                          {false, ActionSaveAndClose, {"saveAndCloseWindow:"}, {true}, true},
                          {false, ActionSend, {}, {}, false},
                          {false, ActionSaveAndCloseWithError, {saveWithError}, {true, QVariant()}, true},
                          {true, HostAction::None, {}, {}, false},
                          {true, ActionSave, {}, {}, false},
                          {true, ActionSend, {"sendMeetingPostValidate"}, {}, false},
                          {true, ActionCalendarDrag, {}, {}, false},
                          {false, ActionCalendarDrag, {}, {}, false, true}};
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << "action " << quint32(c.action) << " attendees " << c.attendees);
        appointment = std::make_unique<FakeAppointment>();
        if (c.attendees)
            appointment->invites("Ann");
        givenAnAppointmentWithAMeeting();
        strip->action = c.action;
        strip->context()->isOperationHeld = true;
        manager().closeOLAppointment(editor.get());
        EXPECT_EQ(hostOperations(), c.operations);
        EXPECT_EQ(editor->arguments, c.arguments);
        EXPECT_EQ(editor->windowController()->called, c.closes ? QStringList{"close"} : QStringList());
        EXPECT_EQ(store().isVelaMeeting(), !c.forgets);
        EXPECT_EQ(manager().olWordMailEditor() == nullptr, c.forgets);
        theEditorCloses();
    }
}

TEST_F(EditorEnd, AClosedWindowClearsWhatWasSaved) {
    givenAnAppointmentWithAMeeting();
    store().setPACAccountNo(PACAccount::First);
    strips.live.clear(); // a strip leaves the registry before the workflow is told
    EXPECT_EQ(vlApptUIActionMgr::sharedInstance().closeOLAppointment(), 0);
    EXPECT_FALSE(store().isVelaMeeting() || store().isPACMeeting());
    EXPECT_EQ(manager().olWordMailEditor(), nullptr);
}

TEST_F(EditorEnd, SavingSendsTheCommandThatTheAppointmentNeeds) {
    struct Case {
        DataStatus status;
        void (ScriptedClient::*fails)();
        int answered;
        QList<Asked> asked;
    };
    // The error number of a client that is not installed would let the host go on.
    const Case cases[] = {{DataStatus::NothingToSend, nullptr, 2, {}},
                          {DataStatus::UpdateMeeting, nullptr, 0, {Asked::GetMeeting}},
                          {DataStatus::DeleteMeeting, nullptr, 0, {Asked::Delete}},
                          {DataStatus::DeleteMeeting, &ScriptedClient::quits, 5, {}},
                          {DataStatus::DeleteMeeting, &ScriptedClient::isUninstalled, 1, {}}};
    givenAnAppointmentWithAMeeting();
    client.keepsSilentOn(Asked::GetMeeting);
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << int(c.status) << " answered " << c.answered);
        client.forget();
        if (c.fails)
            (client.*c.fails)();
        strip->status = c.status;
        strip->succeeded = false;
        EXPECT_EQ(presses(HostAction::ActionSend), c.answered);
        turn();
        EXPECT_EQ(client.asked(), c.asked);
        EXPECT_EQ(strip->action, HostAction::ActionSend);
        const auto &saving = vlApptUIActionMgr::sharedInstance();
        EXPECT_EQ(saving.getActionResultWithCalEventEditorViewCtrl(editor.get()), !c.fails);
    }
}
