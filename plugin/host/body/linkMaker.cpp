#include "plugin/host/body/linkMaker.h"

#include "plugin/host/body/vlBodyHelper.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <limits>

namespace {

constexpr qsizetype never = std::numeric_limits<qsizetype>::max();

qsizetype afterBlanks(QStringView text, qsizetype from) {
    while (from < text.size() && text[from].isSpace())
        ++from;
    return from;
}

bool isBookmark(QStringView rest) {
    return rest.startsWith(kvl_BeginBookmark) || rest.startsWith(kvl_EndBookmark);
}

// Where an address that begins here ends. A bookmark ends it as well: it is a tag of ours, put right behind
// the invitation's last word, and would be lost inside a link.
qsizetype endOfAddress(QStringView text, qsizetype from) {
    for (qsizetype i = from; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c == u' ' || c == u'\r' || c == u'\n' || (c == u'<' && isBookmark(text.sliced(i))))
            return i;
    }
    return text.size();
}

// What is to be linked, each address with its places in the list of all addresses collected. An address that
// was collected earlier has precedence where two overlap.
class Addresses {
public:
    explicit Addresses(QStringView text)
        : m_text(text) {
        collect(HTTP_TAG);
        collect(HTTPS_TAG);
    }

    // When the part of the text is linked; `never` when it is not. The lower number goes first.
    [[nodiscard]] qsizetype turnOf(QStringView address) const {
        if (!m_lengths.contains(address.size()))
            return never;
        const auto found = m_turns.constFind(address);
        return found == m_turns.constEnd() || found->isEmpty() ? never : found->first();
    }

    // The address is from here on linked when it was collected for the next time, or not at all.
    void endTurn(QStringView address) { m_turns[address].removeFirst(); }

private:
    // Addresses with that prefix. One that follows another of them, or the text's beginning, with nothing but
    // blanks between ends the collection.
    void collect(const QString &prefix) {
        qsizetype cursor = 0;
        for (;;) {
            cursor = afterBlanks(m_text, cursor);
            const qsizetype start = m_text.indexOf(prefix, cursor);
            if (start < 0 || start == cursor)
                return;
            cursor = endOfAddress(m_text, start);
            const QStringView address = m_text.sliced(start, cursor - start);
            m_turns[address].append(m_count++);
            m_lengths.insert(address.size());
        }
    }

    QStringView m_text;
    QHash<QStringView, QList<qsizetype>> m_turns;
    QSet<qsizetype> m_lengths;
    qsizetype m_count = 0;
};

qsizetype nextAddressStart(QStringView text, qsizetype from) {
    static const QString common = QStringLiteral("http");
    for (qsizetype at = text.indexOf(common, from); at >= 0; at = text.indexOf(common, at + 1)) {
        const QStringView rest = text.sliced(at);
        if (rest.startsWith(HTTP_TAG) || rest.startsWith(HTTPS_TAG))
            return at;
    }
    return text.size();
}

// Among the addresses that begin at or after `start` and reach up to `end`, the one that is linked first;
// empty when none is.
QStringView chosenAddress(const Addresses &addresses, QStringView text, qsizetype start, qsizetype end) {
    QStringView chosen;
    qsizetype chosenTurn = never;
    for (; start < end; start = nextAddressStart(text.first(end), start + 1)) {
        const QStringView candidate = text.sliced(start, end - start);
        const qsizetype turn = addresses.turnOf(candidate);
        if (turn < chosenTurn) {
            chosen = candidate;
            chosenTurn = turn;
        }
    }
    return chosen;
}

// Where an address follows itself (or begins what follows it) with nothing but blanks between, the search for
// it ends. It does not see what has been linked in an earlier turn.
bool endsTurn(const Addresses &addresses, QStringView text, QStringView address, qsizetype end) {
    const qsizetype next = afterBlanks(text, end);
    if (!text.sliced(next).startsWith(address))
        return false;
    const qsizetype nextEnd = endOfAddress(text, next);
    const QStringView follower = chosenAddress(addresses, text, next, nextEnd);
    const bool linkedBefore = follower.size() == nextEnd - next && !follower.isEmpty() &&
                              addresses.turnOf(follower) < addresses.turnOf(address);
    return !linkedBefore;
}

} // namespace

QString withLinks(QStringView text) {
    Addresses addresses(text);
    QString result = QStringLiteral("");
    result.reserve(text.size() + text.size() / 2); // each link has its address twice
    qsizetype copied = 0;
    qsizetype start = nextAddressStart(text, 0);
    while (start < text.size()) {
        const qsizetype end = endOfAddress(text, start);
        const QStringView address = chosenAddress(addresses, text, start, end);
        if (!address.isEmpty()) {
            result += text.sliced(copied, end - address.size() - copied);
            result += u"<a href=\"";
            result += address;
            result += u"\">";
            result += address;
            result += u"</a>";
            copied = end;
            if (endsTurn(addresses, text, address, end))
                addresses.endTurn(address);
        }
        start = nextAddressStart(text, end);
    }
    result += text.sliced(copied);
    return result;
}
