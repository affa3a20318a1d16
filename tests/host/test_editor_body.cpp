// The invitation in the body editors of older and newer hosts.
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

// Stands in for the workflow.
class Holder : public BodyEditorHolder {
public:
    vlOLWordMailEditor *bodyEditorOf(rt::Object *) const override { return editor.get(); }
    void setOLNewBody(const QString &html) override { written = html; }
    QString encodeMailBody() const override { return digest; }

    std::unique_ptr<vlOLWordMailEditor> editor;
    QString written, digest;
};

const QString block = kvl_BeginBookmark + "Join" + kvl_EndBookmark;

QString page(const QString &content) {
    return "<html><body>" + content + "</body></html>";
}

} // namespace

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
    EXPECT_EQ(shown(), page("Hi" + block));
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
    FakeComposeView *body = withOlderBody(page("Hi" + block));
    write("Join");
    EXPECT_EQ(body->writtenBody(), page("Hi" + block));
    write(QString(), true, false);
    EXPECT_EQ(body->writtenBody(), page("Hi"));
    writePAC("<b>1</b>", true);
    EXPECT_EQ(body->writtenBody(), page("Hi" + block + "<b>1</b>"));
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
    writePAC("Dial", true);
    EXPECT_TRUE(shown().isNull());
    EXPECT_TRUE(holder.written.isNull());
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
