#include "platform/services/bundle/StringsTable.h"

#include "platform/Literals.h"

#include <QRegularExpression>
#include <algorithm>

namespace platform {

namespace {

// All quantifiers are possessive ("++", "*+"), so that a damaged table causes no exponential backtracking.
const QString blanks = uR"((?:\s++|/\*.*?(?:\*/|\z)|//[^\n]*+)*+)"_s;
const QString quoted = uR"regex("((?:[^"\\]++|\\.)*+)")regex"_s;
const auto options =
    QRegularExpression::DotMatchesEverythingOption | QRegularExpression::UseUnicodePropertiesOption;

// Without this option each match would check the whole text, which needs no check after decoding from UTF-8.
QRegularExpressionMatch matchAt(const QRegularExpression &expression, const QString &text, qsizetype at) {
    return expression.match(text, at, QRegularExpression::NormalMatch,
                            QRegularExpression::DontCheckSubjectStringMatchOption);
}

QChar escaped(QChar unit) {
    switch (unit.unicode()) {
    case u'n':
        return u'\n';
    case u't':
        return u'\t';
    case u'r':
        return u'\r';
    default:
        return unit;
    }
}

// Never null.
QString unescaped(QStringView text) {
    constexpr qsizetype digits = 4;
    QString result(u""_s);
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\') {
            result += text[i];
            continue;
        }
        const QChar unit = text[++i];
        bool isNumber = unit == u'U' || unit == u'u';
        const ushort code = isNumber ? text.mid(i + 1, digits).toUShort(&isNumber, 16) : ushort(0);
        result += isNumber ? QChar(code) : escaped(unit);
        if (isNumber)
            i = std::min(i + digits, text.size() - 1);
    }
    return result;
}

} // namespace

QHash<QString, QString> parseStringsTable(const QByteArray &bytes, bool *isWhole) {
    static const QRegularExpression skipped(u"\\G"_s + blanks, options);
    static const QRegularExpression entry(u"\\G"_s + quoted + blanks + u'=' + blanks + quoted + blanks + u';',
                                          options);
    const QString text = QString::fromUtf8(bytes.startsWith("\xef\xbb\xbf") ? bytes.sliced(3) : bytes);
    QHash<QString, QString> entries;
    bool isMalformed = false;
    for (qsizetype at = 0; (at = matchAt(skipped, text, at).capturedEnd()) < text.size();) {
        const QRegularExpressionMatch match = matchAt(entry, text, at);
        if (match.hasMatch()) {
            entries.insert(unescaped(match.capturedView(1)), unescaped(match.capturedView(2)));
            at = match.capturedEnd();
        } else {
            isMalformed = true;
            const qsizetype end = text.indexOf(u';', at);
            at = end < 0 ? text.size() : end + 1;
        }
    }
    if (isWhole)
        *isWhole = !isMalformed;
    return entries;
}

} // namespace platform
