#include "platform/runtime/Value.h"

#include <cmath>
#include <limits>

namespace rt {

namespace {

bool isTextType(const Value &value) {
    return value.typeId() == QMetaType::QString;
}

bool isNumberType(const Value &value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

qint64 leadingInteger(QStringView text) {
    text = text.trimmed();
    qsizetype i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        negative = text[i++] == u'-';
    constexpr quint64 limit = quint64(std::numeric_limits<qint64>::max());
    quint64 number = 0;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        const auto digit = quint64(text[i].unicode() - u'0');
        if (number > (limit - digit) / 10)
            return negative ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
        number = number * 10 + digit;
    }
    return negative ? -qint64(number) : qint64(number);
}

qint64 truncated(double number) {
    if (std::isnan(number))
        return 0;
    if (number >= 9223372036854775807.0)
        return std::numeric_limits<qint64>::max();
    if (number <= -9223372036854775808.0)
        return std::numeric_limits<qint64>::min();
    return qint64(number);
}

} // namespace

Value nullMarker() {
    return Value::fromValue(nullptr);
}

bool isNullMarker(const Value &value) {
    return value.typeId() == QMetaType::Nullptr;
}

bool isPresent(const Value &value) {
    if (!value.isValid() || isNullMarker(value))
        return false;
    if (isTextType(value))
        return !value.toString().isNull();
    if (value.metaType().flags().testFlag(QMetaType::IsPointer))
        return *static_cast<void *const *>(value.constData()) != nullptr;
    return true;
}

bool boolValue(const Value &value) {
    if (isTextType(value)) {
        const QString text = value.toString();
        return text.compare(u"yes", Qt::CaseInsensitive) == 0 ||
               text.compare(u"true", Qt::CaseInsensitive) == 0 || leadingInteger(text) != 0;
    }
    return isNumberType(value) && doubleValue(value) != 0.0;
}

qint64 integerValue(const Value &value) {
    if (isTextType(value))
        return leadingInteger(value.toString());
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float)
        return truncated(value.toDouble());
    return isNumberType(value) ? value.toLongLong() : 0;
}

double doubleValue(const Value &value) {
    if (isTextType(value)) {
        const double number = value.toString().trimmed().toDouble();
        return std::isnan(number) ? 0.0 : number;
    }
    if (!isNumberType(value))
        return 0.0;
    const double number = value.toDouble();
    return std::isnan(number) ? 0.0 : number;
}

QString textValue(const Value &value) {
    return isTextType(value) ? value.toString() : QString();
}

QVariantMap mapValue(const Value &value) {
    return value.typeId() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
}

QVariantList listValue(const Value &value) {
    return value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList();
}

} // namespace rt
