// The invitation block in the text of a body and in the body editors of older and newer hosts.
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "plugin/host/body/bodyPorts.h"
#include "plugin/host/body/editorBody.h"
#include "plugin/host/body/vlBodyHelper.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "plugin/util/vlMd5Utils.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestServices.h"

#include <gtest/gtest.h>

namespace {

const QString B = kvl_BeginBookmark, E = kvl_EndBookmark;
const QString Bx = kvl_BeginBookmarkEx, Ex = kvl_EndBookmarkEx;
const QString block = B + "new" + E, joinBlock = B + "Join" + E;

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

// Stands in for the workflow.
class Holder : public BodyEditorHolder {
public:
    vlOLWordMailEditor *bodyEditorOf(rt::Object *) const override { return editor.get(); }
    void setOLNewBody(const QString &html) override { written = html; }
    QString encodeMailBody() const override { return digest; }

    std::unique_ptr<vlOLWordMailEditor> editor;
    QString written, digest;
};

} // namespace

TEST(PlainTextToHtml, LinksWhatHasTextBeforeItAndABlankOrTheEndBehindIt) {
    const QString a = "http://a.example/j/1", b = "https://b.example/j/2";
    const std::pair<QString, QString> cases[] = {
        {"Join " + a + " now", "Join " + link(a) + " now"},
        {"Join " + a + "\r\nnow", "Join " + link(a) + "\r<br>now"},
        {"Join " + a + "\n\n", "Join " + link(a)},
        {a + " is where we meet", a + " is where we meet"},
        {a + " or " + b + " now", a + " or " + link(b) + " now"},
        {"Join http://a http://b now", "Join " + link("http://a") + " http://b now"},
        {"Join http://a or http://ab x", "Join " + link("http://a") + " or " + link("http://ab") + " x"},
        {"x https://chttp://d y https://c<a z",
         "x https://c" + link("http://d") + " y " + link("https://c<a") + " z"},
        {"(http://a) and more", "(" + link("http://a)") + " and more"},
        {"no address: http:/x\nhttp", "no address: http:/x<br>http"},
        {"\n\nA\nB\n", "A<br>B"},
        {"", ""},
    };
    for (const auto &[text, html] : cases)
        EXPECT_EQ(helper().convertPlainTextToHTML(text), html);
    EXPECT_TRUE(helper().convertPlainTextToHTML(QString()).isNull());
    EXPECT_FALSE(helper().convertPlainTextToHTML("").isNull());
}

TEST(Block, APlainInvitationIsMarkedFromItsFirstWordToBehindItsLast) {
    const QString join = "https://meet.example/j/1";
    const std::pair<QString, QString> cases[] = {
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
    for (const auto &[invitation, html] : cases)
        EXPECT_EQ(helper().insertVlBodyBookMark(invitation, false), "<br><br>" + html + "<br><br>");
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
        {"end missing", page("Hi" + B + "old"), page("Hi" + B + "old" + block), none},
        {"begin missing", page("old" + E), page("old" + E + block), none},
        {"one of each kind", page(B + "old" + Ex), page(B + "old" + Ex + block), none},
        {"reversed", page(E + "mine" + B), page(E + "mine" + B + block), none},
        {"a stray begin behind the block", page(B + "old" + E + "mine" + B), page(block + "mine" + B),
         page("mine" + B)},
        {"a stray end before the block", page(E + "mine" + B + "old" + E), page(E + "mine" + block),
         page(E + "mine")},
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

// The host or the user may have changed the head of the block (here blanks) or its tail.
TEST(Body, AFontTagIsTheEdgeOfABlockWhoseHeadOrTailIsNotFound) {
    const QString indented = "  " + block;
    const QString longTail = block + "tail";
    const std::tuple<QString, QString, QString> cases[] = {
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
    for (const auto &[body, newBlock, result] : cases)
        EXPECT_EQ(helper().updateVlBodyWithVlBookmark(body, newBlock), result);
}

class EditorBody : public testing::Test {
protected:
    EditorBody() { BodyPorts::instance().holder = &holder; }
    ~EditorBody() override { BodyPorts::instance().holder = nullptr; }

    FakeComposeView *withOlderBody(const QString &html) {
        return new FakeComposeView(editor.header(), html); // owned by the window
    }
    void withNewerBody(const QString &html) {
        rt::send(editor.bodyEditor(), "displayHTMLContent:readOnly:", html, false);
        editor.bodyEditor()->called.clear();
        holder.editor = std::make_unique<vlOLWordMailEditor>(editor.bodyEditor());
    }
    QString shown() { return editor.bodyEditor()->called.isEmpty() ? QString() : editor.body(); }
    void write(const QString &invitation, bool isDelete = false, bool isHTML = true) {
        vlEmailBodyMgr::sharedInstance().updateMailBody(&editor, invitation, isDelete, isHTML);
    }
    void writePAC(const QString &invitation, bool isHTML) {
        vlEmailBodyMgr::sharedInstance().updateMailBodyForPAC(&editor, invitation, isHTML);
    }

    platform::TestDesktop desktop = platform::installTestServices();
    Holder holder;
    FakeAppointment event;
    FakeEditor editor{event};
};

TEST_F(EditorBody, OfTheNewerKindIsShownAndKeptByTheWorkflow) {
    withNewerBody(page("Hi"));
    write("Join");
    EXPECT_EQ(shown(), page("Hi" + joinBlock));
    EXPECT_EQ(holder.written, shown());
    EXPECT_EQ(editor.bodyEditor()->arguments.value(1), false); // not read-only
    write("", true, false);
    EXPECT_EQ(shown(), page("Hi"));
    writePAC("Dial", false);
    EXPECT_EQ(shown(), page("Hi<br><br>Dial<br><br>"));
    EXPECT_EQ(holder.written, shown());
}

TEST_F(EditorBody, OfTheOlderKindGetsTheWholeDocumentAndComesFirst) {
    withNewerBody(page("not this one"));
    FakeComposeView *body = withOlderBody(page("Hi" + joinBlock));
    write("Join");
    EXPECT_EQ(body->writtenBody(), page("Hi" + joinBlock));
    write(QString(), true, false);
    EXPECT_EQ(body->writtenBody(), page("Hi"));
    writePAC("<b>1</b>", true);
    EXPECT_EQ(body->writtenBody(), page("Hi" + joinBlock + "<b>1</b>"));
    EXPECT_TRUE(shown().isNull());
    EXPECT_TRUE(holder.written.isNull());
    EXPECT_NE(vlGetEmailBodyElementInEventEditorUI(editor.window()), nullptr);
    EXPECT_EQ(vlGetDOMDocumentInEventEditorUI(nullptr), nullptr);
}

TEST_F(EditorBody, IsLeftAloneWithoutABlockAnEditorOrAWorkflow) {
    write("", true, false); // no editor of either kind
    withNewerBody(page("Hi"));
    write("", true, false);
    writePAC("", false);
    vlEmailBodyMgr::sharedInstance().updateMailBody(nullptr, "Join", false, true);
    vlEmailBodyMgr::sharedInstance().updateMailBodyForPAC(nullptr, "Dial", true);
    BodyPorts::instance().holder = nullptr;
    write("Join");
    EXPECT_TRUE(shown().isNull() && holder.written.isNull());
    FakeComposeView *older = withOlderBody(page("Hi"));
    write("", true, false);
    EXPECT_TRUE(older->writtenBody().isNull());
}

TEST_F(EditorBody, AnUnchangedInvitationLeavesABodyThatSaysSomething) {
    const QString same = vlMd5Utils::vlMD5Hex("Join");
    const struct {
        const char *about;
        QString body, digest, invitation;
        bool isDelete, isHTML, needed;
    } cases[] = {
        {"first invitation", "Hi", QString(), "Join", false, false, true},
        {"same", "Hi", same, "Join", false, false, false},
        {"same, as HTML", "Hi", same, "Jo&nbsp;in", false, true, false},
        {"same, but the body is empty", "<br> ", same, "Join", false, false, true},
        {"another", "Hi", same, "Come", false, false, true},
        {"none", "Hi", QString(), "", false, false, false},
        {"delete without a text", "Hi", same, "", true, false, true},
        {"delete with the same text", "Hi", same, "Join", true, false, false},
        {"digest in capitals is another", "Hi", same.toUpper(), "Join", false, false, true},
    };
    for (const auto &c : cases) {
        event.values.insert("body", page(c.body));
        holder.digest = c.digest;
        const vlERCalendarEventEditorViewController adapter(&editor);
        EXPECT_EQ(
            vlEmailBodyMgr::sharedInstance().needUpdateVlEmail(&adapter, c.invitation, c.isDelete, c.isHTML),
            c.needed)
            << c.about;
    }
    EXPECT_FALSE(vlEmailBodyMgr::sharedInstance().needUpdateVlEmail(nullptr, "Join", true, false));
}
