// The lines of the table: what | ours | against | ratio | aim | reached.
#pragma once

#include <QString>
#include <QStringList>

namespace bench {

// "12.3 ns", "4.56 ms"
[[nodiscard]] QString timeText(double seconds);
// "10 KB", "20 MB", in units of a thousand.
[[nodiscard]] QString sizeText(double bytes);
// "2.31"
[[nodiscard]] QString ratioText(double ratio);

// Hands a line to whoever collects the table.
void addRow(const QString &what, const QString &ours, const QString &against, const QString &ratio,
            const QString &aim, bool reached);
// For the usual line: our time and the other's, and their ratio, which is to be no more than the limit.
void addRatio(const QString &what, double ours, const QString &other, double others, double ratio,
              double limit);
// For the time that each part of a large thing takes, and of a smaller one: linear as long as it is about the
// same. Memory that is far away, or new, makes some difference.
void addLinear(const QString &what, double large, const QString &other, double small, double ratio);
// A line about what could not be measured.
void addNote(const QString &note);

// The collected lines as a table in Markdown. `lines` are as addRow() and addNote() print them.
[[nodiscard]] QString tableOf(const QStringList &lines);

} // namespace bench
