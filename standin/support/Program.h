// The start and the end of the programs: options that need no display, errors as one sentence on standard
// error, and the end of the session.
#pragma once

#include "platform/Literals.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <memory>

namespace program {

enum ExitStatus { CannotOpen = 1, WrongUsage = 2, NoDisplay = 3 };

// Sets name and version. Call it before the application object exists.
void introduce(const QString &name);
// The application object of a program with windows. A plain one without a display when the arguments hold
// --help, --version or one of `withoutWindow`. Ends the process with NoDisplay when a display is needed and
// there is none.
[[nodiscard]] std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv, const QString &name,
                                                                const QStringList &withoutWindow = {});

// Adds --help and --version, and parses the arguments of the application. Ends the process when one of both
// is asked for or an option is unknown (WrongUsage).
void parse(QCommandLineParser &parser);
// Ends the process with WrongUsage, after the sentence and where to find the options.
[[noreturn]] void refuse(const QString &sentence);
// One line on standard error, after the program's name.
void complain(const QString &sentence);
// From now on the process ends with its session: when the bus is gone for 20 to 30 s.
void endWithSession();

} // namespace program
