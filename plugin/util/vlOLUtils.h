// Stateless questions and conversions that every module uses: missing values, classes, JSON, trimming,
// one-string files.
#pragma once

#include "platform/runtime/Value.h"

#include <QByteArray>
#include <QList>
#include <QString>

class QWidget;

// Nothing here keeps state, throws or logs. A failure is the empty answer that each operation names.
class vlOLUtils {
public:
    // Whether there is a value: neither no value, nor a null text or pointer, nor the null marker.
    [[nodiscard]] static bool isValidInstance(const rt::Value &value) { return rt::isPresent(value); }

    // Whether the object is of the runtime class of that name or of a subclass. False for no object, a null
    // or empty name, and a class that nobody has defined. For views the names of toolkit classes count too.
    [[nodiscard]] static bool kindofClass(const rt::Object *object, const QString &className);
    [[nodiscard]] static bool kindofClass(const QWidget *view, const QString &className);
    [[nodiscard]] static bool kindofClass(const rt::Value &value, const QString &className);

    // Appends the subviews of that class, depth first in the order of the children. What lies inside a match
    // is not searched, and neither are windows that belong to a view. Nothing for no view. The views are not
    // owned.
    static void GetSubViewOfKind(const QWidget *view, const QString &className, QList<QWidget *> &result);

    // Pretty-printed JSON in UTF-8 of a dictionary or an array; null for anything else and when a member is
    // neither text, number, boolean, null marker, dictionary nor array. Members without a value are left out.
    // Integers stay integers up to 64 bits.
    [[nodiscard]] static QByteArray toJSONData(const rt::Value &value);
    [[nodiscard]] static QString toJSONString(const rt::Value &value);

    // The value that the JSON stands for, a bare text, number, boolean or null included; no value when it is
    // not JSON. A JSON null is the null marker; integers that fit are qint64.
    [[nodiscard]] static rt::Value toArrayOrNSDictionaryWithData(const QByteArray &json);
    [[nodiscard]] static rt::Value toArrayOrNSDictionary(const QString &json);
    // The dictionary that the JSON stands for; empty when it is no dictionary.
    [[nodiscard]] static QVariantMap toNSDictionary(const QString &json);

    [[nodiscard]] static QByteArray stringToNSData(const QString &text); // UTF-8; null for a null text

    // Each answers null for null, and never null for anything else. "Blanks" are spaces of any kind and tabs.
    // Trims blanks at both ends, then takes out every space and the white space and line breaks right after
    // it.
    [[nodiscard]] static QString trimAllSpace(const QString &text);
    // Trims blanks, but no line breaks, at both ends.
    [[nodiscard]] static QString trimRLSpace(const QString &text);
    // Trims line breaks, but no blanks, at both ends.
    [[nodiscard]] static QString trimNewLine(const QString &text);
    // Trims blanks and line breaks at both ends.
    [[nodiscard]] static QString trimAllSpaceAndNewLine(const QString &text);

    // A one-string file: a property list that is an array holding the text. Written atomically into an
    // existing folder. Nothing happens for a null text or a null or empty path. Errors are not reported.
    static void saveStrToFile(const QString &text, const QString &path);
    // The last text of the array. Null for a null path; "" for an empty path, a file that is missing or not
    // such a property list, and an empty array.
    [[nodiscard]] static QString readStrFromFile(const QString &path);

    // Whether there is nothing: no value or the null marker. An empty text is something.
    [[nodiscard]] static bool isNullString(const QString &text) { return text.isNull(); }
    [[nodiscard]] static bool isNullString(const rt::Value &value) { return !rt::isPresent(value); }
};
