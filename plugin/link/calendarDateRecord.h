// The record of one date of an appointment.
#pragma once

#include "platform/runtime/Value.h"

#include <QString>
#include <QVariantMap>

// Members "UTCTime", "localTime" and "timezone", in this order. The record ends before the first member whose
// value is missing (a null text or an invalid zone). Times have the form "yyyy-MM-dd HH:mm:ss".
[[nodiscard]] QVariantMap GenerateVlCalendarDate(const QString &utcTime, const QString &localTime,
                                                 const rt::Value &timeZone);
