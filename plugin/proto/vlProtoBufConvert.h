// Between messages and their bytes.
#pragma once

namespace google::protobuf {
class MessageLite;
}

class vlProtoBufConvert {
public:
    static constexpr int totalBytesLimit = 64 * 1024 * 1024;
    static constexpr int recursionLimit = 64;

    // Serialises into a new buffer of exactly the message's size, which the caller gives to
    // FreeProtoByteStream(). False, and a null buffer, when there is no message, no memory, or a required
    // field is missing.
    static bool ProtoToByteStream(const google::protobuf::MessageLite *message, unsigned char *&buffer,
                                  int &size);
    static void FreeProtoByteStream(unsigned char *buffer,
                                    int size); // nullptr is ignored; the size is not used

    // Merges the bytes into the message, which is not cleared first. Required fields are not looked for. A
    // zero byte where a tag is expected ends the merge with success. False when there is no message or there
    // are no bytes (nullptr; a size of 0 succeeds), when they are more than the limit or do not parse: what
    // the message then holds is of no use.
    static bool ProtoFromByteStream(google::protobuf::MessageLite *message, const void *bytes, int size);
};
