// What the plug-in adds to each drawing of an editor's header.
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "standin/mailhost/windows/editor/HeaderViews.h"
#include "tests/scenarios/Scenario.h"

#include <QImage>

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
               u"at most + 3 us"_s, added <= limit ? Reached::Yes : Reached::No);
        // Drawn by the toolkit only when it was covered, or has changed.
        auto *strip = scenarios::Scenario::stripOf(editor);
        QImage image(strip->size(), QImage::Format_ARGB32_Premultiplied);
        const double drawn = sideBySide({repeating([&] { strip->render(&image); })}).seconds[0];
        addRow(u"for comparison: the strip itself, its lines and buttons"_s, timeText(drawn), QString(),
               QString(), QString(), Reached::NoAim);
    }
}

} // namespace bench
