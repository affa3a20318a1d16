#include "plugin/ui/strip/vlActionAdditionView.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/roads/Desk.h"

#include <QJsonObject>
#include <QTest>
#include <QTextEdit>
#include <gtest/gtest.h>

using namespace roads;
using mailhost::BookmarkMangling;

namespace {

struct Case {
    const char *version;
    BookmarkMangling mangling;
    const char *name;
};

class Bodies : public testing::TestWithParam<Case> {
protected:
    Desk desk{QString::fromLatin1(GetParam().version), GetParam().mangling};
};

INSTANTIATE_TEST_SUITE_P(Editors, Bodies,
                         testing::Values(Case{"15.8", BookmarkMangling::None, "web_plain"},
                                         Case{"16", BookmarkMangling::None, "word_plain"},
                                         Case{"15.8", BookmarkMangling::QuotesStripped, "web_quotes"},
                                         Case{"16", BookmarkMangling::QuotesStripped, "word_quotes"},
                                         Case{"16", BookmarkMangling::LineBreaks, "word_breaks"},
                                         Case{"16", BookmarkMangling::FontTags, "word_fonts"}),
                         [](const auto &info) { return std::string(info.param.name); });

QString plainText(const QString &html) {
    return platform::services().htmlImporter->plainText(html);
}

} // namespace

TEST_P(Bodies, WhateverTheEditorDoesToTheBookmarksTheWordsAroundTheBlockSurviveUpdateAndRemoval) {
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    auto *body = editor->findChild<QTextEdit *>(mailhost::controls::bodyEditor);
    ASSERT_NE(body, nullptr);
    desk.addMeeting(editor);
    desk.pressSave(editor);
    body->moveCursor(QTextCursor::Start);
    QTest::keyClicks(body, QStringLiteral("Before. "));
    desk.pressSave(editor);
    QJsonObject profile = desk.client().profile();
    profile[QStringLiteral("accountName")] = QStringLiteral("Countess Ada");
    desk.client().setProfile(profile);
    desk.typeSubject(editor, QStringLiteral("Changed"));
    desk.pressSave(editor);
    QString text = plainText(desk.inFile(Desk::plain).bodyHtml);
    EXPECT_TRUE(text.startsWith(QStringLiteral("Before. Agenda first."))) << qPrintable(text);
    EXPECT_EQ(text.count(QStringLiteral("Meeting ID")), 1) << qPrintable(text);
    EXPECT_EQ(text.count(QStringLiteral("Countess Ada")), 1)
        << "the client's new invitation has taken the old one's place";
    desk.clickRemove(editor);
    desk.pressSave(editor);
    text = plainText(desk.inFile(Desk::plain).bodyHtml);
    EXPECT_TRUE(text.startsWith(QStringLiteral("Before. Agenda first."))) << qPrintable(text);
    EXPECT_EQ(text.count(QStringLiteral("Meeting ID")), 0) << qPrintable(text);
}

TEST(StoredRecords, WhatIsNoRecordOfOursOpensWithoutAMeetingAndIsKeptToTheLetter) {
    Desk desk(QStringLiteral("16"));
    const QStringList texts = {
        QStringLiteral("{"),           QStringLiteral("[]"),
        QStringLiteral("null"),        QStringLiteral("{\"meetingKey\": 7}"),
        QStringLiteral("\"text\""),    QStringLiteral("{\"meetingKey\": \"\"}"),
        QString(5000, u'['),           QStringLiteral("{\"joinUrl\": {\"a\": [1, 2]}}"),
        QStringLiteral("\u2028;,\\n"), QStringLiteral("   ")};
    for (const QString &record : texts) {
        SCOPED_TRACE(qPrintable(record.left(40)));
        mailhost::Appointment appointment = desk.inFile(Desk::other);
        appointment.ucCapabilities = record;
        ASSERT_TRUE(desk.host().session()->store(appointment));
        mailhost::EditorWindow *editor = desk.open(Desk::other);
        ASSERT_NE(editor, nullptr);
        EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::NoMeeting);
        desk.typeSubject(editor, QStringLiteral("Again"));
        desk.pressSave(editor);
        EXPECT_EQ(desk.inFile(Desk::other).ucCapabilities, record);
        editor->closeNow();
        desk.wait(1);
    }
}
