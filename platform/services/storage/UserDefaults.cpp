#include "platform/services/storage/UserDefaults.h"

#include "platform/services/propertylist/PropertyList.h"

namespace platform {

bool changeDefault(QVariantMap *values, const QString &key, const rt::Value &value) {
    const bool isNone =
        !value.isValid() || (value.typeId() == QMetaType::QString && value.toString().isNull());
    if (isNone)
        return values->remove(key) > 0;
    const auto old = values->constFind(key);
    if (old != values->constEnd() && old->typeId() == value.typeId() && *old == value)
        return false;
    // Nested by one level, as in the dictionary of all values.
    if (PropertyList::toXml(QVariantList{value}).isEmpty() || rt::isNullMarker(value)) {
        qWarning("the default \"%s\" cannot be kept: %s", qPrintable(key), value.typeName());
        return false;
    }
    values->insert(key, value);
    return true;
}

} // namespace platform
