// Warnings in the log during a test: each one that was not announced fails the test in which it appears.
#pragma once

#include <QString>

// Announces that the current test will log a warning that contains the text, at least once. The test fails
// when it does not. Announcements end with the test.
void expectWarning(const QString &part);
