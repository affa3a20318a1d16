// Translates the client's result texts into error codes.
#pragma once

#include "plugin/link/clientCodes.h"

#include <QString>

// Each function compares the whole text. An unlisted text is not an error; an empty or missing text always
// is.
[[nodiscard]] ClientError
meetingFeedbackError(const QString &content); // schedule, update, delete, get meeting
[[nodiscard]] ClientError profileFeedbackError(const QString &content);
[[nodiscard]] ClientError accountsFeedbackError(const QString &content);
