#include "platform/services/propertylist/PropertyList.h"

#include "platform/services/storage/WholeFile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QTimeZone>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <algorithm>

namespace platform {

namespace {

// Strict where common readers are lenient: a key without a value, a second root, a bad integer or invalid
// UTF-8 rejects the whole file, because its content would be a guess.
// Each operation expects the reader on a start element and leaves it on the end element, or raises an error.
class Reader {
public:
    explicit Reader(const QByteArray &bytes)
        : m_xml(bytes) {}

    rt::Value document() {
        if (!m_xml.readNextStartElement() || m_xml.name() != QLatin1String("plist"))
            return {};
        if (!m_xml.readNextStartElement())
            return {};
        const rt::Value root = value(1);
        if (m_xml.readNextStartElement())
            return {}; // a second root
        while (!m_xml.atEnd())
            m_xml.readNext();
        return m_xml.hasError() ? rt::Value() : root;
    }

private:
    rt::Value value(int depth) {
        if (depth > PropertyList::maximumDepth)
            return malformed("nested too deep");
        const QString type = m_xml.name().toString();
        if (type == QLatin1String("dict"))
            return dictionary(depth);
        if (type == QLatin1String("array"))
            return array(depth);
        return scalar(type, m_xml.readElementText());
    }

    rt::Value dictionary(int depth) {
        QVariantMap entries;
        while (nextElement()) {
            if (m_xml.name() != QLatin1String("key"))
                return malformed("a value without a key");
            const QString key = m_xml.readElementText();
            if (!nextElement())
                return malformed("a key without a value");
            entries.insert(key, value(depth + 1));
        }
        return entries;
    }

    rt::Value array(int depth) {
        QVariantList items;
        while (nextElement())
            items.append(value(depth + 1));
        return items;
    }

    // A container may have only white space and comments between its elements.
    bool nextElement() {
        while (!m_xml.atEnd()) {
            switch (m_xml.readNext()) {
            case QXmlStreamReader::StartElement:
                return true;
            case QXmlStreamReader::EndElement:
                return false;
            case QXmlStreamReader::Characters:
                if (!m_xml.isWhitespace())
                    malformed("text between elements");
                break;
            default:
                break;
            }
        }
        return false;
    }

    rt::Value scalar(const QString &type, const QString &text) {
        if (type == QLatin1String("string"))
            return text.isNull() ? QString(QLatin1String("")) : text;
        if (type == QLatin1String("true") || type == QLatin1String("false"))
            return type == QLatin1String("true");
        if (type == QLatin1String("integer"))
            return integer(text.trimmed());
        if (type == QLatin1String("real"))
            return real(text.trimmed());
        if (type == QLatin1String("date"))
            return date(text.trimmed());
        if (type == QLatin1String("data"))
            return data(text);
        return malformed("an unknown element");
    }

    rt::Value integer(const QString &text) {
        bool isNumber = false;
        const bool isHexadecimal = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
        const qint64 number = text.toLongLong(&isNumber, isHexadecimal ? 16 : 10);
        return isNumber ? rt::Value(number) : malformed("a bad integer");
    }

    rt::Value real(const QString &text) {
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        return isNumber ? rt::Value(number) : malformed("a bad number");
    }

    rt::Value date(const QString &text) {
        const QDateTime instant = QDateTime::fromString(text, Qt::ISODate);
        return instant.isValid() ? rt::Value(instant.toUTC()) : malformed("a bad date");
    }

    rt::Value data(const QString &text) {
        QByteArray base64 = text.toLatin1();
        base64.removeIf(
            [](char byte) { return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r'; });
        const auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
        return decoded ? rt::Value(decoded.decoded) : malformed("bad base64 data");
    }

    rt::Value malformed(const char *what) {
        m_xml.raiseError(QLatin1String(what));
        return {};
    }

    QXmlStreamReader m_xml;
};

// The toolkit's writer rejects the whole document for one forbidden character.
QString withoutForbidden(const QString &text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        const bool isPair = unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (isPair)
            result += text.sliced(i++, 2);
        else if (unit == u'\t' || unit == u'\n' || unit == u'\r' ||
                 (unit >= u' ' && !unit.isSurrogate() && unit < u'\ufffe'))
            result += unit;
    }
    return result;
}

class Writer {
public:
    QByteArray document(const rt::Value &value) {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(-1); // one tab
        m_xml.writeStartDocument();
        m_xml.writeStartElement(u"plist"_s);
        m_xml.writeAttribute(u"version"_s, u"1.0"_s);
        const bool isWritten = rt::isPresent(value) && write(value, 1);
        m_xml.writeEndDocument();
        return isWritten ? m_out : QByteArray();
    }

private:
    bool write(const rt::Value &value, int depth) {
        if (depth > PropertyList::maximumDepth)
            return false;
        switch (value.typeId()) {
        case QMetaType::QVariantMap:
            return writeDictionary(value.toMap(), depth);
        case QMetaType::QVariantList:
        case QMetaType::QStringList:
            return writeArray(value.toList(), depth);
        case QMetaType::Bool:
            m_xml.writeEmptyElement(value.toBool() ? u"true"_s : u"false"_s);
            return true;
        case QMetaType::QString:
            return writeElement(u"string"_s, value.toString());
        case QMetaType::QByteArray:
            return writeElement(u"data"_s, QString::fromLatin1(value.toByteArray().toBase64()));
        case QMetaType::QDateTime:
            return value.toDateTime().isValid() &&
                   writeElement(u"date"_s, value.toDateTime().toUTC().toString(Qt::ISODate));
        case QMetaType::Double:
        case QMetaType::Float:
            return writeElement(u"real"_s,
                                QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest));
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::ULong:
        case QMetaType::ULongLong: {
            bool isInRange = false;
            const qint64 number = value.toString().toLongLong(&isInRange);
            return isInRange && writeElement(u"integer"_s, QString::number(number));
        }
        default:
            return false;
        }
    }

    bool writeDictionary(const QVariantMap &entries, int depth) {
        m_xml.writeStartElement(u"dict"_s);
        for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
            if (!rt::isPresent(entry.value()))
                continue;
            writeElement(u"key"_s, entry.key());
            if (!write(entry.value(), depth + 1))
                return false;
        }
        m_xml.writeEndElement();
        return true;
    }

    bool writeArray(const QVariantList &items, int depth) {
        m_xml.writeStartElement(u"array"_s);
        for (const rt::Value &item : items) {
            if (rt::isPresent(item) && !write(item, depth + 1))
                return false;
        }
        m_xml.writeEndElement();
        return true;
    }

    bool writeElement(const QString &name, const QString &content) {
        m_xml.writeStartElement(name);
        const QStringList lines = withoutForbidden(content).split(u'\r');
        m_xml.writeCharacters(lines.first());
        for (const QString &line : lines.sliced(1)) {
            m_xml.writeEntityReference(u"#13"_s); // readers convert a bare carriage return to a line feed
            m_xml.writeCharacters(line);
        }
        m_xml.writeEndElement();
        return true;
    }

    QByteArray m_out;
    QXmlStreamWriter m_xml{&m_out};
};

// The content of the file; null if it is longer than allowed or unreadable.
QByteArray contentOf(const QString &path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    // Reads one byte more than allowed, because the file may be growing. Bounded by the file's size, because
    // read() allocates the memory first.
    const QByteArray content = file.read(std::min(file.size(), PropertyList::maximumSize) + 1);
    return content.size() > PropertyList::maximumSize ? QByteArray() : content;
}

} // namespace

rt::Value PropertyList::parse(const QByteArray &bytes) {
    return bytes.size() > maximumSize ? rt::Value() : Reader(bytes).document();
}

QByteArray PropertyList::toXml(const rt::Value &value) {
    return Writer().document(value);
}

rt::Value PropertyList::read(const QString &path) {
    return parse(contentOf(path));
}

bool PropertyList::write(const QString &path, const rt::Value &value) {
    const QByteArray xml = toXml(value);
    if (xml.isEmpty() || xml.size() > maximumSize)
        return false;
    return contentOf(path) == xml || writeWholeFile(path, xml);
}

} // namespace platform
