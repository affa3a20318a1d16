// Makes a reader of the bytes that a base64 text encodes.
#pragma once

#include "plugin/util/EncodeUtils.h"

// If the text does not decode, the reader gets nullptr, which does not parse.
template<typename Reader>
[[nodiscard]] Reader readerOver(const QString &base64) {
    const QByteArray bytes = EncodeUtils::base64DecodeToData(base64);
    return Reader(bytes.isEmpty() ? nullptr : bytes.constData(), int(bytes.size()));
}
