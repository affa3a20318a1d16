// Property lists: bundles, defaults, one-string files.
#include "platform/services/propertylist/PropertyList.h"
#include "tests/fuzz/FuzzTarget.h"

#include <QDateTime>

using namespace fuzz;

namespace {

// Whether XML can hold the whole value: dates without parts of a second, only entries with a value, only
// characters that XML allows.
bool isExact(const rt::Value &value) {
    switch (value.typeId()) {
    case QMetaType::QVariantMap: {
        const QVariantMap entries = value.toMap();
        return std::all_of(entries.cbegin(), entries.cend(), isExact) &&
               std::all_of(entries.keyBegin(), entries.keyEnd(),
                           [](const QString &key) { return isExact(key); });
    }
    case QMetaType::QVariantList: {
        const QVariantList items = value.toList();
        return std::all_of(items.cbegin(), items.cend(), isExact);
    }
    case QMetaType::QString: {
        const QString text = value.toString();
        return text.isValidUtf16() && std::all_of(text.cbegin(), text.cend(), [](QChar unit) {
                   return (unit >= u' ' || unit == u'\t' || unit == u'\n') && unit < u'\ufffe';
               });
    }
    case QMetaType::QDateTime: {
        const QDateTime instant = value.toDateTime();
        return instant.time().msec() == 0 && instant.date().year() >= 1 && instant.date().year() <= 9999;
    }
    case QMetaType::Double:
        return value.toDouble() == value.toDouble();
    default:
        return rt::isPresent(value);
    }
}

void open(const QByteArray &bytes) {
    const rt::Value value = platform::PropertyList::parse(bytes);
    const QByteArray xml = platform::PropertyList::toXml(value);
    claim(rt::isPresent(value) || xml.isEmpty(), "no value is no property list");
    if (xml.isEmpty())
        return;
    const rt::Value again = platform::PropertyList::parse(xml);
    claim(!isExact(value) || again == value, "a value that XML can hold comes back");
    claimSame(platform::PropertyList::toXml(again), xml, "a value that was read again is written as before");
}

const AddFuzzTarget target("propertylist", open);

} // namespace
