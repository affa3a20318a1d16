// The calendar cannot be written: by a full disk, in a folder that is closed, or because another program has
// changed the file meanwhile.
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "tests/scenarios/Scenario.h"
#include "tests/support/FullDisk.h"
#include "tests/support/ReadOnlyFolder.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace scenarios;

namespace {

const QByteArray theirProperty = "X-THEIRS:written meanwhile\r\n";

struct Disaster {
    const char *name;
    const char *said; // part of what the host says
};

const Disaster disasters[] = {{"AFullDisk", "cannot be saved"},
                              {"AClosedFolder", "cannot be saved"},
                              {"AnotherProgram", "Another program"}};

class BadDisk : public testing::TestWithParam<std::tuple<const char *, Disaster>> {
protected:
    BadDisk() { before = scenario.fileBytes(); }
    // While it goes on.
    template<typename Action>
    void during(Action action) {
        const QByteArray name = std::get<1>(GetParam()).name;
        if (name == "AFullDisk") {
            const FullDisk full;
            action();
        } else if (name == "AClosedFolder") {
            const ReadOnlyFolder closed(QFileInfo(scenario.calendarPath()).path());
            action();
        } else {
            QFile file(scenario.calendarPath());
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            before = QByteArray(before).replace("X-UNKNOWN", theirProperty + "X-UNKNOWN");
            file.write(before);
            file.close();
            action();
        }
    }
    void itIsSaidAndTheFileIsWhole() {
        EXPECT_TRUE(Scenario::alertText().contains(QString::fromLatin1(std::get<1>(GetParam()).said)))
            << qPrintable(Scenario::alertText());
        if (!Scenario::alertText().isNull())
            scenario.dismissAlert();
        EXPECT_TRUE(scenario.fileBytes() == before) << scenario.fileBytes().constData();
    }

    Scenario scenario{QString::fromLatin1(std::get<0>(GetParam()))};
    QByteArray before;
};

INSTANTIATE_TEST_SUITE_P(
    Generations, BadDisk, testing::Combine(testing::Values("15.8", "16"), testing::ValuesIn(disasters)),
    [](const auto &info) {
        return std::string(std::get<1>(info.param).name) + "In" +
               QString::fromLatin1(std::get<0>(info.param)).replace(u'.', u'_').toStdString();
    });

} // namespace

TEST_P(BadDisk, ANewMeetingIsKeptInTheEditorUntilItCanBeSaved) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    during([&] {
        scenario.addMeeting(editor);
        scenario.pressSave(editor);
    });
    itIsSaidAndTheFileIsWhole();
    EXPECT_TRUE(editor->isVisible());
    EXPECT_TRUE(editor->viewController()->isDirty());
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    scenario.pressSave(editor);
    const mailhost::Appointment saved = scenario.inFile(Scenario::plain);
    EXPECT_TRUE(scenario.client().meeting(scenario.meetingKey(Scenario::plain)));
    EXPECT_TRUE(saved.location.startsWith(u"Room 7 https://"_s)) << qPrintable(saved.location);
    EXPECT_EQ(saved.bodyHtml.count(u"MacVlBookmarkBegin"_s), 1);
    EXPECT_EQ(scenario.sent("1"), 1) << "it was scheduled once";
    EXPECT_EQ(scenario.fileBytes().contains(theirProperty), before.contains(theirProperty));
}

TEST_P(BadDisk, AChangeThatTheClientHasIsStoredWithTheNextSave) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    scenario.addMeeting(editor);
    scenario.pressSave(editor);
    before = scenario.fileBytes();
    scenario.typeSubject(editor, u"Changed"_s);
    during([&] { scenario.pressSave(editor); });
    itIsSaidAndTheFileIsWhole();
    EXPECT_TRUE(editor->isVisible());
    EXPECT_TRUE(editor->viewController()->isDirty());
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, u"Changed"_s);
    EXPECT_EQ(scenario.client().meeting(scenario.meetingKey(Scenario::plain))->value(u"subject"_s).toString(),
              u"Changed"_s);
}

TEST_P(BadDisk, ARemovalIsStoredWithTheNextSave) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    scenario.addMeeting(editor);
    scenario.pressSave(editor);
    before = scenario.fileBytes();
    const QString key = scenario.meetingKey(Scenario::plain);
    during([&] {
        scenario.clickRemove(editor);
        if (Scenario::alertText().isNull()) // the host may have tried to store it by then
            scenario.pressSave(editor);
    });
    itIsSaidAndTheFileIsWhole();
    EXPECT_FALSE(scenario.client().meeting(key));
    scenario.pressSave(editor);
    const mailhost::Appointment saved = scenario.inFile(Scenario::plain);
    EXPECT_TRUE(saved.ucCapabilities.isEmpty());
    EXPECT_FALSE(saved.bodyHtml.contains(u"MacVlBookmark"_s));
    EXPECT_TRUE(saved.bodyHtml.contains(u"Agenda <b>first</b>"_s));
}
