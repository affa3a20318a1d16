// Writes values as an XML property list with the toolkit's writer.
#include "platform/services/propertylist/PropertyList.h"

#include <QDateTime>
#include <QLocale>
#include <QTimeZone>
#include <QXmlStreamWriter>
#include <limits>

namespace platform {

namespace {

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
        default:
            return writeInteger(value);
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

    bool writeInteger(const rt::Value &value) {
        switch (value.typeId()) {
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
            return writeElement(u"integer"_s, QString::number(value.toLongLong()));
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            return value.toULongLong() <= quint64(std::numeric_limits<qint64>::max()) &&
                   writeElement(u"integer"_s, QString::number(value.toULongLong()));
        default:
            return false;
        }
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

} // namespace

QByteArray PropertyList::toXml(const rt::Value &value) {
    return Writer().document(value);
}

} // namespace platform
