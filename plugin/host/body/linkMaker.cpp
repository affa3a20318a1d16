#include "plugin/host/body/linkMaker.h"

#include "plugin/host/body/bodyMarkup.h"
#include "plugin/host/body/textReplace.h"

#include <QStringBuilder>
#include <QStringList>
#include <optional>

namespace {

// A bookmark also ends an address: the plug-in writes it directly after the invitation's last word, and
// inside a link it would be lost.
bool endsAddress(QStringView text, qsizetype at) {
    if (at == text.size() || text[at] == u' ' || text[at] == u'\r' || text[at] == u'\n')
        return true;
    const QStringView rest = text.sliced(at);
    return text[at] == u'<' && (rest.startsWith(kvl_BeginBookmark) || rest.startsWith(kvl_EndBookmark));
}

// The next position of the part if non-blank text precedes it; none ends the search.
std::optional<qsizetype> walkTo(QStringView text, QStringView part, qsizetype cursor) {
    while (cursor < text.size() && text[cursor].isSpace())
        ++cursor;
    const qsizetype at = text.indexOf(part, cursor);
    return at > cursor ? std::optional(at) : std::nullopt;
}

QStringList addressesIn(const QString &text) {
    QStringList addresses;
    for (const QString &prefix : {HTTP_TAG, HTTPS_TAG}) {
        qsizetype cursor = 0;
        while (const std::optional<qsizetype> at = walkTo(text, prefix, cursor)) {
            for (cursor = *at; !endsAddress(text, cursor);)
                ++cursor;
            addresses.append(text.mid(*at, cursor - *at));
        }
    }
    return addresses;
}

QString withLinksTo(const QString &address, const QString &text) {
    QString result = u""_s;
    qsizetype copied = 0;
    qsizetype cursor = 0;
    while (const std::optional<qsizetype> at = walkTo(text, address, cursor)) {
        cursor = *at + address.size();
        // Part of a longer address, or already a link; also directly before a link just made ("...<a href=").
        if (!endsAddress(text, cursor) || QStringView(text).sliced(cursor).startsWith(u" href=\""))
            continue;
        result += QStringView(text).sliced(copied, *at - copied);
        result += u"<a href=\""_s % address % u"\">"_s % address % u"</a>"_s;
        copied = cursor;
    }
    result += QStringView(text).sliced(copied);
    return result;
}

} // namespace

QString withLinksAndBreaks(const QString &text) {
    QString linked = text;
    for (const QString &address : addressesIn(text))
        linked = withLinksTo(address, linked);
    return replacedAll(linked, u"\n", lineBreakTag);
}
