// Loads a library that runs its own code when it is opened.
#pragma once

#include <QString>

namespace rt {

// Call it from a library's static constructor. The functions run in the order of the calls, after the library
// was opened and fully initialised.
void addLoadMethod(void (*load)());

// Opens the library, keeps it open until the process ends, and runs its load methods. Returns false and sets
// a sentence in `error` if it cannot be opened. Opening it again does nothing and returns true.
bool loadImage(const QString &path, QString *error);

} // namespace rt
