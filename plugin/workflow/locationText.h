// The parts of an appointment's location that are not the user's.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

inline constexpr QChar locationSeparator = u';';

// Takes every occurrence of the part out of the text, first those with the separator right behind them.
// Nothing for a null or empty part.
void removeLocationPart(QString &text, const QString &part, QChar separator);

// The names of the rooms (resources) among the attendees of an appointment's snapshot, in their order.
[[nodiscard]] QStringList roomNames(const QVariantMap &snapshot);
