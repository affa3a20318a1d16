#include "standin/walkthrough/RoadSteps.h"

#include "standin/walkthrough/Road.h"

namespace walkthrough {

int walkTheRoad(const RoadOptions &options) {
    Road road(options);
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
