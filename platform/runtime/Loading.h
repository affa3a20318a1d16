// Opening a library whose code joins a running program by itself.
#pragma once

#include <QString>

namespace rt {

// Called from a library's static constructor: the function runs as soon as the library has been opened and
// everything in it is initialised. In the order of the calls.
void addLoadMethod(void (*load)());

// Opens the library, keeps it open for the life of the process, and runs its load methods. False, with a
// sentence in `error`, when it cannot be opened; opening it again does nothing and is true.
bool loadImage(const QString &path, QString *error = nullptr);

} // namespace rt
