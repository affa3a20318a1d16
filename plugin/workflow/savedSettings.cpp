#include "plugin/workflow/savedSettings.h"

#include "plugin/link/vlCommon.h"
#include "plugin/util/vlOLUtils.h"

QVariantMap savedSettings() {
    const QString text = vlOLUtils::readStrFromFile(vlCommon::getVlUserProfilePath(vlCommon::getUID()));
    return text.isEmpty() ? QVariantMap() : rt::mapValue(vlOLUtils::toArrayOrNSDictionary(text));
}
