// Adapts a rule (RRULE) to another start of its series.
#pragma once

#include "standin/mailhost/store/Times.h"

namespace mailhost {

// The parts of the rule that name exactly the day or the time of `before` name those of `after`: the weekday
// (also as "the second Monday"), the day of the month, the month, the time of day. Other parts stay. UNTIL
// moves as far as the start.
[[nodiscard]] QByteArray movedRule(const QByteArray &rule, const Moment &before, const Moment &after);

} // namespace mailhost
