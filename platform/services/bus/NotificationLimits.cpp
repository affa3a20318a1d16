#include "platform/services/bus/NotificationLimits.h"

#include "platform/Literals.h"

#include <algorithm>
#include <functional>

namespace platform {

namespace {

qint64 utf8Size(QStringView text) {
    qint64 size = 0;
    for (const QChar unit : text) {
        // Each half of a surrogate pair stands for two of the pair's four bytes; a lone half is sent as
        // three, which is too rare to count.
        const char16_t code = unit.unicode();
        size += code < 0x80 ? 1 : code < 0x800 || unit.isSurrogate() ? 2 : 3;
    }
    return size;
}

bool isCarried(char32_t code) {
    return !QChar::isSurrogate(code) && (code < 0xFDD0 || code > 0xFDEF) && (code & 0xFFFE) != 0xFFFE;
}

bool hasNul(const QString &text) {
    return text.contains(QChar(u'\0'));
}

} // namespace

QString carriedText(const QString &text) {
    // Nearly every text: nothing of it lies where such code points do.
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
    bool nul = hasNul(name) || hasNul(sender);
    qint64 size = utf8Size(name) + utf8Size(sender);
    for (auto entry = userInfo.cbegin(); entry != userInfo.cend() && !nul; ++entry) {
        nul = hasNul(entry.key()) || hasNul(entry.value());
        size += utf8Size(entry.key()) + utf8Size(entry.value());
    }
    if (nul)
        return u"it contains a NUL character"_s;
    if (size > DistributedNotificationCenter::maximumSize)
        return u"it is too large (%1 bytes)"_s.arg(size);
    return {};
}

} // namespace platform
