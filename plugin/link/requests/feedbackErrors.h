// The client's result texts.
#pragma once

#include "plugin/link/clientCodes.h"

#include <QString>

// Each compares the whole text. What is not listed is no error. An empty or missing text always is one.
[[nodiscard]] ClientError
meetingFeedbackError(const QString &content); // schedule, update, delete, get meeting
[[nodiscard]] ClientError profileFeedbackError(const QString &content);
[[nodiscard]] ClientError accountsFeedbackError(const QString &content);
