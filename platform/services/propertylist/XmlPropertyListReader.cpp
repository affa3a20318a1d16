// Strict where common readers are lenient: a key without a value, a second root, a bad integer or invalid
// UTF-8 rejects the whole file, because its content would be a guess.

#include "platform/services/propertylist/PropertyList.h"

#include <QDateTime>
#include <QTimeZone>
#include <QXmlStreamReader>

namespace platform {

namespace {

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

} // namespace

rt::Value PropertyList::parse(const QByteArray &bytes) {
    return bytes.size() > maximumSize ? rt::Value() : Reader(bytes).document();
}

} // namespace platform
