// A realistic week for trying the program without a calendar file.
#pragma once

#include <QByteArray>
#include <QDate>

namespace mailhost {

// An iCalendar file (UTF-8, CRLF) with about a dozen appointments of "Ada Example <ada@parlo.example>" in the
// week (Monday to Sunday) that contains the day: single ones, series, an all-day one, one in another time
// zone, one owned by another organizer. An invalid date gives the current week.
QByteArray sampleCalendar(const QDate &week);

} // namespace mailhost
