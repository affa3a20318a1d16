// Lists the appointments in a period of time: single ones and the days of series.
#pragma once

#include "standin/mailhost/store/CalendarIndex.h"

namespace mailhost {

// See CalendarFile::occurrences().
[[nodiscard]] QList<Occurrence> listOccurrences(CalendarIndex &index, const QDateTime &from,
                                                const QDateTime &to);

} // namespace mailhost
