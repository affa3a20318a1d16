// The calendar cannot be written: the disk is full, the folder is read-only, or another program has changed
// the file meanwhile.
#include "tests/scenarios/Scenario.h"
#include "tests/support/FullDisk.h"
#include "tests/support/ReadOnlyFolder.h"

using namespace scenarios;

namespace {

const QByteArray theirProperty = "X-THEIRS:written meanwhile\r\n";

enum class Cause { FullDisk, ReadOnlyFolder, AnotherProgram };

class DiskFailures : public testing::TestWithParam<std::tuple<const char *, Cause>> {
protected:
    // The host says that it cannot store what the action stores, and the file stays as it is.
    template<typename Action>
    void expectNotStored(Action action) {
        const Cause cause = std::get<1>(GetParam());
        {
            std::optional<FullDisk> full;
            std::optional<ReadOnlyFolder> readOnly;
            if (cause == Cause::FullDisk)
                full.emplace();
            else if (cause == Cause::ReadOnlyFolder)
                readOnly.emplace(QFileInfo(scenario.calendarPath()).path());
            else
                anotherProgramWrites();
            action();
        }
        EXPECT_TRUE(Scenario::alertText().contains(cause == Cause::AnotherProgram ? u"Another program"_s
                                                                                  : u"cannot be saved"_s))
            << qPrintable(Scenario::alertText());
        scenario.dismissAlert();
        EXPECT_EQ(scenario.fileBytes().toStdString(), before.toStdString());
        EXPECT_TRUE(editor->isVisible());
        EXPECT_TRUE(editor->viewController()->isDirty());
    }
    void anotherProgramWrites() {
        QFile file(scenario.calendarPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        before.replace("X-UNKNOWN", theirProperty + "X-UNKNOWN");
        file.write(before);
    }
    void giveMeeting() {
        scenario.addMeetingAndSave(editor);
        before = scenario.fileBytes();
    }

    Scenario scenario{QString::fromLatin1(std::get<0>(GetParam()))};
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    QByteArray before = scenario.fileBytes();
};

INSTANTIATE_TEST_SUITE_P(Generations, DiskFailures,
                         testing::Combine(testing::Values("15.8", "16"),
                                          testing::Values(Cause::FullDisk, Cause::ReadOnlyFolder,
                                                          Cause::AnotherProgram)));

} // namespace

TEST_P(DiskFailures, ANewMeetingIsKeptInTheEditorUntilItCanBeSaved) {
    expectNotStored([this] { scenario.addMeetingAndSave(editor); });
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    scenario.pressSave(editor);
    const mailhost::Appointment saved = scenario.inFile(Scenario::plain);
    EXPECT_FALSE(scenario.meeting(Scenario::plain).isEmpty());
    EXPECT_TRUE(saved.location.startsWith(u"Room 7 https://"_s)) << qPrintable(saved.location);
    EXPECT_EQ(saved.bodyHtml.count(u"MacVlBookmarkBegin"_s), 1);
    EXPECT_EQ(scenario.sent("1"), 1) << "it was scheduled once";
    EXPECT_EQ(scenario.fileBytes().contains(theirProperty), before.contains(theirProperty));
}

TEST_P(DiskFailures, AChangeThatTheClientHasIsStoredWithTheNextSave) {
    giveMeeting();
    scenario.typeSubject(editor, u"Changed"_s);
    expectNotStored([this] { scenario.pressSave(editor); });
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, u"Changed"_s);
    EXPECT_EQ(scenario.meeting(Scenario::plain)["subject"].toString(), u"Changed"_s);
}

TEST_P(DiskFailures, ARemovalIsStoredWithTheNextSave) {
    giveMeeting();
    const QString key = scenario.meetingKey(Scenario::plain);
    expectNotStored([this] {
        scenario.clickRemove(editor);
        if (Scenario::alertText().isNull()) // the host may have tried to store it by then
            scenario.pressSave(editor);
    });
    EXPECT_FALSE(scenario.client().meeting(key));
    scenario.pressSave(editor);
    const mailhost::Appointment saved = scenario.inFile(Scenario::plain);
    EXPECT_TRUE(saved.ucCapabilities.isEmpty());
    EXPECT_FALSE(saved.bodyHtml.contains(u"MacVlBookmark"_s));
    EXPECT_TRUE(saved.bodyHtml.contains(u"Agenda <b>first</b>"_s));
}
