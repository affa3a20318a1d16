#include "standin/support/Child.h"

#include <csignal>
#include <sys/prctl.h>

namespace standin {

Child::Child() {
    setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

Child::~Child() {
    kill();
    waitForFinished();
}

bool Child::run(const QString &program, const QStringList &arguments) {
    start(program, arguments);
    if (waitForStarted())
        return true;
    qWarning("%s: %s", qPrintable(program), qPrintable(errorString()));
    return false;
}

} // namespace standin
