#include "plugin/host/body/linkMaker.h"

#include "plugin/host/body/vlBodyHelper.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <limits>
#include <optional>
#include <utility>

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

// A place where an address begins. Several may end at the same place, one inside another.
struct Start {
    qsizetype at;
    qsizetype end;
    bool isSecure;
    qsizetype turn; // in which it was collected here; `never`: it was not
};

// All addresses of a text in its order, and when each is linked. Addresses are collected in turns, and one
// that was collected earlier has precedence where two overlap. Turns belong to an address, not to a place.
class Addresses {
public:
    explicit Addresses(QStringView text)
        : m_text(text) {
        find();
        collect(false);
        collect(true);
    }

    [[nodiscard]] qsizetype count() const { return m_starts.size(); }
    [[nodiscard]] const Start &operator[](qsizetype index) const { return m_starts[index]; }
    [[nodiscard]] QStringView textOf(const Start &start) const {
        return m_text.sliced(start.at, start.end - start.at);
    }
    // Behind the last of those that end where this one does.
    [[nodiscard]] qsizetype behind(qsizetype first) const {
        const qsizetype end = m_starts[first].end;
        while (first < m_starts.size() && m_starts[first].at < end)
            ++first;
        return first;
    }

    // Of those that end together the one that is linked; nothing when none is.
    [[nodiscard]] std::optional<qsizetype> chosen(qsizetype first, qsizetype last) {
        // Most stand alone. Before any turn has ended, every address that was collected is linked.
        if (last - first == 1 && !m_hasEnded && m_starts[first].turn != never)
            return first;
        std::optional<qsizetype> best;
        qsizetype bestTurn = never;
        for (qsizetype index = first; index < last; ++index) {
            const qsizetype turn = turnOf(m_starts[index]);
            if (turn < bestTurn) {
                best = index;
                bestTurn = turn;
            }
        }
        return best;
    }

    // When the address is linked; `never` when it is not. The lower number goes first.
    [[nodiscard]] qsizetype turnOf(const Start &start) {
        learnTurns();
        if (!m_lengths.contains(start.end - start.at))
            return never;
        const auto found = m_turns.constFind(textOf(start));
        return found == m_turns.constEnd() ? never : found->next;
    }

    // The address is from here on linked when it was collected for the next time, or not at all.
    void endTurn(const Start &start) {
        learnTurns();
        Turns &turns = m_turns[textOf(start)];
        turns.next = m_following[turns.next];
        m_hasEnded = true;
    }

private:
    struct Turns {
        qsizetype next;
        qsizetype last;
    };

    void find() {
        qsizetype end = 0;
        for (qsizetype colon = m_text.indexOf(u':'); colon >= 0; colon = m_text.indexOf(u':', colon + 1)) {
            const QStringView before = m_text.first(colon);
            const bool isSecure = before.endsWith(QStringView(HTTPS_TAG).chopped(slashes.size()));
            if (!m_text.sliced(colon).startsWith(slashes) ||
                !(isSecure || before.endsWith(QStringView(HTTP_TAG).chopped(slashes.size()))))
                continue;
            const qsizetype at = colon + slashes.size() - (isSecure ? HTTPS_TAG : HTTP_TAG).size();
            end = at < end ? end : endOfAddress(m_text, colon);
            m_starts.append({at, end, isSecure, never});
        }
    }

    // One that follows another of its kind, or the text's beginning, with nothing but blanks between ends the
    // collection.
    void collect(bool isSecure) {
        qsizetype cursor = 0;
        for (Start &start : m_starts) {
            if (start.isSecure != isSecure || start.at < cursor)
                continue;
            if (start.at == afterBlanks(m_text, cursor))
                return;
            cursor = start.end;
            start.turn = m_collected++;
        }
    }

    void learnTurns() {
        if (!m_turns.isEmpty() || m_collected == 0)
            return;
        m_turns.reserve(m_collected);
        m_following.fill(never, m_collected);
        for (const Start &start : std::as_const(m_starts))
            if (start.turn != never)
                learn(start);
    }

    void learn(const Start &start) {
        const QStringView address = textOf(start);
        const auto known = m_turns.find(address);
        if (known == m_turns.end()) {
            m_turns.insert(address, {start.turn, start.turn});
            m_lengths.insert(address.size());
        } else {
            m_following[known->last] = start.turn;
            known->last = start.turn;
        }
    }

    static constexpr QStringView slashes = u"://";

    QStringView m_text;
    QList<Start> m_starts;
    qsizetype m_collected = 0;
    bool m_hasEnded = false;
    // Not filled before two addresses are to be compared: the ordinary text has no such ones.
    QHash<QStringView, Turns> m_turns;
    QList<qsizetype> m_following; // by turn: the next one of the same address, or `never`
    QSet<qsizetype> m_lengths; // of what was collected: an address of another length need not be looked for
};

// Where an address follows itself (or begins what follows it) with nothing but blanks between, the search for
// it ends. It does not see what has been linked in an earlier turn.
bool endsTurn(Addresses &addresses, QStringView text, const Start &linked, qsizetype next) {
    if (next == addresses.count() || addresses[next].at != afterBlanks(text, linked.end) ||
        !addresses.textOf(addresses[next]).startsWith(addresses.textOf(linked)))
        return false;
    const std::optional<qsizetype> follower = addresses.chosen(next, addresses.behind(next));
    const bool linkedBefore =
        follower == next && addresses.turnOf(addresses[next]) < addresses.turnOf(linked);
    return !linkedBefore;
}

void appendWithBreaks(QString &result, QStringView text) {
    for (qsizetype end = text.indexOf(u'\n'); end >= 0; end = text.indexOf(u'\n')) {
        result += text.first(end);
        result += lineBreakTag;
        text = text.sliced(end + 1);
    }
    result += text;
}

} // namespace

QString withLinksAndBreaks(QStringView text) {
    Addresses addresses(text);
    QString result = QStringLiteral("");
    result.reserve(text.size() + text.size() / 2); // each link has its address twice
    qsizetype copied = 0;
    for (qsizetype first = 0; first < addresses.count();) {
        const qsizetype next = addresses.behind(first);
        if (const std::optional<qsizetype> chosen = addresses.chosen(first, next)) {
            const Start &linked = addresses[*chosen];
            const QStringView address = addresses.textOf(linked);
            appendWithBreaks(result, text.sliced(copied, linked.at - copied));
            result += u"<a href=\"";
            result += address;
            result += u"\">";
            result += address;
            result += u"</a>";
            copied = linked.end;
            if (endsTurn(addresses, text, linked, next))
                addresses.endTurn(linked);
        }
        first = next;
    }
    appendWithBreaks(result, text.sliced(copied));
    return result;
}
