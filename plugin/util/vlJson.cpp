// The JSON functions of vlOLUtils. The toolkit's converter does not fit: it rejects a document that is a bare
// value, and it silently turns values that JSON cannot represent into null.
#include "plugin/util/vlOLUtils.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <limits>
#include <optional>

namespace {

std::optional<QJsonValue> jsonValue(const rt::Value &value);

bool isLeftOut(const rt::Value &member) {
    return !rt::isPresent(member) && !rt::isNullMarker(member);
}

std::optional<QJsonValue> jsonObject(const QVariantMap &map) {
    QJsonObject object;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (isLeftOut(entry.value()))
            continue;
        const std::optional<QJsonValue> member = jsonValue(entry.value());
        if (!member)
            return std::nullopt;
        object.insert(entry.key(), *member);
    }
    return object;
}

std::optional<QJsonValue> jsonArray(const QVariantList &list) {
    QJsonArray array;
    for (const rt::Value &entry : list) {
        if (isLeftOut(entry))
            continue;
        const std::optional<QJsonValue> member = jsonValue(entry);
        if (!member)
            return std::nullopt;
        array.append(*member);
    }
    return array;
}

std::optional<QJsonValue> jsonNumber(double number) {
    if (!std::isfinite(number))
        return std::nullopt;
    return QJsonValue(number);
}

std::optional<QJsonValue> jsonValue(const rt::Value &value) {
    switch (value.typeId()) {
    case QMetaType::Nullptr:
        return QJsonValue(QJsonValue::Null);
    case QMetaType::Bool:
        return QJsonValue(value.toBool());
    case QMetaType::QString:
        return QJsonValue(value.toString());
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return QJsonValue(value.toLongLong());
    case QMetaType::ULong:
    case QMetaType::ULongLong: {
        const quint64 number = value.toULongLong();
        if (number > quint64(std::numeric_limits<qint64>::max()))
            return QJsonValue(double(number));
        return QJsonValue(qint64(number));
    }
    case QMetaType::Float:
    case QMetaType::Double:
        return jsonNumber(value.toDouble());
    case QMetaType::QVariantMap:
        return jsonObject(value.toMap());
    case QMetaType::QVariantList:
        return jsonArray(value.toList());
    default:
        return std::nullopt;
    }
}

QJsonDocument documentOf(const QJsonValue &value) {
    return value.isObject() ? QJsonDocument(value.toObject()) : QJsonDocument(value.toArray());
}

QByteArray withoutByteOrderMark(const QByteArray &json) {
    static const QByteArray mark = QByteArrayLiteral("\xEF\xBB\xBF");
    return json.startsWith(mark) ? json.sliced(mark.size()) : json;
}

} // namespace

QByteArray vlOLUtils::toJSONData(const rt::Value &value) {
    if (value.typeId() != QMetaType::QVariantMap && value.typeId() != QMetaType::QVariantList)
        return {};
    const std::optional<QJsonValue> json = jsonValue(value);
    return json ? documentOf(*json).toJson(QJsonDocument::Indented).trimmed() : QByteArray();
}

QString vlOLUtils::toJSONString(const rt::Value &value) {
    const QByteArray json = toJSONData(value);
    return json.isEmpty() ? QString() : QString::fromUtf8(json);
}

rt::Value vlOLUtils::toArrayOrNSDictionaryWithData(const QByteArray &json) {
    if (json.isNull())
        return {};
    // Wrapping in an array makes a bare value parse. A document like "1,2" then gives two values and is
    // rejected.
    const QJsonDocument document = QJsonDocument::fromJson('[' + withoutByteOrderMark(json) + ']');
    const QJsonArray values = document.array();
    return values.size() == 1 ? values.first().toVariant() : rt::Value();
}

rt::Value vlOLUtils::toArrayOrNSDictionary(const QString &json) {
    return toArrayOrNSDictionaryWithData(stringToNSData(json));
}

QVariantMap vlOLUtils::toNSDictionary(const QString &json) {
    return rt::mapValue(toArrayOrNSDictionary(json));
}
