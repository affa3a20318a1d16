#include "plugin/link/localizedString.h"

#include "platform/services/Services.h"
#include "plugin/link/meetingKeys.h"

QString vlLocalizedString(const QString &key) {
    return platform::services().pluginBundle->localizedString(key, QStringLiteral(""), vl_LocalizableTable);
}
