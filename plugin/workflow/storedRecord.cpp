#include "plugin/workflow/storedRecord.h"

#include "plugin/util/vlOLUtils.h"

QVariantMap storedRecord(const QString &text) {
    return text.isEmpty() ? QVariantMap() : rt::mapValue(vlOLUtils::toArrayOrNSDictionary(text));
}
