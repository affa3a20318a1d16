#include "plugin/workflow/CalendarChanges.h"

std::shared_ptr<MeetingContext> CalendarChanges::contextFor(const QString &meetingKey) {
    std::erase_if(m_changes, [&](const auto &change) { return change->meetingKey == meetingKey; });
    return m_changes.emplace_back(MeetingContext::make());
}

void CalendarChanges::finish() {
    std::erase(m_changes, MeetingContext::sharedAtHand());
}

void CalendarChanges::supersede() {
    const auto own = MeetingContext::sharedAtHand();
    std::erase_if(m_changes, [&own](const auto &change) {
        return change != own && !own->meetingKey.isEmpty() && change->meetingKey == own->meetingKey;
    });
}

void CalendarChanges::noteInEditorsThatSave(const QString &meetingKey) {
    for (const auto &context : MeetingContext::all())
        if (context->strip && context->isOperationHeld && context->hasMeeting(meetingKey))
            context->isChangedMeanwhile = true;
}
