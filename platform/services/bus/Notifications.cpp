#include "platform/services/bus/Notifications.h"

#include "platform/Literals.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace platform {

namespace {

bool isCarried(char32_t code) {
    return !QChar::isSurrogate(code) && (code < 0xFDD0 || code > 0xFDEF) && (code & 0xFFFE) != 0xFFFE;
}

} // namespace

QString carriedText(const QString &text) {
    // The usual case: the text has no character in the range of such code points.
    constexpr char16_t firstSuspect = 0xD800;
    if (std::none_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() >= firstSuspect; }))
        return text;
    QList<uint> codes = text.toUcs4();
    if (std::all_of(codes.cbegin(), codes.cend(), isCarried))
        return text;
    std::replace_if(codes.begin(), codes.end(), std::not_fn(isCarried), uint(QChar::ReplacementCharacter));
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(codes.constData()), codes.size());
}

QString refusalOf(const QString &name, const QString &sender, const TextMap &userInfo) {
    QStringList texts = userInfo.keys() + userInfo.values();
    texts << name << sender;
    qint64 size = 0;
    for (const QString &text : std::as_const(texts)) {
        if (text.contains(QChar(u'\0')))
            return u"it contains a NUL character"_s;
        size += text.toUtf8().size();
    }
    if (size > DistributedNotificationCenter::maximumSize)
        return u"it is too large (%1 bytes)"_s.arg(size);
    return {};
}

} // namespace platform
