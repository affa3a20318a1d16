// A calendar such as a busy user has after years: single appointments, series of several kinds, changed
// days, several zones, bodies and attendees.
#pragma once

#include <QByteArray>
#include <QDate>

// `count` appointments, five a day from four years before to some months after `around`.
[[nodiscard]] QByteArray manyAppointments(int count, const QDate &around);
