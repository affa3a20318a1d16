#include "standin/mailhost/store/SampleCalendar.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/Zones.h"

#include <QFile>
#include <QRegularExpression>

static void initializeResource() { // the macro does not work inside a namespace
    Q_INIT_RESOURCE(sample);
}

namespace mailhost {

namespace {
// The week of the resource, and the zone that stands for the local one.
const QDate sampleMonday(2026, 3, 2);
const QString sampleZone = u"Europe/London"_s;
} // namespace

QByteArray sampleCalendar(const QDate &week) {
    initializeResource();
    QFile file(u":/store/sample.ics"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QDate day = week.isValid() ? week : QDate::currentDate();
    const qint64 distance = sampleMonday.daysTo(day.addDays(1 - day.dayOfWeek()));
    const QString sample = QString::fromUtf8(file.readAll()).replace(u'\n', u"\r\n"_s);
    static const QRegularExpression dates(u"\\b2026[0-9]{4}(?=T|\\b)"_s);
    const QString format = u"yyyyMMdd"_s;
    QString text;
    qsizetype end = 0;
    for (auto found = dates.globalMatch(sample); found.hasNext();) {
        const auto date = found.next();
        text += sample.mid(end, date.capturedStart() - end) +
                QDate::fromString(date.captured(), format).addDays(distance).toString(format);
        end = date.capturedEnd();
    }
    text += sample.mid(end);
    QString local = QString::fromUtf8(QTimeZone::systemTimeZoneId());
    if (!systemZoneForTzid(local).isValid())
        local = sampleZone;
    Document document;
    if (parseDocument(text.replace(sampleZone, local).toUtf8(), &document).failure != ParseFailure::None)
        return {};
    ZoneTable zones(*document.calendars().front());
    for (const QString &zone : {local, u"America/New_York"_s})
        zones.ensureComponent(zone);
    return document.text();
}

} // namespace mailhost
