#include "plugin/workflow/locationText.h"

#include "platform/runtime/Value.h"
#include "plugin/link/meetingKeys.h"

namespace {
const QString resourceType = u"2"_s;
}

void removeLocationPart(QString &text, const QString &part, QChar separator) {
    if (part.isEmpty())
        return;
    text.remove(part + separator);
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
