#include "standin/mailhost/store/TextValue.h"

#include "platform/Literals.h"

#include <QJsonDocument>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QStringEncoder>

namespace mailhost {

namespace {

const QByteArray carriageReturns = QByteArrayLiteral("X-PARLO-CR");
const QByteArray recordCharset = QByteArrayLiteral("X-PARLO-CHARSET");
const QString beforeEveryLineFeed = u"LF"_s;
const QString utf16 = u"UTF-16LE"_s;

QString carriageReturnPositions(const QString &text) {
    const qsizetype pairs = text.count(u"\r\n"_s);
    if (pairs == text.count(u'\r') && pairs == text.count(u'\n'))
        return beforeEveryLineFeed;
    QStringList positions;
    for (qsizetype at = text.indexOf(u'\r'); at >= 0; at = text.indexOf(u'\r', at + 1))
        positions.append(QString::number(at));
    return positions.join(u',');
}

QString withCarriageReturns(const QString &text, const QString &positions) {
    if (positions == beforeEveryLineFeed)
        return QString(text).replace(u'\n', u"\r\n"_s);
    QString out;
    qsizetype taken = 0;
    const auto parts = QStringView(positions).split(u',');
    for (QStringView part : parts) {
        const qsizetype room = part.toLongLong() - out.size();
        if (room < 0 || room > text.size() - taken)
            return text; // not what writeText() wrote
        out.append(QStringView(text).mid(taken, room)).append(u'\r');
        taken += room;
    }
    return out.append(QStringView(text).mid(taken));
}

// Without the characters that the format forbids, except carriage returns.
QString permitted(QString text) {
    text.removeIf(
        [](QChar c) { return c == QChar(0x7F) || (c < u' ' && c != u'\t' && c != u'\n' && c != u'\r'); });
    return text;
}

// Decodes "\n", "\,", "\;" and "\\"; any other backslash stays.
QString unescapeText(const QString &text) {
    static const QRegularExpression lineFeed(u"\\\\[nN]"_s);
    if (!text.contains(u'\\'))
        return text;
    QStringList pieces = text.split(u"\\\\"_s);
    for (QString &piece : pieces)
        piece.replace(lineFeed, u"\n"_s).replace(u"\\,"_s, u","_s).replace(u"\\;"_s, u";"_s);
    return pieces.join(u'\\');
}

QByteArray escapeText(const QString &text) {
    QString out = permitted(text);
    out.remove(u'\r').replace(u'\\', u"\\\\"_s).replace(u'\n', u"\\n"_s);
    return out.replace(u',', u"\\,"_s).replace(u';', u"\\;"_s).toUtf8();
}

bool isBase64(const ContentLine &line) {
    const QString encoding = line.parameter("ENCODING").value_or(QString()).toUpper();
    return encoding == u"BASE64"_s || encoding == u"B"_s;
}

} // namespace

QString readText(const ContentLine &line) {
    const QString text = unescapeText(decodeOctets(line.value()));
    const auto positions = line.parameter(carriageReturns);
    const QString whole = positions ? withCarriageReturns(text, *positions) : text;
    return whole.isNull() ? u""_s : whole;
}

void writeText(ContentLine &line, const QString &text) {
    line.setValue(escapeText(text));
    line.removeParameter("ENCODING");
    line.removeParameter("CHARSET");
    line.removeParameter(carriageReturns);
    const QString clean = permitted(text);
    if (clean.contains(u'\r'))
        line.setParameter(carriageReturns, carriageReturnPositions(clean));
}

void writeRecord(ContentLine &line, const QString &record) {
    line.setParameter("ENCODING", u"BASE64"_s);
    line.setParameter("VALUE", u"BINARY"_s);
    line.removeParameter(recordCharset);
    if (record.isValidUtf16()) {
        line.setValue(record.toUtf8().toBase64());
        return;
    }
    const QByteArray units = QStringEncoder(QStringEncoder::Utf16LE)(record);
    line.setParameter(recordCharset, utf16);
    line.setValue(units.toBase64());
}

QString readRecord(const ContentLine &line) {
    const QByteArray value = line.value();
    const auto bytes = QByteArray::fromBase64Encoding(QByteArray(value).replace(' ', ""));
    if (isBase64(line) && bytes) {
        if (line.parameter(recordCharset) != utf16)
            return (*bytes).isEmpty() ? u""_s : decodeOctets(*bytes);
        return QStringDecoder(QStringDecoder::Utf16LE, QStringDecoder::Flag::ConvertInitialBom)(*bytes);
    }
    if (QJsonDocument::fromJson(value).isObject())
        return decodeOctets(value);
    return readText(line);
}

} // namespace mailhost
