// Converts between messages and bytes.
#pragma once

namespace google::protobuf {
class MessageLite;
}

class vlProtoBufConvert {
public:
    static constexpr int totalBytesLimit = 64 * 1024 * 1024;
    static constexpr int recursionLimit = 64;

    // Serialises into a new buffer of exactly the message's size; the caller releases it with
    // FreeProtoByteStream(). Returns false and sets a null buffer if there is no message or no memory, or if
    // a required field is missing.
    static bool ProtoToByteStream(const google::protobuf::MessageLite *message, unsigned char *&buffer,
                                  int &size);
    static void FreeProtoByteStream(unsigned char *buffer,
                                    int size); // nullptr is ignored; the size is not used

    // Merges the bytes into the message without clearing it first and without checking required fields. A
    // zero byte in place of a tag ends the merge with success. Returns false if the message or the bytes are
    // nullptr (a size of 0 succeeds), or if the bytes exceed the limit or do not parse; the message must not
    // be used then.
    static bool ProtoFromByteStream(google::protobuf::MessageLite *message, const void *bytes, int size);
};
