// What the plug-in adds to each drawing of an editor's header.
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "plugin/hooks/hookTable.h"
#include "standin/mailhost/windows/editor/HeaderViews.h"
#include "tests/scenarios/Scenario.h"

namespace bench {

void header() {
    for (const char *version : {"15.8", "16"}) {
        scenarios::Scenario scenario(QString::fromLatin1(version));
        mailhost::EditorWindow *editor = scenario.open(scenarios::Scenario::plain);
        auto *view = editor->findChild<mailhost::HeaderView *>();
        const HookRow &row =
            hookRow(mailhost::isNewerGeneration(QString::fromLatin1(version)) ? HookRowName::NewerHeaderDraw
                                                                              : HookRowName::OlderHeaderDraw);
        // The view is not being painted: the host's own drawing does nothing, and the difference is the hook.
        const rt::Selector hooked(row.hostSelector);
        const rt::Selector host(row.replacementSelector);
        const QRectF rect(view->rect());
        const Comparison times = sideBySide({repeating([&] { keep(rt::send(view, hooked, rect)); }),
                                             repeating([&] { keep(rt::send(view, host, rect)); })},
                                            {.seconds = 2});
        constexpr double limit = 3e-6;
        const double added = times.seconds[0] - times.seconds[1];
        addRow(u"drawing the header of host "_s + QString::fromLatin1(version), timeText(times.seconds[0]),
               u"the host alone: "_s + timeText(times.seconds[1]), u"+ "_s + timeText(added),
               u"at most + 3 us"_s, added <= limit);
    }
}

} // namespace bench
