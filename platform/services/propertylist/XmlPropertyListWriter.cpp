// An emitter of our own: common ones write control characters raw and end a text at a NUL, and a strict
// reader can read neither.

#include "platform/services/propertylist/XmlPropertyList.h"
#include "platform/services/storage/Storage.h"

#include <QDateTime>
#include <QLocale>
#include <QTimeZone>
#include <cmath>
#include <limits>

namespace platform {

namespace {

class Writer {
public:
    QByteArray document(const rt::Value &value) {
        m_out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                "<plist version=\"1.0\">\n";
        if (!rt::isPresent(value) || !write(value, 1))
            return {};
        m_out += "</plist>\n";
        return m_out;
    }

private:
    bool write(const rt::Value &value, int depth) {
        if (depth > PropertyLists::maximumDepth)
            return false;
        switch (value.typeId()) {
        case QMetaType::QVariantMap:
            return writeDictionary(value.toMap(), depth);
        case QMetaType::QVariantList:
        case QMetaType::QStringList:
            return writeArray(value.toList(), depth);
        case QMetaType::Bool:
            return line(depth, value.toBool() ? "<true/>" : "<false/>");
        case QMetaType::QString:
            return element(depth, "string", escaped(value.toString()));
        case QMetaType::QByteArray:
            return element(depth, "data", value.toByteArray().toBase64());
        case QMetaType::QDateTime:
            return writeDate(value.toDateTime(), depth);
        case QMetaType::Double:
        case QMetaType::Float:
            return element(depth, "real",
                           QByteArray::number(value.toDouble(), 'g', QLocale::FloatingPointShortest));
        default:
            return writeInteger(value, depth);
        }
    }

    bool writeDictionary(const QVariantMap &entries, int depth) {
        line(depth, "<dict>");
        for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
            if (!rt::isPresent(entry.value()))
                continue;
            element(depth + 1, "key", escaped(entry.key()));
            if (!write(entry.value(), depth + 1))
                return false;
        }
        return line(depth, "</dict>");
    }

    bool writeArray(const QVariantList &items, int depth) {
        line(depth, "<array>");
        for (const rt::Value &item : items) {
            if (rt::isPresent(item) && !write(item, depth + 1))
                return false;
        }
        return line(depth, "</array>");
    }

    bool writeDate(const QDateTime &instant, int depth) {
        return instant.isValid() && element(depth, "date", instant.toUTC().toString(Qt::ISODate).toLatin1());
    }

    bool writeInteger(const rt::Value &value, int depth) {
        switch (value.typeId()) {
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
            return element(depth, "integer", QByteArray::number(value.toLongLong()));
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            return value.toULongLong() <= quint64(std::numeric_limits<qint64>::max()) &&
                   element(depth, "integer", QByteArray::number(value.toULongLong()));
        default:
            return false;
        }
    }

    static QByteArray escaped(const QString &text) {
        QString result;
        result.reserve(text.size());
        for (qsizetype i = 0; i < text.size(); ++i) {
            const QChar unit = text[i];
            if (unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
                result += unit;
                result += text[++i];
                continue;
            }
            appendEscaped(result, unit);
        }
        return result.toUtf8();
    }

    static void appendEscaped(QString &result, QChar unit) {
        switch (unit.unicode()) {
        case u'&':
            result += QLatin1String("&amp;");
            return;
        case u'<':
            result += QLatin1String("&lt;");
            return;
        case u'>':
            result += QLatin1String("&gt;");
            return;
        case u'\r': // a reader would turn a bare one into a line feed
            result += QLatin1String("&#13;");
            return;
        case u'\t':
        case u'\n':
            result += unit;
            return;
        default:
            if (unit.unicode() >= 0x20 && !unit.isSurrogate() && unit.unicode() < 0xfffe)
                result += unit;
        }
    }

    bool element(int depth, const QByteArray &name, const QByteArray &content) {
        return line(depth, '<' + name + '>' + content + "</" + name + '>');
    }

    // The dictionary or array of the document stands at the margin, as other writers have it.
    bool line(int depth, const QByteArray &text) {
        m_out.append(depth - 1, '\t');
        m_out += text;
        m_out += '\n';
        return true;
    }

    QByteArray m_out;
};

} // namespace

QByteArray toXmlPropertyList(const rt::Value &value) {
    return Writer().document(value);
}

} // namespace platform
