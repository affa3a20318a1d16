// Writes the user's changes of a body into its HTML. Works on values, without a document.
#pragma once

#include "standin/mailhost/model/BodySource.h"

#include <QHash>
#include <optional>

namespace mailhost {

struct BodyStyle {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    QString link;
    friend bool operator==(const BodyStyle &, const BodyStyle &) = default;
};

// The raw text of a document, the style of each of its characters, and which of its blocks are list items.
struct BodyState {
    QString text;
    QList<BodyStyle> styles;
    QList<bool> lists;
    friend bool operator==(const BodyState &, const BodyState &) = default;
};

struct LoadedBody {
    BodySource source;
    BodyState state;
    QList<int> solidAt; // for each character its solid piece, or -1
};

struct EditedBody {
    BodyState state;
    QList<int> origin;             // for each character its place in the loaded text, or -1
    QHash<int, QString> bookmarks; // the HTML of each, by its place
};

// No value if a change cannot be written into the original HTML.
[[nodiscard]] std::optional<QString> writtenBody(const LoadedBody &before, const EditedBody &now);

} // namespace mailhost
