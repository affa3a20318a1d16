// Several appointments are worked on at once: each keeps its own meeting.
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "tests/roads/Desk.h"

#include <QCheckBox>
#include <QDialog>
#include <gtest/gtest.h>

namespace {

using roads::Desk;

class SeveralEditors : public testing::TestWithParam<const char *> {
protected:
    Desk desk{QString::fromLatin1(GetParam())};

    [[nodiscard]] QString subjectAtClient(const QString &uid) {
        return desk.client()
            .meeting(desk.meetingKey(uid))
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
    mailhost::EditorWindow *first = desk.open(Desk::plain);
    desk.addMeeting(first);
    desk.pressSave(first);
    mailhost::EditorWindow *second = desk.open(Desk::other);
    EXPECT_EQ(Desk::stripOf(second)->uiStatus(), StripState::NoMeeting);
    desk.addMeeting(second);
    desk.typeSubject(second, QStringLiteral("The second"));
    desk.pressSave(second);
    desk.settle();
    EXPECT_NE(desk.meetingKey(Desk::plain), desk.meetingKey(Desk::other));
    EXPECT_EQ(subjectAtClient(Desk::other), "The second");
    EXPECT_NE(subjectAtClient(Desk::plain), "The second");
    desk.clickRemove(second);
    desk.settle();
    EXPECT_EQ(Desk::stripOf(first)->uiStatus(), StripState::MeetingAttached);
    EXPECT_TRUE(desk.client().meeting(desk.meetingKey(Desk::plain)).has_value());
}

TEST_P(SeveralEditors, TwoAddsThatAreAnsweredInTheOtherOrderKeepTheirMeetings) {
    mailhost::EditorWindow *first = desk.open(Desk::plain);
    mailhost::EditorWindow *second = desk.open(Desk::other);
    desk.given("once delay schedule 2000");
    for (mailhost::EditorWindow *editor : {first, second}) {
        desk.clickAdd(editor);
        desk.confirmSheet();
    }
    desk.wait(3);
    for (mailhost::EditorWindow *editor : {first, second}) {
        EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
        desk.pressSave(editor);
    }
    for (const QString &uid : {Desk::plain, Desk::other}) {
        ASSERT_FALSE(desk.meetingKey(uid).isEmpty()) << qPrintable(uid);
        EXPECT_EQ(subjectAtClient(uid), desk.inFile(uid).summary) << qPrintable(uid);
    }
}

TEST_P(SeveralEditors, TheSheetOfOneDoesNotChangeTheSettingsOfTheOther) {
    mailhost::EditorWindow *first = desk.open(Desk::plain);
    mailhost::EditorWindow *second = desk.open(Desk::other);
    desk.clickAdd(first);
    desk.clickAdd(second);
    ASSERT_TRUE(sheetOf(first) && sheetOf(second));
    sheetOf(first)->findChild<QCheckBox *>(QStringLiteral("enableJBHButton"))->click();
    for (mailhost::EditorWindow *editor : {first, second}) {
        sheetOf(editor)->findChild<QAbstractButton *>(QStringLiteral("buttonContinue"))->click();
        desk.settle();
        desk.pressSave(editor);
    }
    const auto joinsBeforeHost = [this](const QString &uid) {
        return desk.client().meeting(desk.meetingKey(uid))->value(QLatin1String("enableJBH")).toBool();
    };
    EXPECT_TRUE(joinsBeforeHost(Desk::plain));
    EXPECT_FALSE(joinsBeforeHost(Desk::other));
}

INSTANTIATE_TEST_SUITE_P(Hosts, SeveralEditors, testing::Values("15.8", "16"));

} // namespace
