#include "platform/services/TestServices.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/hooks/loadSteps.h"
#include "tests/hooks/HookedHost.h"

#include <QApplication>
#include <QDialog>
#include <gtest/gtest.h>

using namespace hookedhost;

// No bundle of a host is found at all, which reads as a host that is not supported.
TEST(HooksOfAnOldHost, HeaderTileAndToolbarAreLeftAloneTheRestIsHookedAndItIsSaidOnce) {
    define();
    platform::installTestServices();
    runLoadSteps();
    for (int number = 1; number <= int(hookTable().size()); ++number) {
        const HookRow &row = hookTable()[std::size_t(number) - 1];
        rt::Class *cls = rt::classNamed(QString::fromLatin1(row.hostClass));
        rt::Class *table = row.kind == HookKind::Class ? cls->metaclass() : cls;
        const bool leftOut = number == 1 || number == 12 || (number >= 18 && number <= 20);
        EXPECT_EQ(table->lookup(rt::Selector(row.replacementSelector)) == nullptr, leftOut)
            << row.hostSelector;
    }
    int shown = 0;
    for (QWidget *window : QApplication::topLevelWidgets())
        shown += qobject_cast<QDialog *>(window) && window->isVisible();
    EXPECT_EQ(shown, 1);
}
