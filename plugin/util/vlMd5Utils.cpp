#include "plugin/util/vlMd5Utils.h"

#include "plugin/util/vlMD5.h"

QString vlMd5Utils::vlMD5Hex(const QString &text) {
    if (text.isNull())
        return {};
    Quarvo::MD5 digest;
    digest.feed(text.toUtf8());
    return digest.hex();
}
