// A root folder of a walk's or a test's own, below which the programs are found.
#pragma once

#include <QString>

namespace walkthrough {

// Makes `folder` such a root, with links to the programs installed below `installed` but none to the host:
// each host writes its version there, and one of another generation would change it under this one.
void makeRoot(const QString &folder, const QString &installed);

} // namespace walkthrough
