// Writes the meeting into the appointment: body, stored record, subject and location.
#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/body/vlBodyHelper.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/util/vlMd5Utils.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/appointmentText.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"

namespace {

constexpr QChar locationSeparator = u';';

// The editor's event; nullptr if the host has deleted it or the editor.
vlECCalendarEvent *eventOf(const vlERCalendarEventEditorViewController &editor) {
    vlECCalendarEvent *event = editor.ecCalendarEvent();
    return event->isValidConnection() ? event : nullptr;
}

// The text of the location field if the editor has one, else the event's location.
QString shownLocation(const vlERCalendarEventEditorViewController &editor) {
    const QString field = editor.getLocationFromUI();
    return field.isNull() ? editor.ecCalendarEvent()->location() : field;
}

void setLocationEverywhere(const vlERCalendarEventEditorViewController &editor, const QString &location) {
    editor.ecCalendarEvent()->setLocation(location);
    editor.updateLocationFieldFromUI(location);
}

// The pending write-back of the current appointment; made on first use.
PendingWriteBack &writeBack() {
    std::optional<PendingWriteBack> &pending = MeetingContext::atHand().pendingWriteBack;
    return pending ? *pending : pending.emplace();
}

void removeJoinURLs(QString &text, const QString &oldURL, const QString &newURL) {
    // One URL may be a prefix of the other: the longer one is removed first, so that no rest of it stays.
    const bool oldFirst = oldURL.isEmpty() || oldURL.contains(newURL);
    for (const QString &url : oldFirst ? QStringList{oldURL, newURL} : QStringList{newURL, oldURL})
        if (!url.isEmpty())
            removeLocationPart(text, url, locationSeparator);
}

} // namespace

PendingWriteBack vlMeetingMgr::pending() {
    return MeetingContext::atHand().pendingWriteBack.value_or(PendingWriteBack());
}

void vlMeetingMgr::setOLNewBody(const QString &html) {
    writeBack().olNewBody = html;
}

QString vlMeetingMgr::getEncodeMail() const {
    const vlGetMeetingHelper &meeting = vlGetMeetingHelper::sharedInstance();
    return vlMd5Utils::vlMD5Hex(
        meeting.supportHtmlEmail()
            ? vlBodyHelper::sharedInstance().convertHTMLToPlainText(meeting.getInviteHtmlEmail())
            : meeting.getInviteEmail());
}

void vlMeetingMgr::updateMailBodyForSchedule(rt::Object *editor) {
    const vlGetMeetingHelper &meeting = vlGetMeetingHelper::sharedInstance();
    const bool isHTML = meeting.supportHtmlEmail();
    const QString invitation = isHTML ? meeting.getInviteHtmlEmail() : meeting.getInviteEmail();
    constexpr bool isDelete = false;
    vlEmailBodyMgr::sharedInstance().updateMailBody(editor, invitation, isDelete, isHTML);
}

void vlMeetingMgr::updateVlKeyInfoToAppointment(rt::Object *editor, const QVariantMap &info, bool commit) {
    const vlERCalendarEventEditorViewController adapter(editor);
    const vlECCalendarEvent *event = eventOf(adapter);
    if (!event)
        return;
    vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    const QVariantMap former = vlOLUtils::toNSDictionary(event->olmUCCapabilities());
    if (commit) {
        const QString record = store.getVlDataForOLProperty(info);
        store.setEncodeMailBody(getEncodeMail());
        adapter.saveVlDataToOLProperty(record);
    }
    // Includes unsaved input. A subject typed by the user is never replaced: the client may have only a
    // shortened copy of it.
    const QString own = rt::textValue(event->getOneMergedItem(olItem_summary));
    fillEmptySubject(*event, vlOLUtils::trimAllSpace(own), info);
    writeLocation(adapter, rt::textValue(former.value(vl_Meeting_JoinUrl)),
                  rt::textValue(info.value(vl_Meeting_JoinUrl)));
    const QString urlInRecord = store.getOldJoinUrl();
    if (!urlInRecord.isNull())
        writeBack().joinURLFromProperty = urlInRecord;
}

void vlMeetingMgr::writeLocation(const vlERCalendarEventEditorViewController &editor,
                                 const QString &formerURL, const QString &joinURL) {
    const QString userText = getOLUserInputLocation(editor, oldJoinURL(editor, formerURL), joinURL);
    PendingWriteBack &pending = writeBack();
    pending.joinURL = joinURL;
    const QString meetingPart = getVlLocation(*editor.ecCalendarEvent());
    if (meetingPart.isNull())
        return;
    pending.vlLocation = meetingPart;
    pending.olNewLocation = userText.isEmpty() ? meetingPart : userText + u' ' + meetingPart;
    setLocationEverywhere(editor, QString(pending.olNewLocation));
}

// The field shows the URL written last; the host's stored location has the URL in the record. Both may be
// unknown after the appointment was stored; then the URL of the record that is about to be replaced is used.
QString vlMeetingMgr::oldJoinURL(const vlERCalendarEventEditorViewController &editor,
                                 const QString &formerURL) const {
    QStringList candidates{getJoinURL(), vlMeetingDataMgr::sharedInstance().getOldJoinUrl()};
    if (editor.getLocationFromUI().isNull())
        candidates.swapItemsAt(0, 1);
    candidates.removeAll(QString());
    const QString known = candidates.value(0);
    const QString shown = shownLocation(editor);
    // One URL may be a prefix of the other: the longer one that the location shows has to be removed.
    const bool isFormerShown = shown.contains(formerURL);
    const bool isLonger = formerURL.size() > known.size() || !shown.contains(known);
    return isFormerShown && isLonger ? formerURL : known;
}

QString vlMeetingMgr::getOLUserInputLocation(const vlERCalendarEventEditorViewController &editor,
                                             const QString &oldJoinURL, const QString &joinURL) const {
    if (joinURL.isNull())
        return {};
    QString text = vlOLUtils::trimRLSpace(shownLocation(editor));
    if (text.isEmpty())
        return text;
    removeJoinURLs(text, oldJoinURL, joinURL);
    const vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    for (const QString &room : roomNames(store.getSavedApptInfo()) + roomNames(editor.getVlMeetingData()))
        removeLocationPart(text, room, locationSeparator);
    return vlOLUtils::trimRLSpace(text);
}

QString vlMeetingMgr::getVlLocation(const vlECCalendarEvent &event) const {
    const QString joinURL = getJoinURL();
    if (joinURL.isNull())
        return {};
    const QStringList rooms = roomNames(event.getVlMeetingData());
    return rooms.isEmpty() ? joinURL : joinURL + u' ' + rooms.join(u"; "_s);
}

void vlMeetingMgr::updateVlMeetingInfoToAppointmentForDelete(rt::Object *editor, const QVariantMap &answer) {
    const vlERCalendarEventEditorViewController adapter(editor);
    if (!eventOf(adapter))
        return;
    constexpr bool isDelete = true;
    constexpr bool isHTML = false;
    vlEmailBodyMgr::sharedInstance().updateMailBody(
        editor, rt::textValue(answer.value(vl_API_Para_InvitationEmail)), isDelete, isHTML);
    adapter.saveVlDataToOLProperty(u""_s);
    writeBack().needClearLocation = true;
    setLocationEverywhere(adapter, u""_s);
}
