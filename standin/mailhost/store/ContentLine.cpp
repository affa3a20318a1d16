#include "standin/mailhost/store/ContentLine.h"

#include "platform/Literals.h"

#include <QRegularExpression>
#include <QStringDecoder>

namespace mailhost {

namespace {

constexpr qsizetype longestPhysicalLine = 75; // octets, without the line end

qsizetype contentLength(const QByteArray &source) {
    qsizetype length = source.size();
    while (length > 0 && (source[length - 1] == '\n' || source[length - 1] == '\r'))
        --length;
    return length;
}

struct SplitLine {
    QList<QByteArray> head; // the name and the parameters
    qsizetype colon = -1;   // behind them
};
// Splits the line at the semicolons before its first colon, and at the colon. Quoted ones do not count.
SplitLine splitLine(const QByteArray &line, bool respectQuotes) {
    SplitLine split;
    bool quoted = false;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < line.size() && split.colon < 0; ++i) {
        quoted = quoted != (respectQuotes && line[i] == '"');
        if (quoted || (line[i] != ';' && line[i] != ':'))
            continue;
        split.head.append(line.mid(begin, i - begin));
        begin = i + 1;
        if (line[i] == ':')
            split.colon = i;
    }
    if (split.colon < 0)
        split.head.append(line.mid(begin));
    return split;
}

QByteArray folded(const QByteArray &line, const QByteArray &lineEnd) {
    QByteArray out;
    out.reserve(line.size() + line.size() / 70 * (lineEnd.size() + 1) + lineEnd.size());
    qsizetype begin = 0;
    qsizetype room = longestPhysicalLine;
    while (line.size() - begin > room) {
        qsizetype end = begin + room;
        // Never inside a character. Text that is not UTF-8 may have only continuation octets: then anywhere.
        while (end > begin + room - 4 && (uchar(line[end]) & 0xC0) == 0x80)
            --end;
        out.append(line.constData() + begin, end - begin).append(lineEnd).append(' ');
        begin = end;
        room = longestPhysicalLine - 1;
    }
    return out.append(line.constData() + begin, line.size() - begin).append(lineEnd);
}

QString decodeCarets(const QString &text) {
    QStringList pieces = text.split(u"^^"_s);
    for (QString &piece : pieces)
        piece.replace(u"^n"_s, u"\n"_s).replace(u"^'"_s, u"\""_s);
    return pieces.join(u'^');
}

QByteArray encodedParameter(const QByteArray &name, const QString &value) {
    static const QRegularExpression special(u"[:;,]"_s);
    QString text = value;
    text.replace(u'^', u"^^"_s).replace(u'"', u"^'"_s).replace(u'\n', u"^n"_s);
    text.removeIf([](QChar c) { return c < u' ' && c != u'\t'; });
    const QByteArray octets = text.toUtf8();
    return name + '=' + (text.contains(special) ? '"' + octets + '"' : octets);
}

} // namespace

QString decodeOctets(const QByteArray &octets) {
    // A byte order mark is a plain character here: only a file begins with one.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder(octets);
    return decoder.hasError() ? QString::fromLatin1(octets) : text;
}

ContentLine::ContentLine(QByteArray source)
    : m_source(std::move(source)) {
    qsizetype end = 0;
    const qsizetype length = m_source.size();
    while (end < length && m_source[end] != ':' && m_source[end] != ';' && m_source[end] != '\n')
        ++end;
    if (end < length && m_source[end] != '\n')
        m_name = m_source.left(end).trimmed().toUpper();
    else
        m_name = parts().name.trimmed().toUpper(); // folded within its name, or without a colon
}

ContentLine ContentLine::make(const QByteArray &name, const QByteArray &value, const QByteArray &lineEnd) {
    ContentLine line;
    line.assemble({name, {}, value}, lineEnd);
    return line;
}

QByteArray ContentLine::lineEnd() const {
    const QByteArray end = m_source.mid(contentLength(m_source));
    return end.isEmpty() ? QByteArrayLiteral("\r\n") : end;
}

QByteArray ContentLine::unfolded() const {
    static const QRegularExpression fold(u"(?<!\\r)\\r*+\\n[ \\t]"_s);
    static const QRegularExpression oldMacFold(u"(?<!\\r)\\r++[ \\t]"_s); // where lines end in CR alone
    const QByteArray content = m_source.left(contentLength(m_source));
    if (!content.contains('\n') && !content.contains('\r'))
        return content;
    return QString::fromLatin1(content).remove(m_source.contains('\n') ? fold : oldMacFold).toLatin1();
}

ContentLine::Parts ContentLine::parts() const {
    const QByteArray line = unfolded();
    SplitLine split = splitLine(line, true);
    if (split.colon <
        0) // an unclosed quote is a plain character: some programs write names with a single one
        split = splitLine(line, false);
    Parts parts;
    parts.name = split.head.takeFirst();
    for (const QByteArray &text : std::as_const(split.head))
        parts.parameters.append({text.left(text.indexOf('=')).trimmed().toUpper(), text});
    if (split.colon >= 0)
        parts.value = line.mid(split.colon + 1);
    return parts;
}

QByteArray ContentLine::value() const {
    return parts().value.value_or(QByteArray());
}

std::optional<QString> ContentLine::parameter(const QByteArray &name) const {
    if (!m_source.contains(';'))
        return std::nullopt;
    const Parts all = parts();
    for (const Parameter &parameter : all.parameters) {
        if (parameter.name != name)
            continue;
        const qsizetype equals = parameter.text.indexOf('=');
        QByteArray value = equals < 0 ? QByteArray() : parameter.text.mid(equals + 1).trimmed();
        if (value.count('"') % 2 == 0)
            value.replace('"', "");
        // Stray ones do not survive writing: a zone's name would become another one then.
        value.replace('\r', "");
        return decodeCarets(decodeOctets(value));
    }
    return std::nullopt;
}

void ContentLine::assemble(const Parts &parts, const QByteArray &lineEnd) {
    QByteArray line = parts.name;
    for (const Parameter &parameter : parts.parameters)
        line += ';' + parameter.text;
    if (parts.value)
        line += ':' + *parts.value;
    line.replace('\n', "").replace('\r', ""); // a value never begins another line
    m_source = folded(line, lineEnd);
    m_name = parts.name.trimmed().toUpper();
}

void ContentLine::setValue(const QByteArray &value) {
    Parts all = parts();
    all.value = value;
    assemble(all, lineEnd());
}

void ContentLine::setParameter(const QByteArray &name, const QString &value) {
    Parts all = parts();
    const QByteArray text = encodedParameter(name, value);
    for (Parameter &parameter : all.parameters) {
        if (parameter.text.count('"') % 2) // the quote would end inside the new parameter
            parameter.text += '"';
    }
    qsizetype index = 0;
    while (index < all.parameters.size() && all.parameters[index].name != name)
        ++index;
    if (index < all.parameters.size())
        all.parameters[index].text = text;
    else
        all.parameters.append({name, text});
    assemble(all, lineEnd());
}

void ContentLine::removeParameter(const QByteArray &name) {
    Parts all = parts();
    if (all.parameters.removeIf([&](const Parameter &parameter) { return parameter.name == name; }) > 0)
        assemble(all, lineEnd());
}

ContentLine ContentLine::refolded(const QByteArray &lineEnd) const {
    ContentLine line;
    line.assemble(parts(), lineEnd);
    return line;
}

} // namespace mailhost
