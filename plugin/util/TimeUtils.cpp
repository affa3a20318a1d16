#include "plugin/util/TimeUtils.h"

#include "platform/Literals.h"

namespace {

const QString dateForm = u"yyyy-MM-dd"_s;
const QString timeForm = u"HH:mm:ss"_s;
const QString textForm = u"yyyy-MM-dd HH:mm:ss"_s;
constexpr qint64 millisecondsPerSecond = 1000;

// Reads a time that the clock change skips with the offset from before the change, which moves it past the
// change by the skipped amount. The appointment is then shown a little late and not in 1970.
QDateTime afterSkippedHour(QDate day, QTime time, const QTimeZone &zone) {
    const QDateTime asUtc(day, time, Qt::UTC);
    const int offsetBefore = zone.offsetFromUtc(asUtc.addDays(-1));
    return asUtc.addSecs(-offsetBefore).toTimeZone(zone);
}

// Parses date and time separately: together the toolkit rejects them if the process's own zone skips them.
QDateTime parsed(const QString &text, const QTimeZone &zone) {
    if (text.size() != dateForm.size() + 1 + timeForm.size() || text[dateForm.size()] != u' ')
        return {};
    const QDate day = QDate::fromString(text.left(dateForm.size()), dateForm);
    const QTime time = QTime::fromString(text.mid(dateForm.size() + 1), timeForm);
    if (!day.isValid() || !time.isValid())
        return {};
    const QDateTime date(day, time, zone);
    return date.isValid() && date.time() == time ? date : afterSkippedHour(day, time, zone);
}

} // namespace

QDateTime TimeUtils::stringToDate(const QString &text) {
    return parsed(text, QTimeZone::systemTimeZone());
}

qint64 TimeUtils::dateToTimestamp(const QDateTime &date) {
    return date.isValid() ? date.toMSecsSinceEpoch() / millisecondsPerSecond : 0;
}

QString TimeUtils::stringToTimestamp(const QString &text) {
    return QString::number(dateToTimestamp(stringToDate(text)));
}

QDateTime TimeUtils::timestampToDate(qint64 seconds) {
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

QString TimeUtils::localToGMT(const QString &text, const QTimeZone &zone) {
    return dateToUTCString(parsed(text, zone.isValid() ? zone : QTimeZone::systemTimeZone()));
}

QString TimeUtils::dateToUTCString(const QDateTime &date) {
    return date.isValid() ? date.toUTC().toString(textForm) : QString();
}
