#include "standin/walkthrough/RoadSteps.h"

#include "standin/walkthrough/Road.h"

#include <QDir>

namespace walkthrough {

int walkTheRoad(const QString &hostVersion, const QString &out, const QString &calendar) {
    Road road(hostVersion, QDir(out).filePath(QStringLiteral("host-") + hostVersion), calendar);
    if (!road.start())
        return 1;
    const bool done = walkTheFirstCancellation(road) && walkTheEditor(road) && walkTheCalendar(road) &&
                      walkTheRefusals(road) && walkTheLateAnswers(road) && walkTheDeletions(road) &&
                      walkTheToolBar(road) && walkTheAudioConferences(road) && walkOnBehalf(road);
    if (!done)
        road.walk().comment(QStringLiteral("the steps after this one were not walked"));
    return done && !road.walk().failed() ? 0 : 1;
}

} // namespace walkthrough
