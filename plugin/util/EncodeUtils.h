// Base64, standard alphabet with padding (RFC 4648, section 4).
#pragma once

#include <QByteArray>
#include <QString>

class EncodeUtils {
public:
    [[nodiscard]] static QString base64Encode(const QByteArray &bytes);
    // The decoded bytes; null if the text is null, is truncated or has a character outside the alphabet.
    [[nodiscard]] static QByteArray base64DecodeToData(const QString &text);
    // The decoded bytes as text; null in the same cases and if they are not valid UTF-8.
    [[nodiscard]] static QString base64Decode(const QString &text);
};
