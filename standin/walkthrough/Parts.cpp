#include "standin/walkthrough/Parts.h"

#include "platform/Literals.h"

namespace walkthrough {

namespace {

const struct {
    const char *name;
    bool (*run)(Session &session);
} parts[] = {
    {"first cancellation", runFirstCancellation},
    {"editor", runEditor},
    {"calendar", runCalendar},
    {"refusals", runRefusals},
    {"late answers", runLateAnswers},
    {"deletions", runDeletions},
    {"tool-bar", runToolBar},
    {"audio conferences", runAudioConferences},
    {"on behalf", runOnBehalf},
};

} // namespace

int runWalkthrough(const SessionOptions &options) {
    Session session(options);
    if (!session.start())
        return 1;
    for (const auto &part : parts) {
        if (part.run(session))
            continue;
        session.report().comment(u"stopped in the part \"%1\""_s.arg(QLatin1String(part.name)));
        return 1;
    }
    return session.report().failed() ? 1 : 0;
}

} // namespace walkthrough
