// Digests of texts.
#pragma once

#include <QString>

class vlMd5Utils {
public:
    // The MD5 digest of the text's UTF-8 as 32 lower-case digits; null for a null text.
    [[nodiscard]] static QString vlMD5Hex(const QString &text);
};
