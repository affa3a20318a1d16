// Replaces text in one pass.
#pragma once

#include "platform/Literals.h"

#include <QString>
#include <QStringView>

// Returns the text with every occurrence replaced, never null. Takes linear time: the toolkit's replacement
// moves the rest of the text for every batch of occurrences, which takes minutes for the largest bodies.
[[nodiscard]] inline QString replacedAll(QStringView text, QStringView before, QStringView after) {
    QString result = u""_s;
    result.reserve(text.size() + text.size() / 8); // avoids repeated reallocation of a long text
    qsizetype copied = 0;
    for (qsizetype at = text.indexOf(before); at >= 0; at = text.indexOf(before, copied)) {
        result += text.sliced(copied, at - copied);
        result += after;
        copied = at + before.size();
    }
    result += text.sliced(copied);
    return result;
}
