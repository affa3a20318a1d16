// HTML to plain characters, as a rich-text importer gives them.
#pragma once

#include <QString>

namespace platform {

// The plain characters of the HTML: each block ends with one line break, and so does an empty block; html and
// body give none; <br> is U+2028 inside p, li and h1 to h6, and "\n" elsewhere; a block's trailing soft space
// or U+2028 gives way to its line break; list items begin "\t•\t" or "\t1.\t"; an image is U+FFFC;
// display:none, script, style and head give nothing. Outside of pre, runs of white space give one blank.
// Never fails and is never null: input that is not HTML is text. Takes linear time at every nesting depth.
[[nodiscard]] QString plainTextOfHtml(const QString &html);

} // namespace platform
