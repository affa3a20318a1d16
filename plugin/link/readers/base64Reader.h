// A reader over the bytes that a base64 text stands for.
#pragma once

#include "plugin/util/EncodeUtils.h"

// A text that does not decode gives the reader no bytes (nullptr), which do not parse.
template<typename Reader>
[[nodiscard]] Reader readerOver(const QString &base64) {
    const QByteArray bytes = EncodeUtils::base64DecodeToData(base64);
    return Reader(bytes.isEmpty() ? nullptr : bytes.constData(), int(bytes.size()));
}
