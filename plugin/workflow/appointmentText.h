// What is the user's in an appointment's location and subject, and what is not.
#pragma once

#include "platform/runtime/Value.h"
#include "plugin/link/meetingKeys.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

// Takes every occurrence of the part out of the text, first those with the separator right behind them. An
// empty part takes every separator out.
void removeLocationPart(QString &text, const QString &part, QChar separator);

// The names of the rooms (resources) among the attendees of an appointment's snapshot, in their order.
[[nodiscard]] QStringList roomNames(const QVariantMap &snapshot);

// Gives an event or a record whose own subject is blank that of the meeting. `own` is its subject, trimmed.
template<typename Event>
void fillEmptySubject(const Event &event, const QString &own, const QVariantMap &meetingInfo) {
    const QVariantMap apptInfo = rt::mapValue(meetingInfo.value(vl_Outlook_ApptInfo));
    const QString subject = rt::textValue(apptInfo.value(vl_ApptInfo_Subject));
    if (own.isEmpty() && !subject.isNull())
        event.setSummary(subject);
}
