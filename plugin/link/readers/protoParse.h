// What the two answer readers share.
#pragma once

#include "plugin/proto/vlProtoBufConvert.h"

// Puts the message that the bytes stand for in place of the kept one. Bytes that do not parse leave it as it
// was: false.
template<typename Message>
bool replaceWhenParsed(Message &kept, const void *bytes, int size) {
    Message fresh;
    const bool isParsed = vlProtoBufConvert::ProtoFromByteStream(&fresh, bytes, size);
    if (isParsed)
        kept.Swap(&fresh);
    return isParsed;
}
