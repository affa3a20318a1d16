#include "tests/simulation/HostWatch.h"

#include "platform/runtime/Runtime.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"

#include <gtest/gtest.h>
#include <utility>

namespace simulation {

namespace {

QList<HostRun> &runs() {
    static auto *list = new QList<HostRun>;
    return *list;
}

mailhost::EditorWindow *windowOf(const mailhost::EditorViewController *controller) {
    return qobject_cast<mailhost::EditorWindow *>(controller->view()->window());
}

template<HostOperation operation>
rt::Value onEditor(rt::Object *self, rt::Selector command, rt::Args arguments) {
    if (const auto *controller = dynamic_cast<mailhost::EditorViewController *>(self))
        runs().append({operation, windowOf(controller)});
    return rt::sendArgs(self, rt::Selector("watched_" + command.name().toUtf8()), arguments);
}

void watch(const char *command, rt::Implementation watcher) {
    rt::Class *cls = rt::classNamed(u"ERCalendarEventEditorViewController"_s);
    const QByteArray selector = QByteArray("vl_ERCalendarEventEditorViewController_") + command;
    const QByteArray hidden = "watched_" + selector;
    ASSERT_TRUE(rt::addMethod(cls, hidden.constData(), watcher, "v@:")) << hidden.constData();
    ASSERT_TRUE(rt::exchangeImplementations(rt::instanceMethod(cls, rt::Selector(selector.constData())),
                                            rt::instanceMethod(cls, rt::Selector(hidden.constData()))))
        << selector.constData();
}

} // namespace

void watchHost() {
    static bool done = false;
    if (std::exchange(done, true))
        return;
    watch("saveArg:", &onEditor<HostOperation::Save>);
    watch("saveAndCloseWindow:", &onEditor<HostOperation::SaveAndClose>);
    watch("saveAndCloseWindowAndReturnError:andReturnError:", &onEditor<HostOperation::SaveAndClose>);
    watch("sendMeetingPostValidate", &onEditor<HostOperation::Send>);
}

QList<HostRun> takeHostRuns() {
    return std::exchange(runs(), {});
}

} // namespace simulation
