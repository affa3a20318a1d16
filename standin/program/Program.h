// The start of the programs: options that need no display, and errors as one sentence on standard error.
#pragma once

#include "platform/Literals.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <memory>

namespace program {

enum ExitStatus { Success = 0, CannotOpen = 1, WrongUsage = 2, NoDisplay = 3 };

// The application object of a program with windows, with name and version set. A plain one without a display
// when the arguments hold --help, --version or one of `withoutWindow`. Ends the process with NoDisplay when a
// display is needed and there is none.
[[nodiscard]] std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv, const QString &name,
                                                                const QStringList &withoutWindow = {});
// For a program that never shows a window.
[[nodiscard]] std::unique_ptr<QCoreApplication> makeWindowlessApplication(int &argc, char **argv,
                                                                          const QString &name);

// Adds --help and --version, and parses the arguments of the application. Ends the process when one of both
// is asked for (Success) or an option is unknown (WrongUsage).
void parse(QCommandLineParser &parser);
// Ends the process with WrongUsage, after the sentence and where to find the options.
[[noreturn]] void refuse(const QString &sentence);
// One line on standard error, after the program's name.
void complain(const QString &sentence);
// Whether the user reads standard error: it is a terminal.
[[nodiscard]] bool isReadOnTerminal();

} // namespace program
