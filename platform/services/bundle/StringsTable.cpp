#include "platform/services/bundle/StringsTable.h"

#include <algorithm>
#include <optional>

namespace platform {

namespace {

class Scanner {
public:
    explicit Scanner(const QString &text)
        : m_text(text) {}

    QHash<QString, QString> table() {
        QHash<QString, QString> entries;
        for (skipBlanks(); m_at < m_text.size(); skipBlanks()) {
            const auto key = quoted();
            const bool hasValue = key && take(u'=');
            const auto value = hasValue ? quoted() : std::nullopt;
            if (value && take(u';')) {
                entries.insert(*key, *value);
                continue;
            }
            m_isWhole = false;
            skipEntry();
        }
        return entries;
    }

    bool isWhole() const { return m_isWhole; }

private:
    bool startsWith(QLatin1String part) const { return QStringView(m_text).sliced(m_at).startsWith(part); }

    void skipBehind(QLatin1String end) {
        const qsizetype found = m_text.indexOf(end, m_at + 2);
        m_at = found < 0 ? m_text.size() : found + end.size();
    }

    void skipBlanks() {
        while (m_at < m_text.size()) {
            if (startsWith(QLatin1String("/*")))
                skipBehind(QLatin1String("*/"));
            else if (startsWith(QLatin1String("//")))
                skipBehind(QLatin1String("\n"));
            else if (m_text[m_at].isSpace())
                ++m_at;
            else
                return;
        }
    }

    void skipEntry() {
        const qsizetype end = m_text.indexOf(u';', m_at);
        m_at = end < 0 ? m_text.size() : end + 1;
    }

    bool take(char16_t unit) {
        skipBlanks();
        if (m_at >= m_text.size() || m_text[m_at] != unit)
            return false;
        ++m_at;
        return true;
    }

    std::optional<QString> quoted() {
        if (!take(u'"'))
            return {};
        QString result(QLatin1String(""));
        while (m_at < m_text.size()) {
            const QChar unit = m_text[m_at++];
            if (unit == u'"')
                return result;
            result += unit == u'\\' && m_at < m_text.size() ? escape() : unit;
        }
        return {};
    }

    QChar escape() {
        const QChar unit = m_text[m_at++];
        switch (unit.unicode()) {
        case u'n':
            return u'\n';
        case u't':
            return u'\t';
        case u'r':
            return u'\r';
        case u'U':
        case u'u':
            return hexadecimal(unit);
        default:
            return unit;
        }
    }

    QChar hexadecimal(QChar otherwise) {
        constexpr qsizetype digits = 4;
        bool isNumber = false;
        const ushort code = QStringView(m_text).mid(m_at, digits).toUShort(&isNumber, 16);
        if (!isNumber)
            return otherwise;
        m_at = std::min(m_at + digits, m_text.size());
        return QChar(code);
    }

    const QString m_text;
    qsizetype m_at = 0;
    bool m_isWhole = true;
};

} // namespace

QHash<QString, QString> parseStringsTable(const QByteArray &bytes, bool *isWhole) {
    const QByteArray content = bytes.startsWith("\xef\xbb\xbf") ? bytes.sliced(3) : bytes;
    Scanner scanner(QString::fromUtf8(content));
    const QHash<QString, QString> entries = scanner.table();
    if (isWhole)
        *isWhole = scanner.isWhole();
    return entries;
}

} // namespace platform
