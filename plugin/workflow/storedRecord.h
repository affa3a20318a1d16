// The record of the meeting that an appointment carries in its private field.
#pragma once

#include <QString>
#include <QVariantMap>

// The members of a record; empty for a null, empty or malformed text.
[[nodiscard]] QVariantMap storedRecord(const QString &text);
