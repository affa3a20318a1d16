#include "plugin/util/EncodeUtils.h"

#include "platform/Literals.h"

#include <QStringDecoder>

namespace {
constexpr qsizetype charactersPerGroup = 4;
}

QString EncodeUtils::base64Encode(const QByteArray &bytes) {
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray EncodeUtils::base64DecodeToData(const QString &text) {
    // The toolkit accepts a text without padding, which would also accept a truncated text.
    if (text.isNull() || text.size() % charactersPerGroup != 0)
        return {};
    if (text.isEmpty())
        return QByteArrayLiteral("");
    auto result = QByteArray::fromBase64Encoding(text.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return result.decodingStatus == QByteArray::Base64DecodingStatus::Ok ? result.decoded : QByteArray();
}

QString EncodeUtils::base64Decode(const QString &text) {
    const QByteArray bytes = base64DecodeToData(text);
    if (bytes.isNull())
        return {};
    if (bytes.isEmpty())
        return u""_s;
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    const QString decoded = decoder(bytes);
    return decoder.hasError() ? QString() : decoded;
}
