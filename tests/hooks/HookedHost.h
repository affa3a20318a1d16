// A host that has every class and method of the hook table, and notes each call of its own implementations.
#pragma once

#include "platform/runtime/Runtime.h"
#include "plugin/hooks/HookRowName.h"

#include <QStringList>
#include <QWidget>
#include <functional>
#include <optional>

namespace hookedhost {

// What the host's own implementations were called with, as "<class> <selector>(<number of arguments>)".
QStringList &calls();
// What the host's own implementations answer, by "<class> <selector>"; no value when not set.
QHash<QString, rt::Value> &answers();

// Runs inside the host's own implementations, after the call was noted, and whenever a member is read. Empty
// by default.
std::function<void()> &during();

// Defines all classes, with every method of the table but the one of `without`. Once per process.
void define(std::optional<HookRowName> without = {});

// A host object of a class.
class Thing : public rt::Object {
public:
    explicit Thing(const char *className)
        : rt::Object(rt::classNamed(QString::fromLatin1(className))) {}
    QString capabilities; // the stored record, where the class has one
};

// A host view of a class; initWithFrame: answers itself.
class View : public QWidget, public rt::Object {
public:
    View(const QString &className, QWidget *parent = nullptr)
        : QWidget(parent)
        , rt::Object(rt::classNamed(className)) {}
};

} // namespace hookedhost
