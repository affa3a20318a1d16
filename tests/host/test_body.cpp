// The invitation block in the text of a body is put in, replaced and taken out. Addresses in a plain
// invitation become links.
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

QString link(const QString &address) {
    return "<a href=\"" + address + "\">" + address + "</a>";
}

} // namespace

TEST(PlainTextToHtml, LinksWhatHasTextBeforeItAndABlankOrTheEndBehindIt) {
    const QString a = "http://a.example/j/1", b = "https://b.example/j/2";
    const struct {
        QString text, html;
    } cases[] = {
        {"Join " + a + " now", "Join " + link(a) + " now"},
        {"Join " + a + "\r\nnow", "Join " + link(a) + "\r<br>now"},
        {"Join " + a + "\n\n", "Join " + link(a)},
        {a + " is where we meet", a + " is where we meet"},
        {a + " or " + b + " now", a + " or " + link(b) + " now"},
        {"Join http://a http://b now", "Join " + link("http://a") + " http://b now"},
        {"Join " + a + " and " + a + " now", "Join " + link(a) + " and " + link(a) + " now"},
        {"Join http://a or http://ab x", "Join " + link("http://a") + " or " + link("http://ab") + " x"},
        {"x http://ahttp://a z http://a y", "x " + link("http://ahttp://a") + " z http://a y"},
        {"x https://chttp://d y https://c<a z",
         "x https://c" + link("http://d") + " y " + link("https://c<a") + " z"},
        {"(http://a) and more", "(" + link("http://a)") + " and more"},
        {"no address: http:/x\nhttp", "no address: http:/x<br>http"},
        {"\n\nA\nB\n", "A<br>B"},
        {"", ""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(helper().convertPlainTextToHTML(c.text), c.html);
    EXPECT_TRUE(helper().convertPlainTextToHTML(QString()).isNull());
    EXPECT_FALSE(helper().convertPlainTextToHTML("").isNull());
}

TEST(Block, APlainInvitationIsMarkedFromItsFirstWordToBehindItsLast) {
    const QString join = "https://meet.example/j/1";
    const struct {
        QString invitation, html;
    } cases[] = {
        {"Hello there, this is the invitation.\r\n\r\nBye",
         B + "Hello there, this is the invitation.\r<br>\r<br>Bye" + E},
        // Three characters behind the last word still belong to the block.
        {"  Hello\r\n\r\n\r\n", "  " + B + "Hello\r<br>\r" + E},
        {"Hello     ", B + "Hello   " + E + "  "},
        // The invitation repeats its beginning and its end.
        {"Dial 1 2 3 Dial 1 2 3 Dial 1 2 3", B + "Dial 1 2 3 Dial 1 2 3 Dial 1 2 3" + E},
        // An address at the end must not take in the bookmark behind it.
        {"Join " + join, B + "Join " + link(join) + E},
        {join, B + link(join) + E},
        {" \n ", B + " <br> " + E},
    };
    for (const auto &c : cases)
        EXPECT_EQ(helper().insertVlBodyBookMark(c.invitation, false), "<br><br>" + c.html + "<br><br>");
}

TEST(Body, AnInvitationTakesThePlaceOfTheLastOneAndARemovalTakesItOut) {
    const QString none; // nothing is removed
    const struct {
        const char *about;
        QString body, updated, removed;
    } cases[] = {
        {"null", none, none, none},
        {"empty", "", block, none},
        {"no block", page("Hi"), page("Hi" + block), none},
        {"two ends of body", "a</body>b</body>", "a</body>b" + block + "</body>", none},
        {"no end of body", "Hi", block, none},
        {"quoted", page("Hi" + B + "old" + E + "Bye"), page("Hi" + block + "Bye"), page("HiBye")},
        {"quotes stripped", page("Hi" + Bx + "old" + Ex + "Bye"), page("Hi" + block + "Bye"), page("HiBye")},
        {"both kinds: the quoted ones count", Bx + "x" + Ex + B + "old" + E, Bx + "x" + Ex + block,
         Bx + "x" + Ex},
        {"two blocks", B + "1" + E + "mine" + B + "2" + E, B + "1" + E + "mine" + block,
         "mine" + B + "2" + E},
        {"nothing else", B + E, block, ""},
        {"fresh form", "Hi" + kvl_InitBeginBookMark + "old" + kvl_InitEndBookMark + "Bye",
         "Hi" + block + "Bye", "Hi<br><br>+.<br><br>Bye"},
        {"fresh form at the very end", kvl_InitBeginBookMark + kvl_InitEndBookMark, block,
         "<br><br>+.<br><br>"},
        {"half a fresh form", "Hi<br><br>+" + B + "old" + E + "Bye", "Hi<br><br>+" + block + "Bye",
         "Hi<br><br>+Bye"},
        {"end missing", page("Hi" + B + "old"), page("Hi" + B + "old" + block), none},
        {"begin missing", page("old" + E), page("old" + E + block), none},
        {"one of each kind", page(B + "old" + Ex), page(B + "old" + Ex + block), none},
        {"reversed", page(E + "mine" + B), page(E + "mine" + B + block), none},
        {"reversed, no end of body", E + "mine" + B, E + "mine" + B + block, none},
        {"reversed, quotes stripped", page(Ex + "mine" + Bx), page(Ex + "mine" + Bx + block), none},
        {"a stray begin behind the block", page(B + "old" + E + "mine" + B), page(block + "mine" + B),
         page("mine" + B)},
        {"a stray end before the block", page(E + "mine" + B + "old" + E), page(E + "mine" + block),
         page(E + "mine")},
        {"a reversed pair before the block", page(E + "mine" + B + "my" + B + "old" + E),
         page(E + "mine" + B + "my" + block), page(E + "mine" + B + "my")},
        {"a reversed fresh form", kvl_InitEndBookMark + "mine" + kvl_InitBeginBookMark,
         kvl_InitEndBookMark + "mine" + kvl_InitBeginBookMark + block, none},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.about);
        EXPECT_EQ(updated(c.body), c.updated);
        EXPECT_EQ(updated(c.body).isNull(), c.updated.isNull());
        EXPECT_EQ(updated(updated(c.body)), c.updated)
            << "the second update must find the block of the first";
        EXPECT_EQ(helper().removeVlBodyForDelete(c.body), c.removed);
        EXPECT_EQ(helper().removeVlBodyForDelete(c.body).isNull(), c.removed.isNull());
    }
}

// The block's head, here its blanks, or its tail is missing in the body when the host or the user has changed
// it.
TEST(Body, AFontTagIsTheEdgeOfABlockWhoseHeadOrTailIsNotFound) {
    const QString indented = "  " + block;
    const QString longTail = block + "tail";
    const struct {
        QString body, block, result;
    } cases[] = {
        {"Hi<FONT SIZE=2>" + B + "old" + E + "Bye", indented, "Hi" + indented + "Bye"},
        {"<font size=1>Hi</font><font size=2>" + B + "old" + E, indented,
         "<font size=1>Hi</font>" + indented},
        {"Hi" + B + "old" + E + "<font size=2>Bye", indented, "Hi" + indented + "<font size=2>Bye"},
        {"<font size=2><p class=x></p>\r\n<BR>" + B + "old" + E, indented, indented},
        {"Hi<font size=2>&nbsp; <b>&nbsp;" + B + "old" + E, indented, "Hi" + indented},
        // The font tag belongs to something else.
        {"<font size=2>Mine</font><br>" + B + "old" + E, indented, "<font size=2>Mine</font><br>" + indented},
        {"<font size=2><img src=x>" + B + "old" + E, indented, "<font size=2><img src=x>" + indented},
        {"<font size=2>1 < 2" + B + "old" + E, indented, "<font size=2>1 < 2" + indented},
        {page("<font size=2>mine" + E + "mine" + B), indented,
         page("<font size=2>mine" + E + "mine" + B + indented)},
        {"Hi" + B + "old" + E + "@</FONT>Bye", longTail, "Hi" + longTail + "Bye"},
        {"Hi" + B + "old" + E + "Bye", longTail, "Hi" + longTail + "Bye"},
        {"Hi" + B + "old" + E + "Mine@</font>Bye", longTail, "Hi" + longTail + "Mine@</font>Bye"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(helper().updateVlBodyWithVlBookmark(c.body, c.block), c.result);
}

TEST(PlainText, LosesNoBreakSpaceEntitiesAndIsNullOnlyForNothing) {
    platform::installTestServices();
    EXPECT_TRUE(helper().convertHTMLToPlainText(QString()).isNull());
    EXPECT_TRUE(helper().convertHTMLToPlainText("").isNull());
    EXPECT_FALSE(helper().convertHTMLToPlainText("&nbsp;").isNull());
    EXPECT_EQ(helper().convertHTMLToPlainText("<div>a&nbsp;b&amp;nbsp;</div>").trimmed(), "ab&nbsp;");
    EXPECT_TRUE(helper().trimHTMLNBSPTags(QString()).isNull());
}
