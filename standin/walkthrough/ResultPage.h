// The results of a walk as a page for a browser: each step with its pictures and messages, with the
// generations of the host side by side.
#pragma once

#include "platform/Literals.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace walkthrough {

// The mark before a picture's file name in a report.
inline const QString pictureMark = u"# picture "_s;

struct StepResult {
    bool ok = false;
    QString text;
    QStringList pictures; // file names in the folder of the walk; those taken since the step before
    QStringList messages; // as reported: "sent 3: ...", "answered 3: ..."
};

struct GenerationResult {
    QString hostVersion; // its files are in the folder "host-<version>"
    QList<StepResult> steps;
};

[[nodiscard]] qsizetype failedSteps(const QList<GenerationResult> &walks);
// Writes "index.html" into the folder. Returns false on failure.
[[nodiscard]] bool writeResultPage(const QString &folder, const QList<GenerationResult> &walks);

} // namespace walkthrough
