#include "standin/walkthrough/Parts.h"

#include "platform/Literals.h"

namespace walkthrough {

int runWalkthrough(const SessionOptions &options) {
    Session session(options);
    if (!session.start())
        return 1;
    for (const Part &part :
         {Part{"cancellation", {cancelWithoutClient}}, editorPart(), calendarPart(), refusalPart(),
          lateAnswerPart(), deletionPart(), toolBarPart(), audioPart(), onBehalfPart()}) {
        for (const auto step : part.steps) {
            if (step(session))
                continue;
            session.report().comment(u"stopped in the part \"%1\""_s.arg(QLatin1String(part.name)));
            return 1;
        }
    }
    return session.report().failed() ? 1 : 0;
}

} // namespace walkthrough
