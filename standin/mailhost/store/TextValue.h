// Texts of content lines: escaping (RFC 5545, section 3.3.11), and characters that the format cannot
// represent.
#pragma once

#include "standin/mailhost/store/ContentLine.h"

namespace mailhost {

// The text of a line. Never null.
[[nodiscard]] QString readText(const ContentLine &line);
// readText() then returns the same text without forbidden control characters. The format has only one kind of
// line break; the parameter X-PARLO-CR keeps the carriage returns ("LF": one before every line feed; else
// their positions).
void writeText(ContentLine &line, const QString &text);

// The two texts are the same; null and empty are not.
[[nodiscard]] inline bool sameText(const QString &a, const QString &b) {
    return a.isNull() == b.isNull() && a == b;
}

// A private record that must be kept to the letter: base64 of its UTF-8 with ENCODING=BASE64;VALUE=BINARY (of
// its UTF-16LE, with X-PARLO-CHARSET, if it is not valid Unicode). Programs that rewrite the file would
// change the line ends and blanks of a text.
void writeRecord(ContentLine &line, const QString &record);
// Also reads a plain text: unchanged if it is a JSON object, else unescaped. Never null.
[[nodiscard]] QString readRecord(const ContentLine &line);

} // namespace mailhost
