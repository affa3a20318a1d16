// Separates the user's own text in an appointment's location and subject from the plug-in's text.
#pragma once

#include "platform/runtime/Value.h"
#include "plugin/link/meetingKeys.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

// Removes every occurrence of the part from the text, first those that the separator directly follows. An
// empty part removes every separator.
void removeLocationPart(QString &text, const QString &part, QChar separator);

// The names of the rooms (resources) among the attendees of an appointment's snapshot, in their order.
[[nodiscard]] QStringList roomNames(const QVariantMap &snapshot);

// Sets the meeting's subject on an event or record whose own subject is blank. `own` is the trimmed subject
// of the event or record.
template<typename Event>
void fillEmptySubject(const Event &event, const QString &own, const QVariantMap &meetingInfo) {
    const QVariantMap apptInfo = rt::mapValue(meetingInfo.value(vl_Outlook_ApptInfo));
    const QString subject = rt::textValue(apptInfo.value(vl_ApptInfo_Subject));
    if (own.isEmpty() && !subject.isNull())
        event.setSummary(subject);
}
