// The invitation block in the text of a body: put in, replaced, taken out.
#include "plugin/host/body/vlBodyHelper.h"
#include "tests/support/TestServices.h"

#include <gtest/gtest.h>

namespace {

const QString B = kvl_BeginBookmark, E = kvl_EndBookmark;
const QString Bx = kvl_BeginBookmarkEx, Ex = kvl_EndBookmarkEx;
const QString block = B + "new" + E;

const vlBodyHelper &helper() {
    return vlBodyHelper::sharedInstance();
}

QString page(const QString &content) {
    return "<html><body>" + content + "</body></html>";
}

QString updated(const QString &body) {
    return helper().updateVlBodyWithSrcBody(body, "new", true, QString());
}

} // namespace

TEST(Block, APlainInvitationIsMarkedFromItsFirstWordToBehindItsLast) {
    const QString join = "https://meet.example/j/1";
    const QString link = "<a href=\"" + join + "\">" + join + "</a>";
    const struct {
        QString invitation, html;
    } cases[] = {
        {"Hello", B + "Hello" + E},
        {"Hello there, this is the invitation.\r\n\r\nBye",
         B + "Hello there, this is the invitation.\r<br>\r<br>Bye" + E},
        // Three characters behind the last word still belong to the block, and the rest does not.
        {"  Hello\r\n\r\n\r\n", "  " + B + "Hello\r<br>\r" + E},
        {"Hello     ", B + "Hello   " + E + "  "},
        // An invitation that repeats its beginning and its end.
        {"Dial 1 2 3 Dial 1 2 3 Dial 1 2 3", B + "Dial 1 2 3 Dial 1 2 3 Dial 1 2 3" + E},
        // The bookmark behind a closing address survives.
        {"Join " + join, B + "Join " + link + E},
        {join, B + link + E},
        {" \n ", B + " <br> " + E},
    };
    for (const auto &c : cases)
        EXPECT_EQ(helper().insertVlBodyBookMark(c.invitation, false), "<br><br>" + c.html + "<br><br>");
}

TEST(Body, AnInvitationGoesInWhereItBelongs) {
    const struct {
        const char *about;
        QString body, result;
    } cases[] = {
        {"no block", page("Hi"), page("Hi" + block)},
        {"two ends of body", "a</body>b</body>", "a</body>b" + block + "</body>"},
        {"no end of body", "Hi", block},
        {"empty", "", block},
        {"quoted", page("Hi" + B + "old" + E + "Bye"), page("Hi" + block + "Bye")},
        {"quotes stripped", page("Hi" + Bx + "old" + Ex + "Bye"), page("Hi" + block + "Bye")},
        {"both kinds: the quoted ones count", Bx + "x" + Ex + B + "old" + E, Bx + "x" + Ex + block},
        {"two blocks: the last", B + "1" + E + "mine" + B + "2" + E, B + "1" + E + "mine" + block},
        {"fresh form", "Hi" + kvl_InitBeginBookMark + "old" + kvl_InitEndBookMark + "Bye",
         "Hi" + block + "Bye"},
        {"fresh form at the very end", kvl_InitBeginBookMark + kvl_InitEndBookMark, block},
        {"half a fresh form", "Hi<br><br>+" + B + "old" + E + "Bye", "Hi<br><br>+" + block + "Bye"},
        {"end missing", page("Hi" + B + "old"), page("Hi" + B + "old" + block)},
        {"begin missing", page("old" + E), page("old" + E + block)},
        {"one of each kind", page(B + "old" + Ex), page(B + "old" + Ex + block)},
    };
    for (const auto &c : cases)
        EXPECT_EQ(updated(c.body), c.result) << c.about;
    EXPECT_TRUE(updated(QString()).isNull());
}

TEST(Body, AFontTagBeforeTheBookmarkBeginsTheBlockWhenItsHeadIsNotFound) {
    const QString indented = "  " + block; // the host has taken the blanks of the head away
    const struct {
        QString body, result;
    } cases[] = {
        {"Hi<FONT SIZE=2>" + B + "old" + E + "Bye", "Hi" + indented + "Bye"},
        {"<font size=1>Hi</font><font size=2>" + B + "old" + E, "<font size=1>Hi</font>" + indented},
        {"Hi" + B + "old" + E + "Bye", "Hi" + indented + "Bye"},                           // no font tag
        {"Hi" + B + "old" + E + "<font size=2>Bye", "Hi" + indented + "<font size=2>Bye"}, // only behind it
        {"<font size=2><p class=x></p>\r\n<BR>" + B + "old" + E, indented},
        {"Hi<font size=2>&nbsp; <b>&nbsp;" + B + "old" + E, "Hi" + indented}, // its blanks as entities
        // The font of something else.
        {"<font size=2>Mine</font><br>" + B + "old" + E, "<font size=2>Mine</font><br>" + indented},
        {"<font size=2><img src=x>" + B + "old" + E, "<font size=2><img src=x>" + indented},
        {"<font size=2>1 < 2" + B + "old" + E, "<font size=2>1 < 2" + indented},
    };
    for (const auto &c : cases)
        EXPECT_EQ(helper().updateVlBodyWithVlBookmark(c.body, indented), c.result);
}

TEST(Body, AClosedFontEndsTheBlockWhenItsTailIsNotFound) {
    const QString longTail = B + "new" + E + "tail"; // a tail that the body does not have
    EXPECT_EQ(helper().updateVlBodyWithVlBookmark("Hi" + B + "old" + E + "@</FONT>Bye", longTail),
              "Hi" + longTail + "Bye");
    EXPECT_EQ(helper().updateVlBodyWithVlBookmark("Hi" + B + "old" + E + "Bye", longTail),
              "Hi" + longTail + "Bye");
    EXPECT_EQ(helper().updateVlBodyWithVlBookmark("Hi" + B + "old" + E + "Mine@</font>Bye", longTail),
              "Hi" + longTail + "Mine@</font>Bye");
}

TEST(Body, BookmarksInTheWrongOrderEncloseNothingOfTheUsers) {
    const struct {
        const char *about;
        QString body, result, removed;
    } cases[] = {
        {"reversed", page(E + "mine" + B), page(E + "mine" + B + block), QString()},
        {"reversed, no end of body", E + "mine" + B, E + "mine" + B + block, QString()},
        {"reversed, quotes stripped", page(Ex + "mine" + Bx), page(Ex + "mine" + Bx + block), QString()},
        {"a stray begin behind the block", page(B + "old" + E + "mine" + B), page(block + "mine" + B),
         page("mine" + B)},
        {"a stray end before the block", page(E + "mine" + B + "old" + E), page(E + "mine" + block),
         page(E + "mine")},
        {"a reversed pair before the block", page(E + "mine" + B + "my" + B + "old" + E),
         page(E + "mine" + B + "my" + block), page(E + "mine" + B + "my")},
        {"a reversed fresh form", kvl_InitEndBookMark + "mine" + kvl_InitBeginBookMark,
         kvl_InitEndBookMark + "mine" + kvl_InitBeginBookMark + block, QString()},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(updated(c.body), c.result) << c.about;
        EXPECT_EQ(helper().removeVlBodyForDelete(c.body), c.removed) << c.about;
        // A second update finds what the first one wrote.
        EXPECT_EQ(updated(updated(c.body)), c.result) << c.about;
    }
    // The end that lies before the bookmark does not become the block's end because a font tag lies before
    // both.
    const QString indented = "  " + block;
    EXPECT_EQ(helper().updateVlBodyWithVlBookmark(page("<font size=2>mine" + E + "mine" + B), indented),
              page("<font size=2>mine" + E + "mine" + B + indented));
}

TEST(Body, TheBlockIsRemovedAndNothingAroundIt) {
    const struct {
        QString body, result;
    } cases[] = {
        {page("Hi<br><br>" + B + "old" + E + "<br><br>Bye"), page("Hi<br><br><br><br>Bye")},
        {page("Hi" + Bx + "old" + Ex + "Bye"), page("HiBye")},
        {B + E, ""},
        {B + "1" + E + "mine" + B + "2" + E, "mine" + B + "2" + E},
    };
    for (const auto &c : cases) {
        const QString removed = helper().removeVlBodyForDelete(c.body);
        EXPECT_EQ(removed, c.result);
        EXPECT_FALSE(removed.isNull());
    }
    for (const QString &body :
         {QString(), QString(""), page("Hi"), page(B + "old"), page("old" + E), page(B + Ex)})
        EXPECT_TRUE(helper().removeVlBodyForDelete(body).isNull());
}

TEST(PlainText, LosesNoBreakSpaceEntitiesAndIsNullOnlyForNothing) {
    platform::installTestServices();
    EXPECT_TRUE(helper().convertHTMLToPlainText(QString()).isNull());
    EXPECT_TRUE(helper().convertHTMLToPlainText("").isNull());
    EXPECT_FALSE(helper().convertHTMLToPlainText("&nbsp;").isNull());
    EXPECT_EQ(helper().convertHTMLToPlainText("<div>a&nbsp;b&amp;nbsp;</div>").trimmed(), "ab&nbsp;");
    EXPECT_TRUE(helper().trimHTMLNBSPTags(QString()).isNull());
}
