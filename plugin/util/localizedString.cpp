#include "plugin/util/localizedString.h"

#include "platform/services/Services.h"

QString vlLocalizedString(const QString &key) {
    return platform::services().pluginBundle->localizedString(key, u""_s, vl_LocalizableTable);
}
