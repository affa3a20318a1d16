#include "standin/mailhost/store/ContentLine.h"

#include "platform/Literals.h"

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

// The end of the name and parameters: the first colon outside quotes. An unclosed quote is a plain character,
// because some programs write names with a single quotation mark.
qsizetype headEnd(const QByteArray &line) {
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            quoted = !quoted;
        else if (line[i] == ':' && !quoted)
            return i;
    }
    return line.indexOf(':');
}

QList<QByteArray> splitOutsideQuotes(const QByteArray &head) {
    const bool respectQuotes = head.count('"') % 2 == 0;
    QList<QByteArray> pieces;
    bool quoted = false;
    qsizetype begin = 0;
    for (qsizetype i = 0; i <= head.size(); ++i) {
        if (i == head.size() || (head[i] == ';' && !(quoted && respectQuotes))) {
            pieces.append(head.mid(begin, i - begin));
            begin = i + 1;
        } else if (head[i] == '"') {
            quoted = !quoted;
        }
    }
    return pieces;
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
    if (!text.contains(u'^'))
        return text;
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = text[i] == u'^' && i + 1 < text.size() ? text[i + 1] : QChar();
        if (next != u'n' && next != u'^' && next != u'\'') {
            out.append(text[i]);
            continue;
        }
        out.append(next == u'n' ? u'\n' : next == u'\'' ? u'"' : u'^');
        ++i;
    }
    return out;
}

QByteArray encodedParameter(const QByteArray &name, const QString &value) {
    QString text;
    bool quote = false;
    for (const QChar c : value) {
        if (c == u'^')
            text += u"^^"_s;
        else if (c == u'"')
            text += u"^'"_s;
        else if (c == u'\n')
            text += u"^n"_s;
        else if (c >= u' ' || c == u'\t')
            text += c;
        quote = quote || c == u':' || c == u';' || c == u',';
    }
    return name + '=' + (quote ? '"' + text.toUtf8() + '"' : text.toUtf8());
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
    line.assemble({name, {}, value, true}, lineEnd);
    return line;
}

QByteArray ContentLine::lineEnd() const {
    const QByteArray end = m_source.mid(contentLength(m_source));
    return end.isEmpty() ? QByteArrayLiteral("\r\n") : end;
}

QByteArray ContentLine::unfolded() const {
    const qsizetype length = contentLength(m_source);
    const bool oldMacLines = !m_source.contains('\n'); // a file whose lines end in CR alone
    const auto blankAt = [&](qsizetype i) {
        return i < length && (m_source[i] == ' ' || m_source[i] == '\t');
    };
    QByteArray out;
    out.reserve(length);
    for (qsizetype i = 0; i < length; ++i) {
        qsizetype next = i;
        while (next < length && m_source[next] == '\r')
            ++next;
        if (next < length && m_source[next] == '\n' && blankAt(next + 1)) {
            i = next + 1;
        } else if (oldMacLines && next > i && blankAt(next)) {
            i = next;
        } else {
            next = qMax(next, i + 1);
            out.append(m_source.constData() + i, next - i);
            i = next - 1;
        }
    }
    return out;
}

ContentLine::Parts ContentLine::parts() const {
    const QByteArray line = unfolded();
    const qsizetype end = headEnd(line);
    Parts parts;
    parts.hasValue = end >= 0;
    QList<QByteArray> pieces = splitOutsideQuotes(end < 0 ? line : line.left(end));
    parts.name = pieces.takeFirst();
    for (const QByteArray &piece : std::as_const(pieces))
        parts.parameters.append({piece.left(piece.indexOf('=')).trimmed().toUpper(), piece});
    if (parts.hasValue)
        parts.value = line.mid(end + 1);
    return parts;
}

QByteArray ContentLine::value() const {
    return parts().value;
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
        value.replace('\r',
                      ""); // stray ones do not survive writing: a zone's name would become another one then
        return decodeCarets(decodeOctets(value));
    }
    return std::nullopt;
}

void ContentLine::assemble(const Parts &parts, const QByteArray &lineEnd) {
    QByteArray line = parts.name;
    for (const Parameter &parameter : parts.parameters)
        line += ';' + parameter.text;
    if (parts.hasValue)
        line += ':' + parts.value;
    line.replace('\n', "").replace('\r', ""); // a value never begins another line
    m_source = folded(line, lineEnd);
    m_name = parts.name.trimmed().toUpper();
}

void ContentLine::setValue(const QByteArray &value) {
    Parts all = parts();
    all.value = value;
    all.hasValue = true;
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
