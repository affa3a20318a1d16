// A reader of our own: libplist ends the process on a NUL inside a key and on deep nesting, and copies a
// shared object for each use without a limit.
//
// The layout: "bplist00", the objects, a table with the offset of each object, and a trailer of 32 bytes: 6
// unused, size of an offset, size of a reference, then three 8-byte numbers: objects, top object, offset of
// the table. All numbers are big-endian. An object begins with a byte of kind (high half) and count (low
// half; 15: the count is an integer object that follows).

#include "platform/services/propertylist/BinaryPropertyList.h"

#include "platform/services/storage/Storage.h"

#include <QDateTime>
#include <QTimeZone>
#include <QtEndian>
#include <bit>
#include <cmath>
#include <optional>

namespace platform {

namespace {

constexpr char magic[] = "bplist00";
constexpr quint64 headerSize = 8;
constexpr quint64 trailerSize = 32;
constexpr quint8 countFollows = 0xf;

enum class Kind : quint8 {
    Constant = 0x0,
    Integer = 0x1,
    Real = 0x2,
    Date = 0x3,
    Data = 0x4,
    Ascii = 0x5,
    Utf16 = 0x6,
    Array = 0xa,
    Dictionary = 0xd
};
enum class Constant : quint8 { False = 0x8, True = 0x9 };

// An object that is used in several places is read for each of them, so a few hundred bytes can stand for
// billions of values. The cost of a value is 1, plus 1 for every so many bytes of its own.
constexpr qint64 maximumCost = 1'000'000;
constexpr quint64 bytesPerCost = 64;

// Every operation that answers no value has found that the whole must not be read.
class Reader {
public:
    explicit Reader(const QByteArray &bytes)
        : m_bytes(bytes)
        , m_size(quint64(bytes.size())) {}

    rt::Value document() {
        if (m_size < headerSize + trailerSize)
            return {};
        const quint64 trailer = m_size - trailerSize;
        m_offsetSize = *number(trailer + 6, 1);
        m_referenceSize = *number(trailer + 7, 1);
        m_objectCount = *number(trailer + 8, 8);
        const quint64 top = *number(trailer + 16, 8);
        m_table = *number(trailer + 24, 8);
        if (!isNumberSize(m_offsetSize) || !isNumberSize(m_referenceSize) || m_table > trailer ||
            m_objectCount > (trailer - m_table) / m_offsetSize)
            return {};
        return value(top, 1);
    }

private:
    struct Header {
        Kind kind;
        quint8 low;      // the low half of the first byte
        quint64 content; // where that begins
    };

    static bool isNumberSize(quint64 size) { return size >= 1 && size <= 8; }

    [[nodiscard]] bool isInside(quint64 offset, quint64 size) const {
        return offset <= m_size && size <= m_size - offset;
    }

    [[nodiscard]] std::optional<quint64> number(quint64 offset, quint64 size) const {
        if (!isNumberSize(size) || !isInside(offset, size))
            return {};
        quint64 result = 0;
        for (quint64 i = 0; i < size; ++i)
            result = result << 8 | quint8(m_bytes[qsizetype(offset + i)]);
        return result;
    }

    rt::Value value(quint64 object, int depth) {
        if (object >= m_objectCount || depth > PropertyLists::maximumDepth || ++m_cost > maximumCost)
            return {};
        const auto offset = number(m_table + object * m_offsetSize, m_offsetSize);
        const auto first = offset ? number(*offset, 1) : std::nullopt;
        if (!first)
            return {};
        const Header header{Kind(*first >> 4), quint8(*first & 0xf), *offset + 1};
        switch (header.kind) {
        case Kind::Constant:
            return constant(Constant(header.low));
        case Kind::Integer:
            return integer(header);
        case Kind::Real:
        case Kind::Date:
            return realOrDate(header);
        default:
            return counted(header, depth);
        }
    }

    static rt::Value constant(Constant constant) {
        if (constant == Constant::False || constant == Constant::True)
            return constant == Constant::True;
        return {};
    }

    // Up to four bytes are unsigned, eight are signed, and sixteen hold what eight cannot.
    [[nodiscard]] rt::Value integer(const Header &header) const {
        const auto integer = number(header.content, quint64(1) << header.low);
        return integer ? rt::Value(qint64(*integer)) : rt::Value();
    }

    [[nodiscard]] rt::Value realOrDate(const Header &header) const {
        const quint64 size = quint64(1) << header.low;
        const auto bits = size == 4 || size == 8 ? number(header.content, size) : std::nullopt;
        if (!bits)
            return {};
        const double real =
            size == 4 ? double(std::bit_cast<float>(quint32(*bits))) : std::bit_cast<double>(*bits);
        return header.kind == Kind::Real ? rt::Value(real) : date(real);
    }

    static rt::Value date(double secondsFrom2001) {
        constexpr double secondsFrom1970To2001 = 978'307'200;
        constexpr double longest = 1e12; // some 30,000 years; also keeps the number below an integer's limit
        if (!(std::abs(secondsFrom2001) < longest))
            return {};
        const auto milliseconds = qint64(std::llround((secondsFrom1970To2001 + secondsFrom2001) * 1000));
        return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
    }

    rt::Value counted(Header header, int depth) {
        const auto count = countOf(&header);
        if (!count || *count > m_size)
            return {};
        switch (header.kind) {
        case Kind::Data:
        case Kind::Ascii:
        case Kind::Utf16:
            return bytes(header, header.kind == Kind::Utf16 ? *count * 2 : *count);
        case Kind::Array:
            return array(header.content, *count, depth);
        case Kind::Dictionary:
            return dictionary(header.content, *count, depth);
        default:
            return {}; // kinds that only archives hold
        }
    }

    // Moves the header's content behind the count.
    [[nodiscard]] std::optional<quint64> countOf(Header *header) const {
        if (header->low != countFollows)
            return header->low;
        const auto first = number(header->content, 1);
        if (!first || Kind(*first >> 4) != Kind::Integer)
            return {};
        const quint64 size = quint64(1) << (*first & 0xf);
        const auto count = number(header->content + 1, size);
        header->content += 1 + size;
        return count;
    }

    rt::Value bytes(const Header &header, quint64 size) {
        m_cost += qint64(size / bytesPerCost);
        if (!isInside(header.content, size) || m_cost > maximumCost)
            return {};
        const QByteArray content = m_bytes.sliced(qsizetype(header.content), qsizetype(size));
        if (header.kind == Kind::Data)
            return content;
        if (header.kind == Kind::Ascii)
            return QString::fromLatin1(content);
        QString text(qsizetype(size / 2), Qt::Uninitialized);
        qFromBigEndian<char16_t>(content.constData(), text.size(), text.data());
        return text;
    }

    rt::Value member(quint64 references, quint64 index, int depth) {
        const auto object = number(references + index * m_referenceSize, m_referenceSize);
        return object ? value(*object, depth + 1) : rt::Value();
    }

    rt::Value array(quint64 references, quint64 count, int depth) {
        QVariantList items;
        for (quint64 i = 0; i < count; ++i) {
            items.append(member(references, i, depth));
            if (!items.last().isValid())
                return {};
        }
        return items;
    }

    // All keys come first, then all values.
    rt::Value dictionary(quint64 references, quint64 count, int depth) {
        QVariantMap entries;
        for (quint64 i = 0; i < count; ++i) {
            const rt::Value key = member(references, i, depth);
            const rt::Value entry = member(references, count + i, depth);
            if (key.typeId() != QMetaType::QString || !entry.isValid())
                return {};
            entries.insert(key.toString(), entry);
        }
        return entries;
    }

    const QByteArray &m_bytes;
    const quint64 m_size;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_objectCount = 0;
    quint64 m_table = 0; // where the offsets are
    qint64 m_cost = 0;
};

} // namespace

bool isBinaryPropertyList(const QByteArray &bytes) {
    return bytes.startsWith(magic);
}

rt::Value fromBinaryPropertyList(const QByteArray &bytes) {
    return Reader(bytes).document();
}

} // namespace platform
