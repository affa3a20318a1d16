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
        bool closes;
        bool forgets; // the saved data
    };
    const QString saveWithError = "saveAndCloseWindowAndReturnError:andReturnError:";
    const Case cases[] = {{false, HostAction::None, {}, false, false},
                          {false, HostAction::ActionSave, {"saveArg:"}, false, false},
                          {false, HostAction::ActionSaveAndClose, {"saveAndCloseWindow:"}, true, true},
                          {false, HostAction::ActionSend, {}, false, false},
                          {false, HostAction::ActionSaveAndCloseWithError, {saveWithError}, true, true},
                          {false, HostAction::ActionCalendarDrag, {}, false, true},
                          {true, HostAction::None, {}, false, false},
                          {true, HostAction::ActionSave, {}, false, false},
                          {true, HostAction::ActionSaveAndClose, {}, false, false},
                          {true, HostAction::ActionSend, {"sendMeetingPostValidate"}, false, false},
                          {true, HostAction::ActionSaveAndCloseWithError, {}, false, false},
                          {true, HostAction::ActionCalendarDrag, {}, false, false}};
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
        EXPECT_EQ(editor->windowController()->called, c.closes ? QStringList{"close"} : QStringList());
        EXPECT_EQ(store().isVelaMeeting(), !c.forgets);
        EXPECT_EQ(manager().olWordMailEditor() == nullptr, c.forgets);
        theEditorCloses();
    }
}

TEST_F(EditorEnd, TheHostsOwnOperationsGetTheArgumentsThatTheyTake) {
    givenAnAppointment();
    strip->action = HostAction::ActionSave;
    manager().closeOLAppointment(editor.get());
    EXPECT_EQ(editor->arguments, QVariantList{QVariant()});
    strip->action = HostAction::ActionSaveAndCloseWithError;
    strip->context()->isOperationHeld = true;
    manager().closeOLAppointment(editor.get());
    EXPECT_EQ(editor->arguments, (QVariantList{true, QVariant()}));
}

TEST_F(EditorEnd, AClosedWindowClearsWhatWasSaved) {
    givenAnAppointmentWithAMeeting();
    store().setPACAccountNo(1);
    const QString closed = windowID();
    strips.live.clear(); // a strip leaves the registry before its closing is told
    EXPECT_EQ(vlApptUIActionMgr::sharedInstance().closeOLAppointment(closed), 0);
    EXPECT_FALSE(store().isVelaMeeting() || store().isPACMeeting());
    EXPECT_EQ(manager().olWordMailEditor(), nullptr);
}

TEST_F(EditorEnd, SavingSendsTheCommandThatTheAppointmentNeeds) {
    struct Case {
        DataStatus status;
        int answered;
        QList<Asked> asked;
    };
    const Case cases[] = {{DataStatus::None, 2, {}},
                          {DataStatus::NothingToDo, 2, {}},
                          {DataStatus::NothingToSend, 2, {}},
                          {DataStatus::UpdateMeeting, 0, {Asked::GetMeeting}},
                          {DataStatus::DeleteMeeting, 0, {Asked::Delete}}};
    givenAnAppointmentWithAMeeting();
    client.keepsSilentOn(Asked::GetMeeting);
    vlApptUIActionMgr &saving = vlApptUIActionMgr::sharedInstance();
    for (const Case &c : cases) {
        SCOPED_TRACE(int(c.status));
        client.forget();
        strip->status = c.status;
        strip->succeeded = false;
        EXPECT_EQ(saving.handleVLMeeting(editor.get(), {{keyApptViewActionID, 3u}}), c.answered);
        turn();
        EXPECT_EQ(client.asked(), c.asked);
        EXPECT_EQ(strip->action, HostAction::ActionSend);
        EXPECT_TRUE(saving.getActionResultWithCalEventEditorViewCtrl(editor.get()));
    }
}

TEST_F(EditorEnd, SavingWithoutAStripIsTheHostsOwn) {
    FakeEditor other(*appointment);
    vlApptUIActionMgr &saving = vlApptUIActionMgr::sharedInstance();
    EXPECT_EQ(saving.handleVLMeeting(&other, {{keyApptViewActionID, 1u}}), 2);
    EXPECT_FALSE(saving.getActionResultWithCalEventEditorViewCtrl(&other));
}

TEST_F(EditorEnd, ADeleteThatTheClientCannotTakeHoldsTheSaveBackAsAFailure) {
    givenAnAppointmentWithAMeeting();
    strip->status = DataStatus::DeleteMeeting;
    const std::pair<void (ScriptedClient::*)(), int> failures[] = {
        {&ScriptedClient::quits, 5},
        {&ScriptedClient::isUninstalled,
         vlApptUIActionMgr::notStarted}}; // its own number would let the host go on
    for (const auto &[fail, answered] : failures) {
        (client.*fail)();
        EXPECT_EQ(vlApptUIActionMgr::sharedInstance().handleVLMeeting(editor.get(), {}), answered);
        EXPECT_FALSE(strip->succeeded);
        EXPECT_EQ(strip->action, HostAction::None);
    }
}

TEST_F(EditorEnd, TheStripsButtonsAreCommands) {
    givenAnAppointmentWithAMeeting();
    vlApptUIActionMgr &buttons = vlApptUIActionMgr::sharedInstance();
    buttons.addVLMeeting(strip.get());
    EXPECT_EQ(manager().getMeetingAction(), CmdAddMeeting);
    buttons.changeVLMeeting(strip.get(), 0);
    EXPECT_EQ(manager().getMeetingAction(), CmdChangeSettings);
    buttons.addPACMeeting(strip.get(), 2);
    EXPECT_EQ(manager().getMeetingAction(), CmdAddAudioConference2);
    buttons.addPACMeeting(strip.get(), 1);
    EXPECT_EQ(manager().getMeetingAction(), CmdAddAudioConference1);
    buttons.cancelVLMeeting(strip.get(), 0);
    EXPECT_EQ(manager().getMeetingAction(), CmdDeleteMeeting); // the remove goes on to it at once
}

TEST_F(EditorEnd, ANewStripLiesLowerInANewerHost) {
    QWidget header;
    vlApptUIActionMgr &maker = vlApptUIActionMgr::sharedInstance();
    maker.createVlAdditionViewOnCalHeaderContainerView(&header);
    ASSERT_EQ(strips.created.size(), 1);
    EXPECT_EQ(strips.created.first().first, &header);
    EXPECT_EQ(strips.created.first().second, QRectF(870, 60, 400, 70));
    givenTheHostIs("15.9.0");
    maker.createVlAdditionViewOnCalHeaderContainerView(&header);
    EXPECT_EQ(strips.created.last().second, QRectF(870, 13, 400, 70));
    maker.createVlAdditionViewOnCalHeaderContainerView(nullptr);
    EXPECT_EQ(strips.created.size(), 2);
}
