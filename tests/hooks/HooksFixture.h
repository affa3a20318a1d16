// The hooks installed on the host's double, with a strip that records what is asked of it.
#pragma once

#include "platform/toolkit/Toolbar.h"
#include "platform/toolkit/Windows.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/hooks/loadSteps.h"
#include "tests/hooks/HookedHost.h"
#include "tests/support/FreshPlugin.h"
#include "tests/support/RecordingPorts.h"

#include <QMainWindow>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace hookedhost {

inline const QString olderHeader = u"OLCalendarHeaderContainerView"_s;
inline const QString newerHeader = u"OLAutoLayoutAttachmentsAcceptingView"_s;

class HookedStrip : public RecordingStrip {
public:
    using RecordingStrip::RecordingStrip;
    void setOLUIAction(HostAction action) override {
        asked << u"action %1"_s.arg(quint32(action));
        if (whenAsked)
            whenAsked();
    }
    void refreshUI() override { asked << u"refresh"_s; }
    void enableChangeSettingButton(bool enabled) override { asked << u"enable %1"_s.arg(enabled); }

    QStringList asked;
    std::function<void()> whenAsked;
};

// The host's own items, by whatever identifier the tool-bar asks for.
inline platform::ToolbarItem *hostItem(const QString &identifier) {
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

class HooksTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = new QTemporaryDir;
        define();
        installServices();
        HostWindow window({u"A"_s});
        runLoadSteps();
        itemsAfterLoading = window.shown();
    }
    static void TearDownTestSuite() { delete folder; }

    static platform::TestDesktop installServices() {
        platform::TestDesktop desktop = platform::installTestServices();
        desktop.workspace->root = folder->path();
        installHost(desktop, u"16.0"_s);
        return desktop;
    }

    void SetUp() override {
        desktop = installServices();
        WorkflowPorts::instance().strips = &strips;
        WorkflowPorts::instance().createStrip = [this](QWidget *header, const QRectF &frame) {
            strips.createStrip(header, frame);
        };
        strip.blocked = true;
        strip.context()->meetingKey = u"840000017"_s;
        strip.status = DataStatus::NothingToDo;
        calls().clear();
        answers().clear();
    }
    void TearDown() override {
        fakehost::during() = nullptr;
        WorkflowPorts::instance() = {};
    }

    static std::vector<rt::Value> argumentsFor(const HookRow &row) {
        return std::vector<rt::Value>(std::size_t(rt::Selector(row.hostSelector).argumentCount()));
    }

    inline static QTemporaryDir *folder = nullptr;
    inline static QStringList itemsAfterLoading;
    platform::TestDesktop desktop{};
    RecordingStrips strips;
    FakeAppointment event;
    FakeEditor editor{event};
    HookedStrip strip{editor};
    FakeObject controller{"CCGridViewController", {{"selectedEvent", rt::fromObject(&event)}}};
    FakeObject grid{"OLCalendarGridViewWrapper", {{"gridViewController", rt::fromObject(&controller)}}};
};

} // namespace hookedhost
