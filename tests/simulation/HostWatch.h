// Which of the host's own editor operations ran, whoever asked for them: the user, or the plug-in that had
// held them back.
#pragma once

#include <QList>

namespace mailhost {
class EditorWindow;
}

namespace simulation {

enum class HostOperation { Save, SaveAndClose, Send };

struct HostRun {
    HostOperation operation;
    mailhost::EditorWindow *editor = nullptr; // may have gone since, only to be compared
};

// Observes the host's implementations behind the plug-in's hooks. The plug-in must be loaded. A second call
// does nothing.
void watchHost();
// The operations that ran since the last call, in order.
[[nodiscard]] QList<HostRun> takeHostRuns();

} // namespace simulation
