#include "standin/mailhost/store/MailText.h"

#include "platform/Literals.h"

#include <QLocale>
#include <QUuid>

namespace mailhost {

namespace {

constexpr qsizetype encodedWordOctets = 39; // 64 characters with the frame: fits behind the name of a header
constexpr qsizetype longestLine = 76;

QString oneLine(const QString &text) {
    QString out;
    for (const QChar c : text)
        out.append(c < u' ' || c == QChar(0x7F) ? u' ' : c);
    return out.trimmed();
}

bool isAscii(const QString &text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c < QChar(0x80); });
}

// Encoded words (RFC 2047), none of which ends within a character.
QList<QByteArray> encodedWords(const QString &text) {
    QList<QByteArray> words;
    const QByteArray octets = text.toUtf8();
    for (qsizetype begin = 0; begin < octets.size();) {
        qsizetype end = qMin(begin + encodedWordOctets, octets.size());
        while (end < octets.size() && (uchar(octets[end]) & 0xC0) == 0x80)
            --end;
        words.append("=?UTF-8?B?" + octets.mid(begin, end - begin).toBase64() + "?=");
        begin = end;
    }
    return words;
}

// A plain text that looks like an encoded word would be decoded; words longer than a line cannot be folded.
bool mustEncode(const QString &text) {
    if (!isAscii(text) || text.contains(u"=?"_s))
        return true;
    const auto words = text.split(u' ');
    return std::any_of(words.begin(), words.end(), [](const QString &word) { return word.size() > 60; });
}

QByteArray foldedHeader(const QByteArray &name, const QList<QByteArray> &words) {
    QByteArray out = name + ':';
    qsizetype column = out.size();
    for (const QByteArray &word : words) {
        if (column + 1 + word.size() > longestLine && column > name.size() + 1) {
            out += "\r\n";
            column = 0;
        }
        out += ' ' + word;
        column += 1 + word.size();
    }
    return out + "\r\n";
}

QList<QByteArray> displayName(const QString &name) {
    static const QString specials = u"()<>[]:;@\\,.\""_s;
    const bool special = std::any_of(name.begin(), name.end(), [](QChar c) { return specials.contains(c); });
    return special || mustEncode(name) ? encodedWords(name) : name.toLatin1().split(' ');
}

QByteArray bareAddress(const QString &email) {
    QString text = oneLine(email);
    text.remove(u'<').remove(u'>').remove(u' ').remove(u',');
    return text.toUtf8();
}

} // namespace

QByteArray textHeader(const QByteArray &name, const QString &text) {
    const QString line = oneLine(text);
    return foldedHeader(name, mustEncode(line) ? encodedWords(line) : line.toLatin1().split(' '));
}

QByteArray addressHeader(const QByteArray &name, const QList<MailAddress> &addresses) {
    QList<QByteArray> words;
    for (const MailAddress &address : addresses) {
        if (!words.isEmpty())
            words.last() += ',';
        const QString display = oneLine(address.name);
        if (!display.isEmpty())
            words += displayName(display);
        words.append('<' + bareAddress(address.email) + '>');
    }
    return foldedHeader(name, words);
}

QByteArray dateHeader(const QDateTime &time) {
    const QDateTime local = time.toOffsetFromUtc(time.offsetFromUtc());
    const QString text = QLocale::c().toString(local, u"ddd, d MMM yyyy HH:mm:ss "_s);
    const int minutes = qAbs(local.offsetFromUtc()) / 60;
    return "Date: " + text.toLatin1() + (local.offsetFromUtc() < 0 ? '-' : '+') +
           QByteArray::number(minutes / 60 * 100 + minutes % 60).rightJustified(4, '0') + "\r\n";
}

QByteArray messageIdHeader(const QString &senderEmail) {
    const QByteArray address = bareAddress(senderEmail);
    const qsizetype at = address.lastIndexOf('@');
    const QByteArray domain =
        at < 0 || at + 1 == address.size() ? QByteArray("localhost") : address.mid(at + 1);
    return "Message-ID: <" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + '@' + domain + ">\r\n";
}

QByteArray base64Lines(const QString &text) {
    const QByteArray octets = QString(text).replace(u'\n', u"\r\n"_s).toUtf8().toBase64();
    QByteArray out;
    for (qsizetype begin = 0; begin < octets.size(); begin += longestLine)
        out += octets.mid(begin, longestLine) + "\r\n";
    return out;
}

} // namespace mailhost
