// Several appointments are worked on at once: each keeps its own meeting.
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "tests/scenarios/Scenario.h"

#include <QCheckBox>
#include <QDialog>
#include <gtest/gtest.h>

namespace {

using scenarios::Scenario;

class SeveralEditors : public testing::TestWithParam<const char *> {
protected:
    Scenario scenario{QString::fromLatin1(GetParam())};

    [[nodiscard]] QString subjectAtClient(const QString &uid) {
        return scenario.client()
            .meeting(scenario.meetingKey(uid))
            .value_or(QJsonObject())
            .value(QLatin1String("subject"))
            .toString();
    }
    // The settings sheet of that editor, when it is up.
    static QDialog *sheetOf(mailhost::EditorWindow *window) {
        const auto *controller =
            SchSettingWndCtrlMgr::sharedInstance().getSchSettingWindowInArray(rt::identifier(window));
        return controller ? controller->settingWindow() : nullptr;
    }
};

TEST_P(SeveralEditors, APlainAppointmentBesideOneWithAMeetingGetsItsOwn) {
    mailhost::EditorWindow *first = scenario.open(Scenario::plain);
    scenario.addMeeting(first);
    scenario.pressSave(first);
    mailhost::EditorWindow *second = scenario.open(Scenario::other);
    EXPECT_EQ(Scenario::stripOf(second)->uiStatus(), StripState::NoMeeting);
    scenario.addMeeting(second);
    scenario.typeSubject(second, u"The second"_s);
    scenario.pressSave(second);
    scenario.settle();
    EXPECT_NE(scenario.meetingKey(Scenario::plain), scenario.meetingKey(Scenario::other));
    EXPECT_EQ(subjectAtClient(Scenario::other), "The second");
    EXPECT_NE(subjectAtClient(Scenario::plain), "The second");
    scenario.clickRemove(second);
    scenario.settle();
    EXPECT_EQ(Scenario::stripOf(first)->uiStatus(), StripState::MeetingAttached);
    EXPECT_TRUE(scenario.client().meeting(scenario.meetingKey(Scenario::plain)).has_value());
}

TEST_P(SeveralEditors, TwoAddsThatAreAnsweredInTheOtherOrderKeepTheirMeetings) {
    mailhost::EditorWindow *first = scenario.open(Scenario::plain);
    mailhost::EditorWindow *second = scenario.open(Scenario::other);
    scenario.given("once delay schedule 2000");
    for (mailhost::EditorWindow *editor : {first, second}) {
        scenario.clickAdd(editor);
        scenario.confirmSheet();
    }
    scenario.wait(3);
    for (mailhost::EditorWindow *editor : {first, second}) {
        EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
        scenario.pressSave(editor);
    }
    for (const QString &uid : {Scenario::plain, Scenario::other}) {
        ASSERT_FALSE(scenario.meetingKey(uid).isEmpty()) << qPrintable(uid);
        EXPECT_EQ(subjectAtClient(uid), scenario.inFile(uid).summary) << qPrintable(uid);
    }
}

TEST_P(SeveralEditors, TheSheetOfOneDoesNotChangeTheSettingsOfTheOther) {
    mailhost::EditorWindow *first = scenario.open(Scenario::plain);
    mailhost::EditorWindow *second = scenario.open(Scenario::other);
    scenario.clickAdd(first);
    scenario.clickAdd(second);
    ASSERT_TRUE(sheetOf(first) && sheetOf(second));
    sheetOf(first)->findChild<QCheckBox *>(u"enableJBHButton"_s)->click();
    for (mailhost::EditorWindow *editor : {first, second}) {
        sheetOf(editor)->findChild<QAbstractButton *>(u"buttonContinue"_s)->click();
        scenario.settle();
        scenario.pressSave(editor);
    }
    const auto joinsBeforeHost = [this](const QString &uid) {
        return scenario.client()
            .meeting(scenario.meetingKey(uid))
            ->value(QLatin1String("enableJBH"))
            .toBool();
    };
    EXPECT_TRUE(joinsBeforeHost(Scenario::plain));
    EXPECT_FALSE(joinsBeforeHost(Scenario::other));
}

INSTANTIATE_TEST_SUITE_P(Hosts, SeveralEditors, testing::Values("15.8", "16"));

} // namespace
