#include "plugin/util/vlOLUtils.h"

#include "platform/runtime/Runtime.h"
#include "platform/services/propertylist/PropertyList.h"

#include <QWidget>
#include <algorithm>

namespace {

bool isBlank(QChar c) {
    return c == u'\t' || c.category() == QChar::Separator_Space;
}

bool isLineBreak(QChar c) {
    const char16_t unit = c.unicode();
    return (unit >= u'\n' && unit <= u'\r') || unit == u'\u0085' || unit == u'\u2028' || unit == u'\u2029';
}

bool isBlankOrLineBreak(QChar c) {
    return isBlank(c) || isLineBreak(c);
}

template<typename Predicate>
QStringView trimmedWhile(QStringView text, Predicate belongs) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && belongs(text[begin]))
        ++begin;
    while (end > begin && belongs(text[end - 1]))
        --end;
    return text.sliced(begin, end - begin);
}

// Returns null only for null.
template<typename Predicate>
QString trimmed(const QString &text, Predicate belongs) {
    return text.isNull() ? QString() : rt::orEmpty(trimmedWhile(text, belongs).toString());
}

} // namespace

bool vlOLUtils::kindofClass(const rt::Object *object, const QString &className) {
    return rt::isKindOf(object, rt::classNamed(className));
}

bool vlOLUtils::kindofClass(const QWidget *view, const QString &className) {
    return kindofClass(dynamic_cast<const rt::Object *>(view), className);
}

bool vlOLUtils::kindofClass(const rt::Value &value, const QString &className) {
    return kindofClass(rt::objectValue(value), className);
}

void vlOLUtils::GetSubViewOfKind(const QWidget *view, const QString &className, QList<QWidget *> &result) {
    if (!view)
        return;
    for (QObject *child : view->children()) {
        auto *subview = qobject_cast<QWidget *>(child);
        if (!subview || subview->isWindow()) // a sheet or dialog is not part of the view
            continue;
        if (kindofClass(subview, className))
            result.append(subview);
        else
            GetSubViewOfKind(subview, className, result);
    }
}

QByteArray vlOLUtils::stringToNSData(const QString &text) {
    return text.isNull() ? QByteArray() : text.toUtf8();
}

QString vlOLUtils::trimAllSpace(const QString &text) {
    if (text.isNull())
        return {};
    QString result = u""_s;
    for (const QStringView run : trimmedWhile(text, isBlank).tokenize(u' '))
        result += QStringView(std::find_if_not(run.begin(), run.end(), isBlankOrLineBreak), run.end());
    return result;
}

QString vlOLUtils::trimRLSpace(const QString &text) {
    return trimmed(text, isBlank);
}

QString vlOLUtils::trimNewLine(const QString &text) {
    return trimmed(text, isLineBreak);
}

QString vlOLUtils::trimAllSpaceAndNewLine(const QString &text) {
    return trimmed(text, isBlankOrLineBreak);
}

void vlOLUtils::saveStrToFile(const QString &text, const QString &path) {
    if (text.isNull() || path.isEmpty())
        return;
    platform::PropertyList::write(path, QVariantList{text});
}

QString vlOLUtils::readStrFromFile(const QString &path) {
    if (path.isNull())
        return {};
    if (path.isEmpty())
        return u""_s;
    const QVariantList stored = rt::listValue(platform::PropertyList::read(path));
    return stored.isEmpty() ? u""_s : rt::orEmpty(rt::textValue(stored.last()));
}
