#include "tests/host/LinkWalk.h"

#include <QStringList>

namespace {

bool endsAddress(QStringView text, qsizetype at) {
    return at >= text.size() || QStringView(u" \r\n").contains(text[at]);
}

qsizetype skipBlanks(QStringView text, qsizetype at) {
    while (at < text.size() && text[at].isSpace())
        ++at;
    return at;
}

// The next occurrence that has something before it; -1 ends the walk.
qsizetype walkTo(QStringView text, const QString &part, qsizetype cursor) {
    cursor = skipBlanks(text, cursor);
    const qsizetype at = text.indexOf(part, cursor);
    return at == cursor ? -1 : at;
}

QStringList collected(const QString &text) {
    QStringList addresses;
    for (const QString &prefix : {QStringLiteral("http://"), QStringLiteral("https://")}) {
        qsizetype cursor = 0;
        for (qsizetype at = walkTo(text, prefix, 0); at >= 0; at = walkTo(text, prefix, cursor)) {
            for (cursor = at; !endsAddress(text, cursor);)
                ++cursor;
            addresses.append(text.mid(at, cursor - at));
        }
    }
    return addresses;
}

QString withOneLinked(const QString &text, const QString &address) {
    QList<qsizetype> places;
    for (qsizetype at = walkTo(text, address, 0); at >= 0; at = walkTo(text, address, at + address.size()))
        if (endsAddress(text, at + address.size()))
            places.prepend(at);
    QString result = text;
    for (const qsizetype at : places)
        result.replace(at, address.size(), "<a href=\"" + address + "\">" + address + "</a>");
    return result;
}

} // namespace

QString linkedByWalking(const QString &text) {
    QString result = text;
    for (const QString &address : collected(text))
        result = withOneLinked(result, address);
    return result;
}
