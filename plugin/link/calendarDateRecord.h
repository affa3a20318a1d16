// The record of one date of an appointment.
#pragma once

#include "platform/runtime/Value.h"

#include <QString>
#include <QVariantMap>

// "UTCTime", "localTime" and "timezone", in this order, ending before the first that is missing (null texts,
// no value or an invalid zone). Times have the form "yyyy-MM-dd HH:mm:ss".
[[nodiscard]] QVariantMap GenerateVlCalendarDate(const QString &utcTime, const QString &localTime,
                                                 const rt::Value &timeZone);
