// The hooks on a host that is too old for the plug-in.
#include "plugin/hooks/loadSteps.h"
#include "plugin/host/adapters/hostNames.h"
#include "tests/hooks/HookedHost.h"
#include "tests/support/TestServices.h"

#include <QApplication>
#include <QDialog>
#include <QSet>
#include <gtest/gtest.h>

using namespace hookedhost;

// Without a bundle of the host, the host counts as unsupported.
TEST(HooksOfAnOldHost, HeaderTileAndToolbarStayTheHostsAndTheUserIsToldOnce) {
    define(HookRowName::EditorSave);
    const platform::TestDesktop desktop = platform::installTestServices();
    runLoadSteps();
    ASSERT_EQ(desktop.bus->posted().size(), 1) << "only the agent is asked, for the client's version";
    EXPECT_EQ(desktop.bus->posted().first().userInfo.value(u"actionId"_s), u"1"_s);
    const QSet<HookRowName> leftOut = {HookRowName::OlderHeaderDraw, HookRowName::TileInit,
                                       HookRowName::ToolbarItem, HookRowName::ToolbarDefaultItems,
                                       HookRowName::ToolbarAllowedItems};
    for (const HookRow &row : hookTable()) {
        rt::Class *cls = rt::classNamed(QString::fromLatin1(row.hostClass));
        rt::Class *table = row.kind == HookKind::Class ? cls->metaclass() : cls;
        EXPECT_EQ(table->lookup(rt::Selector(row.replacementSelector)) == nullptr, leftOut.contains(row.name))
            << row.hostSelector;
    }
    int shown = 0;
    for (QWidget *window : QApplication::topLevelWidgets())
        shown += qobject_cast<QDialog *>(window) && window->isVisible();
    EXPECT_EQ(shown, 1);

    // A method that this host lacks gives no value. The others are the host's own.
    FakeObject editor("ERCalendarEventEditorViewController");
    EXPECT_EQ(rt::send(&editor, olItem_hostSave), rt::Value());
    EXPECT_TRUE(calls().isEmpty());
    rt::send(&editor, olItem_hostSaveFromSender, rt::Value());
    EXPECT_EQ(calls().size(), 1);
    for (const HookRowName name : {HookRowName::ShowEvent, HookRowName::EditorSave}) {
        HookRow row = hookRow(name);
        row.hostClass = "AClassThatNoHostHas";
        EXPECT_FALSE(installHook(row));
    }
}
