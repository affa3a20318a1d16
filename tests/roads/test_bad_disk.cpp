// The calendar cannot be written: by a full disk, in a folder that is closed, or because another program has
// changed the file meanwhile.
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "tests/roads/Desk.h"
#include "tests/support/FullDisk.h"
#include "tests/support/ReadOnlyFolder.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace roads;

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
    BadDisk() { before = desk.fileBytes(); }
    // While it goes on.
    template<typename Action>
    void during(Action action) {
        const QByteArray name = std::get<1>(GetParam()).name;
        if (name == "AFullDisk") {
            const FullDisk full;
            action();
        } else if (name == "AClosedFolder") {
            const ReadOnlyFolder closed(QFileInfo(desk.calendarPath()).path());
            action();
        } else {
            QFile file(desk.calendarPath());
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            before = QByteArray(before).replace("X-UNKNOWN", theirProperty + "X-UNKNOWN");
            file.write(before);
            file.close();
            action();
        }
    }
    void itIsSaidAndTheFileIsWhole() {
        EXPECT_TRUE(Desk::alertText().contains(QString::fromLatin1(std::get<1>(GetParam()).said)))
            << qPrintable(Desk::alertText());
        if (!Desk::alertText().isNull())
            desk.dismissAlert();
        EXPECT_TRUE(desk.fileBytes() == before) << desk.fileBytes().constData();
    }

    Desk desk{QString::fromLatin1(std::get<0>(GetParam()))};
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
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    during([&] {
        desk.addMeeting(editor);
        desk.pressSave(editor);
    });
    itIsSaidAndTheFileIsWhole();
    EXPECT_TRUE(editor->isVisible());
    EXPECT_TRUE(editor->viewController()->isDirty());
    EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    desk.pressSave(editor);
    const mailhost::Appointment saved = desk.inFile(Desk::plain);
    EXPECT_TRUE(desk.client().meeting(desk.meetingKey(Desk::plain)));
    EXPECT_TRUE(saved.location.startsWith(QStringLiteral("Room 7 https://"))) << qPrintable(saved.location);
    EXPECT_EQ(saved.bodyHtml.count(QStringLiteral("MacVlBookmarkBegin")), 1);
    EXPECT_EQ(desk.sent("1"), 1) << "it was scheduled once";
    EXPECT_EQ(desk.fileBytes().contains(theirProperty), before.contains(theirProperty));
}

TEST_P(BadDisk, AChangeThatTheClientHasIsStoredWithTheNextSave) {
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    desk.addMeeting(editor);
    desk.pressSave(editor);
    before = desk.fileBytes();
    desk.typeSubject(editor, QStringLiteral("Changed"));
    during([&] { desk.pressSave(editor); });
    itIsSaidAndTheFileIsWhole();
    EXPECT_TRUE(editor->isVisible());
    EXPECT_TRUE(editor->viewController()->isDirty());
    desk.pressSave(editor);
    EXPECT_EQ(desk.inFile(Desk::plain).summary, QStringLiteral("Changed"));
    EXPECT_EQ(
        desk.client().meeting(desk.meetingKey(Desk::plain))->value(QStringLiteral("subject")).toString(),
        QStringLiteral("Changed"));
}

TEST_P(BadDisk, ARemovalIsStoredWithTheNextSave) {
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    desk.addMeeting(editor);
    desk.pressSave(editor);
    before = desk.fileBytes();
    const QString key = desk.meetingKey(Desk::plain);
    during([&] {
        desk.clickRemove(editor);
        if (Desk::alertText().isNull()) // the host may have tried to store it by then
            desk.pressSave(editor);
    });
    itIsSaidAndTheFileIsWhole();
    EXPECT_FALSE(desk.client().meeting(key));
    desk.pressSave(editor);
    const mailhost::Appointment saved = desk.inFile(Desk::plain);
    EXPECT_TRUE(saved.ucCapabilities.isEmpty());
    EXPECT_FALSE(saved.bodyHtml.contains(QStringLiteral("MacVlBookmark")));
    EXPECT_TRUE(saved.bodyHtml.contains(QStringLiteral("Agenda <b>first</b>")));
}
