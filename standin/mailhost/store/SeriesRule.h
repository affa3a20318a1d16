// A rule whose series begins on another day.
#pragma once

#include "standin/mailhost/store/Times.h"

namespace mailhost {

struct AdaptedRule {
    QByteArray text;
    bool otherDay = false; // it named the day, and names another one now
};

// Weekday (also as "the second Monday"), day of the month, month and time of day become those of `after`
// where the rule names exactly those of `before`, and no others beside.
[[nodiscard]] AdaptedRule adaptedRule(const QByteArray &rule, const Moment &before, const Moment &after);

// The rule names its days, instead of taking them from the start.
[[nodiscard]] bool namesDays(const QByteArray &rule);

} // namespace mailhost
