// The user's text around the invitation, whatever form the host's editor gives to the bookmarks.
#include "platform/services/html/HtmlImporter.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/scenarios/Scenario.h"

using namespace scenarios;
using mailhost::BookmarkMangling;

namespace {

struct Case {
    const char *version;
    BookmarkMangling mangling;
    const char *name;
};

class Bodies : public testing::TestWithParam<Case> {
protected:
    Scenario scenario{QString::fromLatin1(GetParam().version), {usualCalendar().text()}, GetParam().mangling};
};

INSTANTIATE_TEST_SUITE_P(Editors, Bodies,
                         testing::Values(Case{"15.8", BookmarkMangling::None, "web_plain"},
                                         Case{"16", BookmarkMangling::None, "word_plain"},
                                         Case{"15.8", BookmarkMangling::QuotesStripped, "web_quotes"},
                                         Case{"16", BookmarkMangling::QuotesStripped, "word_quotes"},
                                         Case{"16", BookmarkMangling::LineBreaks, "word_breaks"},
                                         Case{"16", BookmarkMangling::FontTags, "word_fonts"}),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace

TEST_P(Bodies, HoweverTheEditorManglesTheBookmarksTheTextAroundTheBlockSurvivesUpdateAndRemoval) {
    const auto savedText = [this] {
        return platform::plainTextOfHtml(scenario.inFile(Scenario::plain).bodyHtml);
    };
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    auto *body = editor->findChild<QTextEdit *>(mailhost::controls::bodyEditor);
    scenario.addMeetingAndSave(editor);
    body->moveCursor(QTextCursor::Start);
    QTest::keyClicks(body, u"Before. "_s);
    scenario.pressSave(editor);
    QJsonObject profile = scenario.client().profile();
    profile[u"accountName"_s] = u"Countess Ada"_s;
    scenario.client().setProfile(profile);
    scenario.typeSubject(editor, u"Changed"_s);
    scenario.pressSave(editor);
    QString text = savedText();
    EXPECT_TRUE(text.startsWith(u"Before. Agenda first."_s)) << qPrintable(text);
    EXPECT_EQ(text.count(u"Meeting ID"_s), 1) << qPrintable(text);
    EXPECT_EQ(text.count(u"Countess Ada"_s), 1) << "the new invitation has taken the old one's place";
    scenario.clickRemove(editor);
    scenario.pressSave(editor);
    text = savedText();
    EXPECT_TRUE(text.startsWith(u"Before. Agenda first."_s)) << qPrintable(text);
    EXPECT_EQ(text.count(u"Meeting ID"_s), 0) << qPrintable(text);
}
