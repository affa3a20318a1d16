// The layout: "bplist00", the objects, a table with the offset of each object, and a trailer of 32 bytes: 6
// unused, size of an offset, size of a reference, then three 8-byte numbers: objects, top object, offset of
// the table. All numbers are big-endian. An object begins with a byte of kind (high half) and count (low
// half; 15: the count is an integer object that follows).

#include "platform/services/BinaryPropertyListGuard.h"

#include "platform/services/Storage.h"

#include <QList>
#include <algorithm>
#include <optional>

namespace platform {

namespace {

constexpr qsizetype headerSize = 8;
constexpr qsizetype trailerSize = 32;

enum class Kind {
    Integer = 0x1,
    Data = 0x4,
    Ascii = 0x5,
    Utf16 = 0x6,
    Array = 0xa,
    Set = 0xc,
    Dictionary = 0xd
};

// What an object would become when every use of it is a copy of its own, as the parser makes them.
struct Extent {
    qint64 cost; // nodes, plus one for each 64 bytes of text or data
    int height;  // 1: no members
};
constexpr qint64 bytesPerCost = 64;

class Guard {
public:
    Guard(const QByteArray &bytes, qint64 maximumCost)
        : m_bytes(bytes)
        , m_maximumCost(maximumCost) {}

    bool isHarmless() {
        if (!readTrailer())
            return false;
        m_known.resize(m_objectCount);
        return extentOf(m_top, 1).has_value();
    }

private:
    enum class State { Unknown, InProgress, Measured };
    struct Known {
        State state = State::Unknown;
        Extent extent{};
    };
    using Measured = std::optional<Extent>; // none: must not be read

    std::optional<quint64> number(quint64 offset, quint64 size) const {
        if (size < 1 || size > 8 || offset > quint64(m_bytes.size()) ||
            size > quint64(m_bytes.size()) - offset)
            return {};
        quint64 result = 0;
        for (quint64 i = 0; i < size; ++i)
            result = result << 8 | quint8(m_bytes[qsizetype(offset + i)]);
        return result;
    }

    bool readTrailer() {
        if (m_bytes.size() < headerSize + trailerSize)
            return false;
        const auto trailer = quint64(m_bytes.size() - trailerSize);
        m_offsetSize = *number(trailer + 6, 1);
        m_referenceSize = *number(trailer + 7, 1);
        const quint64 objects = *number(trailer + 8, 8);
        const quint64 top = *number(trailer + 16, 8);
        m_tableOffset = *number(trailer + 24, 8);
        if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8)
            return false;
        if (m_tableOffset > trailer || objects > (trailer - m_tableOffset) / m_offsetSize || top >= objects)
            return false;
        m_objectCount = qsizetype(objects);
        m_top = qsizetype(top);
        return true;
    }

    Measured extentOf(qsizetype object, int depth) {
        if (++m_visits > m_maximumCost || m_known[object].state == State::InProgress)
            return {};
        if (m_known[object].state == State::Unknown) {
            if (depth > PropertyLists::maximumDepth)
                return {};
            m_known[object].state = State::InProgress;
            const Measured extent = measure(object, depth);
            if (!extent)
                return {};
            m_known[object] = {State::Measured, *extent};
        }
        const Extent &extent = m_known[object].extent;
        return depth + extent.height - 1 <= PropertyLists::maximumDepth ? Measured(extent) : std::nullopt;
    }

    Measured measure(qsizetype object, int depth) {
        const auto offset = number(m_tableOffset + quint64(object) * m_offsetSize, m_offsetSize);
        const auto marker = offset ? number(*offset, 1) : std::nullopt;
        if (!marker)
            return {};
        const auto kind = Kind(*marker >> 4);
        const bool isContainer = kind == Kind::Array || kind == Kind::Set || kind == Kind::Dictionary;
        if (!isContainer && kind != Kind::Data && kind != Kind::Ascii && kind != Kind::Utf16)
            return Extent{1, 1};
        quint64 start = *offset + 1;
        std::optional<quint64> count = *marker & 0xf;
        if (*count == 0xf)
            count = longCount(start);
        if (!count || *count > quint64(m_bytes.size()))
            return {};
        if (!isContainer)
            return Extent{1 + qint64(*count) / bytesPerCost, 1};
        return measureMembers(start, kind == Kind::Dictionary ? *count * 2 : *count, depth);
    }

    // Moves `start` behind the count.
    std::optional<quint64> longCount(quint64 &start) const {
        const auto marker = number(start, 1);
        if (!marker || Kind(*marker >> 4) != Kind::Integer || (*marker & 0xf) > 3)
            return {};
        const quint64 size = quint64(1) << (*marker & 0xf);
        const auto count = number(start + 1, size);
        start += 1 + size;
        return count;
    }

    Measured measureMembers(quint64 start, quint64 count, int depth) {
        Extent total{1, 1};
        for (quint64 i = 0; i < count; ++i) {
            const auto reference = number(start + i * m_referenceSize, m_referenceSize);
            if (!reference || *reference >= quint64(m_objectCount))
                return {};
            const Measured member = extentOf(qsizetype(*reference), depth + 1);
            if (!member)
                return {};
            total.cost += member->cost;
            total.height = std::max(total.height, member->height + 1);
            if (total.cost > m_maximumCost)
                return {};
        }
        return total;
    }

    const QByteArray &m_bytes;
    const qint64 m_maximumCost;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_tableOffset = 0;
    qsizetype m_objectCount = 0;
    qsizetype m_top = 0;
    qint64 m_visits = 0;
    QList<Known> m_known;
};

} // namespace

bool isHarmlessBinaryPropertyList(const QByteArray &bytes) {
    constexpr qint64 maximumCost = 1'000'000;
    return Guard(bytes, maximumCost).isHarmless();
}

} // namespace platform
