// The functions of Value.h that need the definition of Object. Object.h itself includes Value.h.
#include "platform/runtime/Object.h"

#include <QWidget>

namespace rt {

namespace {

QString addressText(const void *address) {
    if (!address)
        return {};
    return QString::number(quint32(reinterpret_cast<quintptr>(address) & 0xffffffffU), 16);
}

} // namespace

Object *objectValue(const Value &value) {
    if (value.metaType() == QMetaType::fromType<Object *>())
        return value.value<Object *>();
    return dynamic_cast<Object *>(value.value<QWidget *>());
}

QWidget *widgetValue(const Value &value) {
    if (value.metaType() == QMetaType::fromType<Object *>())
        return dynamic_cast<QWidget *>(value.value<Object *>());
    return value.value<QWidget *>();
}

Value fromObject(Object *object) {
    return object ? Value::fromValue(object) : Value();
}

Value fromWidget(QWidget *widget) {
    return widget ? Value::fromValue(widget) : Value();
}

QString identifier(const Object *object) {
    return addressText(object);
}

QString identifier(const QWidget *widget) {
    return addressText(widget);
}

} // namespace rt
