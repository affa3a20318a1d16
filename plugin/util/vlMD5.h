// The MD5 digest (RFC 1321).
#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>

namespace Quarvo {

class MD5 {
public:
    MD5();
    virtual ~MD5() = default;

    void init(); // starts over
    void reset() { init(); }
    // Takes in more bytes; a length of 0 or less is ignored, and so is everything after the digest was asked
    // for.
    void feed(const void *bytes, int length);
    void feed(const QByteArray &bytes);
    void finalize();                   // only the first call counts
    [[nodiscard]] QString hex();       // 32 lower-case digits; finalizes
    [[nodiscard]] QByteArray binary(); // 16 bytes; finalizes

private:
    static constexpr int blockSize = 64;
    void addToCount(std::uint32_t bytes);
    void transform(const unsigned char *block);

    std::array<std::uint32_t, 4> m_state{};
    std::array<std::uint32_t, 2> m_bitCount{}; // low word first
    std::array<unsigned char, blockSize> m_buffer{};
    bool m_finalized = false;
};

} // namespace Quarvo
