#include "plugin/util/versionRule.h"

#include "platform/runtime/Value.h"

#include <QStringList>

DottedVersion parseDottedVersion(const QString &text) {
    const QStringList components = text.split(u'.');
    const auto component = [&components](qsizetype index) {
        return rt::integerValue(components.value(index));
    };
    return {component(0), component(1), component(2)};
}

bool isVersionAtLeast(const QString &text, const DottedVersion &reference) {
    return !text.isEmpty() && parseDottedVersion(text) >= reference;
}
