// The hooks installed on a host of doubles, with a strip that only notes what is asked of it.
#pragma once

#include "platform/services/TestServices.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/hooks/loadSteps.h"
#include "plugin/workflow/MeetingContext.h"
#include "plugin/workflow/workflowPorts.h"
#include "tests/hooks/HookedHost.h"

#include <QDir>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

namespace hookedhost {

inline const QString olderHeader = u"OLCalendarHeaderContainerView"_s;
inline const QString newerHeader = u"OLAutoLayoutAttachmentsAcceptingView"_s;
inline const QString meeting = u"{\"meetingKey\": \"840000017\"}"_s;

// One strip for one editor; notes what the hooks ask of it.
class FakeStrip : public EditorStrip {
public:
    DataStatus status = DataStatus::NothingToDo;
    QStringList asked;
    std::function<void()> whenAsked;
    [[nodiscard]] const std::shared_ptr<MeetingContext> &context() const override { return m_context; }
    [[nodiscard]] QString getAppointmentWindowID() const override { return u"w"_s; }
    [[nodiscard]] rt::Object *editorWindowController() const override { return nullptr; }
    [[nodiscard]] rt::Object *editorViewController() const override { return nullptr; }
    [[nodiscard]] bool blockDeleteVelaMeeting() const override { return true; }
    [[nodiscard]] bool currentIsVelaMeeting() const override { return true; }
    [[nodiscard]] bool isApptDirty() const override { return false; }
    void setOLUIAction(HostAction action) override {
        asked << u"action %1"_s.arg(quint32(action));
        if (whenAsked)
            whenAsked();
    }
    [[nodiscard]] HostAction getOLUIAction() const override { return HostAction::None; }
    [[nodiscard]] DataStatus getVlDataStatus() override { return status; }
    void setActionResultData(const QVariantMap &) override {}
    void setActionToSuccess() override { result = true; }
    [[nodiscard]] bool getActionResult() const override { return result; }
    void onUIChanged(StripState) override {}
    void refreshUI() override { asked << u"refresh"_s; }
    void enableChangeSettingButton(bool enabled) override { asked << u"enable %1"_s.arg(enabled); }
    void autoRemoveVelaMeeting() override {}
    bool result = false;

private:
    std::shared_ptr<MeetingContext> m_context = MeetingContext::make();
};

class FakeStrips : public EditorStrips {
public:
    EditorStrip *strip = nullptr;
    QList<QWidget *> headers;
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByEditorViewCtrl(rt::Object *) const override {
        return strip;
    }
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByApptWindowID(const QString &) const override {
        return strip;
    }
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByWindow(const QWidget *) const override {
        return strip;
    }
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
        const QString path = u"/Applications/Host.app"_s;
        desktop.workspace->bundles.append({"com.microsoft.Outlook", path, "/bin/true"});
        const QString contents = folder->path() + path + u"/Contents"_s;
        QDir().mkpath(contents);
        platform::services().propertyLists->write(contents + u"/Info.plist"_s,
                                                  QVariantMap{{"CFBundleShortVersionString", "16.0"}});
        return desktop;
    }

    void SetUp() override {
        desktop = installServices();
        WorkflowPorts::instance().strips = &strips;
        WorkflowPorts::instance().createStrip = [this](QWidget *header, const QRectF &) {
            strips.headers.append(header);
        };
        calls().clear();
        answers().clear();
        during() = nullptr;
    }
    void TearDown() override { WorkflowPorts::instance() = {}; }

    static std::vector<rt::Value> argumentsFor(const HookRow &row) {
        return std::vector<rt::Value>(std::size_t(rt::Selector(row.hostSelector).argumentCount()));
    }

    inline static QTemporaryDir *folder = nullptr;
    platform::TestDesktop desktop{};
    FakeStrips strips;
    FakeStrip strip;
    Thing editor{"ERCalendarEventEditorViewController"};
};

} // namespace hookedhost
