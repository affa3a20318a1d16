// The hooks installed on the host's double, with a strip that records what is asked of it.
#pragma once

#include "plugin/hooks/hookTable.h"
#include "plugin/hooks/loadSteps.h"
#include "tests/hooks/HookedHost.h"
#include "tests/support/FreshPlugin.h"
#include "tests/support/RecordingPorts.h"

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

class HooksTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = new QTemporaryDir;
        define();
        installServices();
        runLoadSteps();
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
    platform::TestDesktop desktop{};
    RecordingStrips strips;
    FakeAppointment event;
    FakeEditor editor{event};
    HookedStrip strip{editor};
    FakeObject controller{"CCGridViewController", {{"selectedEvent", rt::fromObject(&event)}}};
    FakeObject grid{"OLCalendarGridViewWrapper", {{"gridViewController", rt::fromObject(&controller)}}};
};

} // namespace hookedhost
