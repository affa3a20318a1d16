// Asked before a foreign parser sees a binary property list.
#pragma once

#include <QByteArray>

namespace platform {

// Whether every container's members are there, none contains itself, none lies deeper than
// PropertyLists::maximumDepth, and the whole stays of a sane size when each shared object is counted wherever
// it is used (a few hundred bytes can otherwise stand for billions of nodes).
[[nodiscard]] bool isHarmlessBinaryPropertyList(const QByteArray &bytes);

} // namespace platform
