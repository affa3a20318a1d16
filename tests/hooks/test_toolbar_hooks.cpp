// The plug-in's items in the tool-bars of main windows.
#include "platform/toolkit/Toolbar.h"
#include "platform/toolkit/Windows.h"
#include "plugin/hooks/vlHookERageMainWindowController.h"
#include "tests/hooks/HooksFixture.h"

#include <QMainWindow>

using namespace hookedhost;

namespace {

// The host's own items, by whatever identifier the tool-bar asks for.
platform::ToolbarItem *hostItem(const QString &identifier) {
    // Kept to the end of the process: any tool-bar may show them.
    static auto &items = *new QHash<QString, platform::ToolbarItem *>;
    platform::ToolbarItem *&item = items[identifier];
    if (!item)
        item = new platform::ToolbarItem(identifier);
    return item;
}

// The host's method is the double's: it answers from a table that has one entry for this row.
struct HostWindow : QMainWindow {
    explicit HostWindow(const QStringList &identifiers) {
        answers().insert(u"ERageMainWindowController "
                         "vl_ERageMainWindowController_toolbarDefaultItemIdentifiers:"_s,
                         QVariantList(identifiers.cbegin(), identifiers.cend()));
        answers().insert(u"ERageMainWindowController vl_ERageMainWindowController_toolbarItem:"
                         "itemForItemIdentifier:willBeInsertedIntoToolbar:"_s,
                         rt::fromObject(hostItem(u"A"_s)));
        addToolBar(toolbar);
        platform::registerWindow(this, &controller);
        toolbar->setDelegate(&controller);
    }
    ~HostWindow() override { platform::unregisterWindow(this); }
    [[nodiscard]] QStringList shown() const {
        QStringList identifiers;
        for (const platform::ToolbarItem *item : toolbar->visibleItems())
            identifiers.append(item->itemIdentifier());
        return identifiers;
    }
    FakeObject controller{"ERageMainWindowController"};
    platform::Toolbar *toolbar = new platform::Toolbar(u"Main"_s);
};

const QString flex = platform::toolbarFlexibleSpaceIdentifier;
const QString bar = platform::toolbarSeparatorIdentifier;

void addBoth() {
    vlHookERageMainWindowController &hook = vlHookERageMainWindowController::sharedInstance();
    hook.addUIToMainWindow(vlScheduleToolbarItemIdentifier);
    hook.addUIToMainWindow(vlStartToolbarItemIdentifier);
}

} // namespace

TEST_F(HooksTest, TheItemsStandBeforeTheLastFlexibleSpace) {
    const QString schedule = vlScheduleToolbarItemIdentifier;
    const QString start = vlStartToolbarItemIdentifier;
    const struct {
        QStringList before, after;
    } cases[] = {
        {{"A", flex}, {"A", bar, schedule, bar, start, flex}},
        {{"A", bar, flex}, {"A", bar, schedule, bar, start, flex}},
        {{flex, "A", flex}, {flex, "A", bar, schedule, bar, start, flex}},
        {{"A"}, {start, schedule, "A"}},
        {{flex, "A"}, {schedule, bar, start, flex, "A"}},
        {{}, {start, schedule}},
        {{"A", schedule, flex}, {"A", schedule, bar, start, flex}},
        {{start, schedule, "A", flex}, {start, schedule, "A", flex}},
    };
    for (const auto &one : cases) {
        desktop.userDefaults->values.clear();
        HostWindow window(one.before);
        addBoth();
        EXPECT_EQ(window.shown().join(u' '), one.after.join(u' '));
        addBoth();
        EXPECT_EQ(window.shown().join(u' '), one.after.join(u' '));
    }
}

TEST_F(HooksTest, AHiddenToolbarAndAWindowOfAnotherKindGetNothing) {
    HostWindow window({"A", flex});
    window.toolbar->hide();
    addBoth();
    EXPECT_EQ(window.shown(), (QStringList{"A", flex}));
    window.toolbar->show();
    platform::registerWindow(&window, &editor);
    addBoth();
    EXPECT_EQ(window.shown(), (QStringList{"A", flex}));
    vlHookERageMainWindowController::sharedInstance().addVelaButtonToToolbar(nullptr, u"x"_s);
}

TEST_F(HooksTest, AllFourItemsCanBeAddedByHandAndComeBackWithTheDefault) {
    HostWindow window({"A", flex});
    addBoth();
    QStringList offered;
    for (const platform::ToolbarItem *item : window.toolbar->paletteItems())
        offered.append(item->itemIdentifier());
    EXPECT_TRUE(offered.contains(vlSchedulePACToolbarItemIdentifier));
    EXPECT_TRUE(offered.contains(vlOpenLogFolderIdentifier));
    const QStringList usual = window.shown();
    while (!window.shown().isEmpty())
        window.toolbar->removeItem(0);
    window.toolbar->restoreDefault();
    EXPECT_EQ(window.shown(), usual);
}
