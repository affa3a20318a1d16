// Replacing in one pass.
#pragma once

#include "platform/Literals.h"

#include <QString>
#include <QStringView>

// The text with every occurrence replaced, never null. Linear: the toolkit's own replacement moves the rest
// of the text for every batch of occurrences, which takes minutes on the largest bodies.
[[nodiscard]] inline QString replacedAll(QStringView text, QStringView before, QStringView after) {
    QString result = u""_s;
    result.reserve(text.size() + text.size() / 8); // else a long text is moved again and again
    qsizetype copied = 0;
    for (qsizetype at = text.indexOf(before); at >= 0; at = text.indexOf(before, copied)) {
        result += text.sliced(copied, at - copied);
        result += after;
        copied = at + before.size();
    }
    result += text.sliced(copied);
    return result;
}
