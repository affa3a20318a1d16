// Base64, standard alphabet with padding (RFC 4648, section 4).
#pragma once

#include <QByteArray>
#include <QString>

class EncodeUtils {
public:
    [[nodiscard]] static QString base64Encode(const QByteArray &bytes);
    // The decoded bytes; null when the text is null, has a character that is not of the alphabet, or is cut
    // short.
    [[nodiscard]] static QByteArray base64DecodeToData(const QString &text);
    // The decoded bytes as text; null likewise, and when they are not valid UTF-8.
    [[nodiscard]] static QString base64Decode(const QString &text);
};
