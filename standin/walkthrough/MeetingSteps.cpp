#include "standin/walkthrough/MeetingSteps.h"

#include "standin/walkthrough/Session.h"

namespace walkthrough {

int runWalkthrough(const SessionOptions &options) {
    Session session(options);
    if (!session.start())
        return 1;
    const bool done = runFirstCancellation(session) && runEditor(session) && runCalendar(session) &&
                      runRefusals(session) && runLateAnswers(session) && runDeletions(session) &&
                      runToolBar(session) && runAudioConferences(session) && runOnBehalf(session);
    if (!done)
        session.report().comment(u"the steps after this one were not walked"_s);
    return done && !session.report().failed() ? 0 : 1;
}

} // namespace walkthrough
