// HTML to plain characters, as a rich-text importer gives them.
#pragma once

#include <QString>

namespace platform {

// The plain characters of the HTML: each block ends with one line break, and so does an empty block; html and
// body give none; <br> is U+2028 inside p, li and h1 to h6, and "\n" elsewhere; a block's trailing soft space
// or U+2028 gives way to its line break; list items begin "\t•\t" or "\t1.\t"; an image is U+FFFC; what is
// display:none, script, style and head give nothing. Runs of white space are one blank outside pre. Never
// fails, and is never null: what is not HTML is text. Linear in the input, however deeply nested.
[[nodiscard]] QString plainTextOfHtml(const QString &html);

} // namespace platform
