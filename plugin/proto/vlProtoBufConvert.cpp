#include "plugin/proto/vlProtoBufConvert.h"

#include <cstdlib>
#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/io/zero_copy_stream_impl_lite.h>
#include <google/protobuf/message_lite.h>
#include <limits>

using google::protobuf::MessageLite;

bool vlProtoBufConvert::ProtoToByteStream(const MessageLite *message, unsigned char *&buffer, int &size) {
    buffer = nullptr;
    size = 0;
    // Checked first, because the serialiser may throw for a message that lacks a required field.
    if (!message || !message->IsInitialized() ||
        message->ByteSizeLong() > std::size_t(std::numeric_limits<int>::max()))
        return false;
    size = int(message->ByteSizeLong());
    buffer = static_cast<unsigned char *>(std::malloc(std::size_t(size)));
    return buffer && message->SerializeToArray(buffer, size);
}

void vlProtoBufConvert::FreeProtoByteStream(unsigned char *buffer, int) {
    std::free(buffer);
}

bool vlProtoBufConvert::ProtoFromByteStream(MessageLite *message, const void *bytes, int size) {
    if (!message || !bytes || size < 0 || size > totalBytesLimit)
        return false;
    google::protobuf::io::ArrayInputStream array(bytes, size);
    google::protobuf::io::CodedInputStream input(&array);
    input.SetRecursionLimit(recursionLimit);
    return message->MergePartialFromCodedStream(&input);
}
