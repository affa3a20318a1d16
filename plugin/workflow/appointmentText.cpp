#include "plugin/workflow/appointmentText.h"

namespace {
const QString resourceType = u"2"_s;
}

void removeLocationPart(QString &text, const QString &part, QChar separator) {
    text.remove(part + separator);
    if (!part.isEmpty())
        text.remove(part);
}

QStringList roomNames(const QVariantMap &snapshot) {
    QStringList names;
    for (const QVariant &entry : rt::listValue(snapshot.value(vl_ApptInfo_Attendees))) {
        const QVariantMap attendee = rt::mapValue(entry);
        const QString name = rt::textValue(attendee.value(vl_ApptInfo_AttendeeName));
        if (!name.isEmpty() && rt::textValue(attendee.value(vl_ApptInfo_AttendeeType)) == resourceType)
            names.append(name);
    }
    return names;
}
