// A realistic week, for a first look at the program without a calendar of one's own.
#pragma once

#include <QByteArray>
#include <QDate>

namespace mailhost {

// An iCalendar file (UTF-8, CRLF) with about a dozen appointments of "Ada Example <ada@parlo.example>" in the
// week (Monday to Sunday) that contains the day: single ones, series, an all-day one, one in another time
// zone, one owned by another organizer. An invalid date gives the current week.
QByteArray sampleCalendar(const QDate &week);

} // namespace mailhost
