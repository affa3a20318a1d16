#include "plugin/util/vlMD5.h"

#include <QtEndian>
#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace Quarvo {

namespace {

constexpr int roundSteps = 16;
constexpr int stepsPerBlock = 4 * roundSteps;
constexpr int wordSize = 4;
constexpr int countPosition = 56; // in the last block
constexpr unsigned char paddingBegin = 0x80;
constexpr std::array<std::uint32_t, 4> initialState{0x67452301U, 0xefcdab89U, 0x98badcfeU, 0x10325476U};

// How far each round turns its words, repeating every four steps.
constexpr int rotation[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

// floor(2^32 * abs(sin(step + 1)))
constexpr std::array<std::uint32_t, stepsPerBlock> sines{
    0xd76aa478U, 0xe8c7b756U, 0x242070dbU, 0xc1bdceeeU, 0xf57c0fafU, 0x4787c62aU, 0xa8304613U, 0xfd469501U,
    0x698098d8U, 0x8b44f7afU, 0xffff5bb1U, 0x895cd7beU, 0x6b901122U, 0xfd987193U, 0xa679438eU, 0x49b40821U,
    0xf61e2562U, 0xc040b340U, 0x265e5a51U, 0xe9b6c7aaU, 0xd62f105dU, 0x02441453U, 0xd8a1e681U, 0xe7d3fbc8U,
    0x21e1cde6U, 0xc33707d6U, 0xf4d50d87U, 0x455a14edU, 0xa9e3e905U, 0xfcefa3f8U, 0x676f02d9U, 0x8d2a4c8aU,
    0xfffa3942U, 0x8771f681U, 0x6d9d6122U, 0xfde5380cU, 0xa4beea44U, 0x4bdecfa9U, 0xf6bb4b60U, 0xbebfbc70U,
    0x289b7ec6U, 0xeaa127faU, 0xd4ef3085U, 0x04881d05U, 0xd9d4d039U, 0xe6db99e5U, 0x1fa27cf8U, 0xc4ac5665U,
    0xf4292244U, 0x432aff97U, 0xab9423a7U, 0xfc93a039U, 0x655b59c3U, 0x8f0ccc92U, 0xffeff47dU, 0x85845dd1U,
    0x6fa87e4fU, 0xfe2ce6e0U, 0xa3014314U, 0x4e0811a1U, 0xf7537e82U, 0xbd3af235U, 0x2ad7d2bbU, 0xeb86d391U};

// Which of the block's words a step takes.
constexpr int wordOf(int step) {
    constexpr int factors[] = {1, 5, 3, 7};
    constexpr int offsets[] = {0, 1, 5, 0};
    return (factors[step / roundSteps] * step + offsets[step / roundSteps]) % roundSteps;
}

// One step, `a` becoming what the next one takes for its `b`. All steps of a block wait for that one value,
// so that what does not need `b` is added up beforehand, and `b` goes through as few operations as can be.
template<int Step>
inline void step(std::uint32_t &a, std::uint32_t b, std::uint32_t c, std::uint32_t d,
                 const unsigned char *block) {
    constexpr int round = Step / roundSteps;
    std::uint32_t sum = a + qFromLittleEndian<std::uint32_t>(block + wordOf(Step) * wordSize) + sines[Step];
    if constexpr (round == 0) {
        sum += d ^ (b & (c ^ d));
    } else if constexpr (round == 1) {
        sum += c & ~d;
        sum += b & d; // no bit is in both
    } else if constexpr (round == 2) {
        sum += b ^ (c ^ d);
    } else {
        sum += c ^ (b | ~d);
    }
    a = b + std::rotl(sum, rotation[round][Step % 4]);
}

template<int... Fours>
inline void allSteps(std::uint32_t &a, std::uint32_t &b, std::uint32_t &c, std::uint32_t &d,
                     const unsigned char *block, std::integer_sequence<int, Fours...>) {
    ((step<4 * Fours>(a, b, c, d, block), step<4 * Fours + 1>(d, a, b, c, block),
      step<4 * Fours + 2>(c, d, a, b, block), step<4 * Fours + 3>(b, c, d, a, block)),
     ...);
}

} // namespace

MD5::MD5() {
    init();
}

void MD5::init() {
    m_state = initialState;
    m_bitCount = {0, 0};
    m_finalized = false;
}

void MD5::addToCount(std::uint32_t bytes) {
    constexpr int bitsShift = 3;
    constexpr int bitsLost = 32 - bitsShift;
    const std::uint32_t bits = bytes << bitsShift;
    m_bitCount[0] += bits;
    m_bitCount[1] += (bytes >> bitsLost) + (m_bitCount[0] < bits ? 1 : 0);
}

void MD5::feed(const void *bytes, int length) {
    if (!bytes || length <= 0 || m_finalized)
        return;
    const auto *input = static_cast<const unsigned char *>(bytes);
    int filled = int(m_bitCount[0] / 8 % blockSize);
    addToCount(std::uint32_t(length));
    while (length > 0) {
        // A whole block need not be gathered.
        if (filled == 0 && length >= blockSize) {
            transform(input);
            input += blockSize;
            length -= blockSize;
            continue;
        }
        const int taken = std::min(length, blockSize - filled);
        std::copy_n(input, taken, m_buffer.data() + filled);
        input += taken;
        length -= taken;
        filled += taken;
        if (filled == blockSize) {
            transform(m_buffer.data());
            filled = 0;
        }
    }
}

void MD5::feed(const QByteArray &bytes) {
    constexpr qsizetype largestFeed = std::numeric_limits<int>::max();
    for (qsizetype done = 0; done < bytes.size(); done += largestFeed)
        feed(bytes.constData() + done, int(std::min(bytes.size() - done, largestFeed)));
}

void MD5::finalize() {
    if (m_finalized)
        return;
    std::array<unsigned char, sizeof(std::uint64_t)> count{};
    qToLittleEndian(m_bitCount[0], count.data());
    qToLittleEndian(m_bitCount[1], count.data() + wordSize);
    const int filled = int(m_bitCount[0] / 8 % blockSize);
    std::array<unsigned char, blockSize> padding{paddingBegin};
    feed(padding.data(),
         filled < countPosition ? countPosition - filled : blockSize + countPosition - filled);
    feed(count.data(), int(count.size()));
    m_finalized = true;
}

QByteArray MD5::binary() {
    finalize();
    QByteArray digest(int(m_state.size()) * wordSize, Qt::Uninitialized);
    qToLittleEndian<std::uint32_t>(m_state.data(), qsizetype(m_state.size()), digest.data());
    return digest;
}

QString MD5::hex() {
    return QString::fromLatin1(binary().toHex());
}

void MD5::transform(const unsigned char *block) {
    auto [a, b, c, d] = m_state;
    allSteps(a, b, c, d, block, std::make_integer_sequence<int, stepsPerBlock / 4>());
    m_state[0] += a;
    m_state[1] += b;
    m_state[2] += c;
    m_state[3] += d;
}

} // namespace Quarvo
