// Texts of content lines: escaping (RFC 5545, section 3.3.11), and what the format itself cannot carry.
#pragma once

#include "standin/mailhost/store/ContentLine.h"

namespace mailhost {

// "\n", "\,", "\;" and "\\" decoded; any other backslash stays.
[[nodiscard]] QString unescapeText(const QString &text);
// Control characters other than tab and line feed, which the format forbids, are left out.
[[nodiscard]] QByteArray escapeText(const QString &text);

// The text of a line. Never null.
[[nodiscard]] QString readText(const ContentLine &line);
// readText() then answers the same text, but for forbidden control characters. The format has one line break
// only; where carriage returns stood is kept in the parameter X-PARLO-CR ("LF": before every line feed; else
// their positions).
void writeText(ContentLine &line, const QString &text);

// The two texts are the same; null and empty are not.
[[nodiscard]] inline bool sameText(const QString &a, const QString &b) {
    return a.isNull() == b.isNull() && a == b;
}

// A private record that must come back to the letter: base64 of its UTF-8 with ENCODING=BASE64;VALUE=BINARY
// (of its UTF-16LE, with X-PARLO-CHARSET, for what is not valid Unicode). As text it would lose line ends and
// blanks in the hands of programs that rewrite the file.
void writeRecord(ContentLine &line, const QString &record);
// Also reads a plain text: as it stands when that is a JSON object, else unescaped. Never null.
[[nodiscard]] QString readRecord(const ContentLine &line);

} // namespace mailhost
