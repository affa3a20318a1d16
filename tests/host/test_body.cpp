// The invitation block in the text of a body, and when it is written again.
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "plugin/host/body/bodyPorts.h"
#include "plugin/host/body/vlBodyHelper.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "plugin/util/vlMd5Utils.h"
#include "tests/support/FakeHost.h"
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

// Stands in for the workflow.
class Holder : public BodyEditorHolder {
public:
    vlOLWordMailEditor *bodyEditorOf(rt::Object *) const override { return editor; }
    void setOLNewBody(const QString &html) override { written = html; }
    QString encodeMailBody() const override { return digest; }

    QString digest, written;
    vlOLWordMailEditor *editor = nullptr;
};

// The older body editor, with all parts of its page in one object.
class OldEditorView : public FakeView {
public:
    explicit OldEditorView(QWidget *parent)
        : FakeView((define(), "ComposeView"), parent) {}
    QString html;

private:
    static rt::Value answer(rt::Object *object, rt::Selector command, rt::Args arguments) {
        auto *view = static_cast<OldEditorView *>(object);
        if (command.name() == "outerHTML")
            return view->html;
        if (command.name() == "setInnerHTML:")
            view->html = rt::textValue(arguments[0]);
        const rt::Value itself = rt::fromObject(view);
        return command.name() == "getElementsByTagName:" ? QVariantList{itself} : itself;
    }
    static void define() {
        for (const char *method : {"mainFrame", "DOMDocument", "documentElement", "outerHTML",
                                   "getElementsByTagName:", "setInnerHTML:"})
            rt::addMethod(rt::defineClass("ComposeView"), method, &answer, "");
    }
};

} // namespace

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
        {"  \n  ", B + "  <br>  " + E},
    };
    for (const auto &[invitation, html] : cases)
        EXPECT_EQ(helper().insertVlBodyBookMark(invitation, false), "<br><br>" + html + "<br><br>");
    EXPECT_EQ(helper().convertPlainTextToHTML("(" + join), "(" + link(join));
    EXPECT_EQ(helper().convertPlainTextToHTML(" " + join), " " + join) << "no word comes before it";
}

TEST(Body, AnInvitationTakesThePlaceOfTheLastOneAndARemovalTakesItOut) {
    const QString none; // nothing is removed
    const struct {
        const char *about;
        QString body, updated, removed;
    } cases[] = {
        {"null", none, none, none},
        {"no block", page("Hi"), page("Hi" + block), none},
        {"quoted", page("Hi" + B + "old" + E + "Bye"), page("Hi" + block + "Bye"), page("HiBye")},
        {"quotes stripped", page("Hi" + Bx + "old" + Ex + "Bye"), page("Hi" + block + "Bye"), page("HiBye")},
        {"two blocks", B + "1" + E + "mine" + B + "2" + E, B + "1" + E + "mine" + block,
         "mine" + B + "2" + E},
        {"nothing else", B + E, block, ""},
        {"fresh form", "Hi" + kvl_InitBeginBookMark + "old" + kvl_InitEndBookMark + "Bye",
         "Hi" + block + "Bye", "Hi<br><br>+.<br><br>Bye"},
        {"fresh form at the very end", kvl_InitBeginBookMark + kvl_InitEndBookMark, block,
         "<br><br>+.<br><br>"},
        {"end missing", page("Hi" + B + "old"), page("Hi" + B + "old" + block), none},
        {"reversed", page(E + "mine" + B), page(E + "mine" + B + block), none},
        {"a stray begin before the block", B + "mine" + B + "old" + E, B + "mine" + block, ""},
        {"a stray begin behind the block", B + "old" + E + "mine" + B, block + "mine" + B, "mine" + B},
        {"a stray end before the block", page(E + "mine" + B + "old" + E), page(E + "mine" + block),
         page(E + "mine")},
        {"an end at the very start", E + B + "old" + E, E + block, E},
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

// The search goes through the body in strides, and the block may begin where a stride does.
TEST(Body, ABlockOfAnyLengthIsFoundAtTheVeryStart) {
    for (int length = 0; length < 100; ++length)
        EXPECT_EQ(updated(B + QString(length, u'x') + E), block) << length;
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
        {"Hi" + B + "old" + E + "TAILBye", longTail, "Hi" + longTail + "Bye"},
        {"Hi" + B + "old" + E + "Mine@</font>Bye", longTail, "Hi" + longTail + "Mine@</font>Bye"},
        {"</body>" + E + "Mine" + B, indented, indented + "</body>" + E + "Mine" + B},
        {E + "Mine" + B + "Mine@</font>", longTail, E + "Mine" + B + "Mine@</font>" + longTail},
        // A block with its bookmarks in the wrong order, and one that lacks a bookmark.
        {"Hi" + B + "old" + E, E + "new" + B, "Hi" + E + "new" + B},
        {"Hi" + B + "old" + E, B + "new", QString()},
    };
    for (const auto &[body, newBlock, result] : cases)
        EXPECT_EQ(helper().updateVlBodyWithVlBookmark(body, newBlock), result);
}

TEST(EditorBody, IsLeftAsItIsByAnUnchangedInvitationIfItSaysSomething) {
    platform::installTestServices();
    Holder holder;
    BodyPorts::instance().holder = &holder;
    FakeAppointment event;
    FakeEditor editor{event};
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
    BodyPorts::instance().holder = nullptr;
}

TEST(EditorBody, AnAccountsTextIsWrittenIntoTheEditorThatTheHostHas) {
    platform::installTestServices();
    Holder holder;
    BodyPorts::instance().holder = &holder;
    FakeAppointment event;
    FakeEditor editor{event};
    vlOLWordMailEditor wordEditor(editor.bodyEditor());
    holder.editor = &wordEditor;
    const vlERCalendarEventEditorViewController adapter(&editor);
    adapter.updateEmailBodyForPAC("Dial", true);
    EXPECT_EQ(editor.body(), page("AgendaDial"));
    EXPECT_EQ(holder.written, editor.body());

    OldEditorView old(editor.header());
    old.html = page("Hi");
    adapter.updateEmailBodyForPAC("", false);
    EXPECT_EQ(old.html, page("Hi"));
    adapter.addVlReminderInEmailBody(old.html); // only an empty body gets the reminder
    EXPECT_EQ(old.html, page("Hi"));
    adapter.updateEmailBodyForPAC("Dial", true);
    EXPECT_EQ(old.html, page("HiDial"));
    adapter.addVlReminderInEmailBody(page("<br>"));
    EXPECT_EQ(old.html, "[AddVelaMeetingReminderMsg]");
    BodyPorts::instance().holder = nullptr;
}
