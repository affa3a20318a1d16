// The values that host and plug-in exchange, and functions for all of them.
#pragma once

#include "platform/Literals.h"

#include <QString>
#include <QVariant>
#include <QVariantMap>
#include <optional>

class QWidget;

namespace rt {

class Object;

// No value: the invalid QVariant. The null marker: nullMarker(). Text: QString (a null QString is no text,
// an empty one is ""). Dictionaries: QVariantMap. Arrays: QVariantList. Bytes: QByteArray. Instants:
// QDateTime. Time zones: QTimeZone. Host objects: rt::Object *. Windows and views: QWidget *. Rectangles:
// QRectF.
using Value = QVariant;

// Marks an entry of a dictionary as "set to nothing", which differs from a missing entry.
[[nodiscard]] Value nullMarker();
[[nodiscard]] bool isNullMarker(const Value &value);
// False for no value, the null marker, a null text and a null pointer.
[[nodiscard]] bool isPresent(const Value &value);

// "Reads as true": a boolean by itself, a number when not 0, a text when it is "YES", "true" (any case) or
// begins with an integer other than 0. Everything else, no value and the null marker included, reads as
// false.
[[nodiscard]] bool boolValue(const Value &value);
// The integer of a value: numbers truncated toward zero, booleans 1 or 0, a text its leading integer (blanks
// before it are skipped, out of range gives the nearest limit), everything else 0.
[[nodiscard]] qint64 integerValue(const Value &value);
// The same as a floating-point number; 0 in place of not-a-number.
[[nodiscard]] double doubleValue(const Value &value);
// The text if the value is a text, else a null QString. Does not convert numbers.
[[nodiscard]] QString textValue(const Value &value);
// The text, "" in place of a null one.
[[nodiscard]] inline QString orEmpty(const QString &text) {
    return text.isNull() ? u""_s : text;
}
// The dictionary or array if the value is one, else an empty one.
[[nodiscard]] QVariantMap mapValue(const Value &value);
[[nodiscard]] QVariantList listValue(const Value &value);

// The host object in a value: an Object *, or a widget that is one; else nullptr. Not owned; may be destroyed
// at any time.
[[nodiscard]] Object *objectValue(const Value &value);
// The widget in a value: a QWidget *, or an object that is one; else nullptr. Not owned.
[[nodiscard]] QWidget *widgetValue(const Value &value);
[[nodiscard]] Value fromObject(Object *object);  // no value for nullptr
[[nodiscard]] Value fromWidget(QWidget *widget); // no value for nullptr

// The identifier of an object: "%x" of the low 32 bits of its address; a null text for nullptr.
// For a window or view use the overload for widgets: an object that is also a widget has two addresses.
[[nodiscard]] QString identifier(const Object *object);
[[nodiscard]] QString identifier(const QWidget *widget);

} // namespace rt
