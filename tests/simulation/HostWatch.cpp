#include "tests/simulation/HostWatch.h"

#include "platform/runtime/Runtime.h"
#include "standin/mailhost/model/CalendarEvent.h"
#include "standin/mailhost/windows/EditorWindow.h"

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
        runs().append({operation, controller->content()->UUID(), windowOf(controller)});
    return rt::sendArgs(self, rt::Selector("watched_" + command.name().toUtf8()), arguments);
}

template<HostOperation operation>
rt::Value onEvent(rt::Object *self, rt::Selector command, rt::Args arguments) {
    if (const auto *event = dynamic_cast<mailhost::CalendarEvent *>(self))
        runs().append({operation, event->UUID(), nullptr});
    return rt::sendArgs(self, rt::Selector("watched_" + command.name().toUtf8()), arguments);
}

void watch(const char *className, const QByteArray &selector, rt::Implementation watcher) {
    rt::Class *cls = rt::classNamed(QString::fromLatin1(className));
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
    const char *editor = "ERCalendarEventEditorViewController";
    const QByteArray prefix = "vl_ERCalendarEventEditorViewController_";
    watch(editor, prefix + "saveArg:", &onEditor<HostOperation::Save>);
    watch(editor, prefix + "saveAndCloseWindow:", &onEditor<HostOperation::SaveAndClose>);
    watch(editor, prefix + "saveAndCloseWindowAndReturnError:andReturnError:",
          &onEditor<HostOperation::SaveAndClose>);
    watch(editor, prefix + "sendMeetingPostValidate", &onEditor<HostOperation::Send>);
    watch("ECMutableCalendarEvent", "vl_ECMutableCalendarEvent_saveRecord",
          &onEvent<HostOperation::SaveRecord>);
    watch("ECCalendarEvent", "vl_ECCalendarEvent_deleteEventNow", &onEvent<HostOperation::Delete>);
}

QList<HostRun> takeHostRuns() {
    return std::exchange(runs(), {});
}

} // namespace simulation
