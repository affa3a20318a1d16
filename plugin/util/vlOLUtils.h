// Stateless helpers used by every module: missing values, classes, JSON, trimming, one-string files.
#pragma once

#include "platform/runtime/Value.h"

#include <QByteArray>
#include <QList>
#include <QString>

class QWidget;

// The functions have no state and never throw or log. On failure they return the empty value named at each
// function.
class vlOLUtils {
public:
    // Whether the value is present: it is not missing, a null text, a null pointer or the null marker.
    [[nodiscard]] static bool isValidInstance(const rt::Value &value) { return rt::isPresent(value); }

    // Whether the object is an instance of the runtime class of that name or of a subclass. False for
    // nullptr, a null or empty name, an undefined class, and a view that is not an object of the host.
    [[nodiscard]] static bool kindofClass(const rt::Object *object, const QString &className);
    [[nodiscard]] static bool kindofClass(const QWidget *view, const QString &className);
    [[nodiscard]] static bool kindofClass(const rt::Value &value, const QString &className);

    // Appends the subviews of that class, depth first in the order of the children. Does not search inside a
    // match or in windows that belong to a view. Appends nothing without a view. The views are not owned.
    static void GetSubViewOfKind(const QWidget *view, const QString &className, QList<QWidget *> &result);

    // Indented JSON in UTF-8 of a dictionary or an array. Null for other values, and if a member is not a
    // text, number, boolean, null marker, dictionary or array. Members without a value are left out. Integers
    // up to 64 bits stay exact.
    [[nodiscard]] static QByteArray toJSONData(const rt::Value &value);
    [[nodiscard]] static QString toJSONString(const rt::Value &value);

    // The value of the JSON, which may also be a bare text, number, boolean or null; no value if it is not
    // JSON. A JSON null becomes the null marker; integers that fit become qint64.
    [[nodiscard]] static rt::Value toArrayOrNSDictionaryWithData(const QByteArray &json);
    [[nodiscard]] static rt::Value toArrayOrNSDictionary(const QString &json);
    // The dictionary in the JSON; empty if the JSON is not a dictionary.
    [[nodiscard]] static QVariantMap toNSDictionary(const QString &json);

    [[nodiscard]] static QByteArray stringToNSData(const QString &text); // UTF-8; null for a null text

    // The trim functions return null only for null. "Blanks" are spaces of any kind and tabs. This one trims
    // blanks at both ends, then removes every space together with the white space and line breaks directly
    // after it.
    [[nodiscard]] static QString trimAllSpace(const QString &text);
    // Trims blanks but not line breaks at both ends.
    [[nodiscard]] static QString trimRLSpace(const QString &text);
    // Trims line breaks but not blanks at both ends.
    [[nodiscard]] static QString trimNewLine(const QString &text);
    // Trims blanks and line breaks at both ends.
    [[nodiscard]] static QString trimAllSpaceAndNewLine(const QString &text);

    // Writes a one-string file: a property list with an array that contains the text. Writes atomically; the
    // folder must exist. Does nothing for a null text or a null or empty path. Errors are not reported.
    static void saveStrToFile(const QString &text, const QString &path);
    // The last text of the array. Null for a null path; "" for an empty path, for a file that is missing or
    // not such a property list, and for an empty array.
    [[nodiscard]] static QString readStrFromFile(const QString &path);

    // Whether the value is missing or the null marker. An empty text is not null.
    [[nodiscard]] static bool isNullString(const QString &text) { return text.isNull(); }
    [[nodiscard]] static bool isNullString(const rt::Value &value) { return !rt::isPresent(value); }
};
