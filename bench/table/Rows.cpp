#include "bench/table/Rows.h"

#include "platform/Literals.h"

#include <QList>
#include <array>
#include <cstdio>

namespace bench {

namespace {

constexpr QChar separator = u'\t';
constexpr int columns = 6;
const QString notePrefix = u"note"_s;
const QString rowPrefix = u"row"_s;

void print(const QStringList &fields) {
    std::printf("%s\n", qPrintable(fields.join(separator)));
    std::fflush(stdout);
}

QString withUnit(double number, double unit, const char *name) {
    return QString::number(number / unit, 'g', 3) + u' ' + QString::fromLatin1(name);
}

QString threeDigits(double number) {
    const int decimals = number < 10 ? 2 : number < 100 ? 1 : 0;
    return QString::number(number, 'f', decimals);
}

} // namespace

QString timeText(double seconds) {
    struct Unit {
        double size;
        const char *name;
    };
    constexpr std::array units = {Unit{1, " s"}, Unit{1e-3, " ms"}, Unit{1e-6, " us"}, Unit{1e-9, " ns"}};
    for (const Unit &unit : units)
        if (seconds >= unit.size || unit.size == units.back().size)
            return threeDigits(seconds / unit.size) + QString::fromLatin1(unit.name);
    return {};
}

QString sizeText(double bytes) {
    if (bytes >= 1e6)
        return withUnit(bytes, 1e6, "MB");
    return bytes >= 1e3 ? withUnit(bytes, 1e3, "KB") : withUnit(bytes, 1, "B");
}

QString ratioText(double ratio) {
    return ratio < 0.1 ? QString::number(ratio, 'f', 3) : threeDigits(ratio);
}

void addRow(const QString &what, const QString &ours, const QString &against, const QString &ratio,
            const QString &aim, bool reached) {
    print({rowPrefix, what, ours, against, ratio, aim, reached ? u"yes"_s : u"**no**"_s});
}

void addRatio(const QString &what, double ours, const QString &other, double others, double ratio,
              double limit) {
    addRow(what, timeText(ours), other + u": "_s + timeText(others), ratioText(ratio),
           u"at most "_s + QString::number(limit), ratio <= limit);
}

void addLinear(const QString &what, double large, const QString &other, double small, double ratio) {
    constexpr double limit = 1.5;
    addRatio(what, large, other, small, ratio, limit);
}

void addNote(const QString &note) {
    print({notePrefix, note});
}

QString tableOf(const QStringList &lines) {
    QList<QStringList> rows{{"what", "ours", "against", "ratio", "aim", "reached"}};
    QStringList notes;
    for (const QString &line : lines) {
        const QStringList fields = line.split(separator);
        if (fields.first() == rowPrefix && fields.size() == columns + 1)
            rows.append(fields.mid(1));
        else if (fields.first() == notePrefix)
            notes.append(u"* "_s + fields.value(1) + u'\n');
    }
    std::array<qsizetype, columns> widths{};
    for (const QStringList &row : rows)
        for (int column = 0; column < columns; ++column)
            widths[std::size_t(column)] = qMax(widths[std::size_t(column)], row[column].size());
    QString text;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        for (int column = 0; column < columns; ++column)
            text += u"| "_s + rows[i][column].leftJustified(widths[std::size_t(column)]) + u' ';
        text += u"|\n"_s;
        if (i == 0)
            text += u"|---"_s.repeated(columns) + u"|\n"_s;
    }
    return notes.isEmpty() ? text : text + u'\n' + notes.join(QString());
}

} // namespace bench
