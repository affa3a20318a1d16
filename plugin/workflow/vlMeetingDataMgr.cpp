#include "plugin/workflow/vlMeetingDataMgr.h"

#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/body/vlBodyHelper.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/util/vlMd5Utils.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlOnbehalfData.h"
#include "plugin/workflow/vlSettingData.h"
#include "plugin/workflow/workflowPorts.h"

namespace {

void replaceUnlessNull(QString &held, const QString &text) {
    if (!text.isNull())
        held = text;
}

QVariantMap loadedSettings() {
    return rt::mapValue(vlGetMeetingHelper::sharedInstance().getMeetingInfo().value(vl_Setting));
}

// The settings saved by the user. If they select the personal meeting and it is loaded, the settings of the
// personal meeting.
QVariantMap settingsOfNewMeeting() {
    const QVariantMap saved = vlSettingData::savedSettings();
    if (!rt::boolValue(saved.value(vl_Setting_IsPMI)) ||
        !vlGetMeetingHelper::sharedInstance().hasMeetingInfo())
        return saved;
    QVariantMap settings = loadedSettings();
    settings.insert(vl_Setting_IsPMI, true);
    return settings;
}

} // namespace

void vlMeetingDataMgr::setMeetingKey(const QString &key) {
    replaceUnlessNull(at().meetingKey, key);
}

void vlMeetingDataMgr::setEncodeMailBody(const QString &digest) {
    replaceUnlessNull(at().encodeMailBody, digest);
}

void vlMeetingDataMgr::setScheduleForEmail(const QString &email) {
    replaceUnlessNull(at().scheduleForEmail, email);
}

void vlMeetingDataMgr::clearSavedMeetingData() {
    at().meetingKey = u""_s;
    at().encodeMailBody = u""_s;
    at().scheduleForEmail = u""_s;
    at().pacAccountNo = PACAccount::None;
    at().savedApptInfo.clear();
}

QVariantMap vlMeetingDataMgr::getVlSchMeetingData(rt::Object *editor) const {
    QVariantMap request;
    const vlERCalendarEventEditorViewController adapter(editor);
    if (adapter.isValidConnection())
        request.insert(vl_Outlook_ApptInfo, adapter.getVlMeetingData());
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    request.insert(vl_Setting, getVlSettingsData(vlMeetingWindows::getOLAppointmentWindowID(strip)));
    if (isVelaMeeting())
        request.insert(vl_MeetingKey, at().meetingKey);
    return request;
}

QVariantMap vlMeetingDataMgr::getVlSettingsData(const QString &apptWindowID) const {
    QVariantMap settings;
    const SettingsSheets *sheets = WorkflowPorts::instance().sheets;
    if (sheets && sheets->hasSchSettingWindow(apptWindowID))
        settings = sheets->getVlSettingsData(apptWindowID);
    else if (isVelaMeeting() && vlGetMeetingHelper::sharedInstance().hasMeetingInfo())
        settings = loadedSettings();
    else
        settings = settingsOfNewMeeting();
    const vlOnbehalfData &onbehalf = vlOnbehalfData::sharedInstance();
    settings.insert(vl_Setting_ScheduleFor, onbehalf.isCurrentScheduleVelaForOther(apptWindowID)
                                                ? onbehalf.onbehalfEmail(apptWindowID)
                                                : u""_s);
    return settings;
}

QString vlMeetingDataMgr::getVlDataForOLProperty(const QVariantMap &info) const {
    const QString html = rt::textValue(info.value(vl_API_Para_InviteHtmlEmail));
    const QString invitation = html.isEmpty() ? rt::textValue(info.value(vl_ApptInfo_Body))
                                              : vlBodyHelper::sharedInstance().convertHTMLToPlainText(html);
    const std::pair<QString, QString> members[] = {
        {vl_OLProperty_MeetingKey, rt::textValue(info.value(vl_MeetingKey))},
        {vl_OLProperty_EncodeMailBody, vlMd5Utils::vlMD5Hex(invitation)},
        {vl_Meeting_JoinUrl, rt::textValue(info.value(vl_Meeting_JoinUrl))}};
    QVariantMap record;
    for (const auto &[key, text] : members) {
        if (text.isNull())
            break;
        record.insert(key, text);
    }
    return vlOLUtils::toJSONString(record);
}

QString vlMeetingDataMgr::getOldJoinUrl() const {
    const QString text = rt::textValue(at().savedApptInfo.value(vl_ApptInfo_VlOIProperty));
    return rt::textValue(vlOLUtils::toNSDictionary(text).value(vl_Meeting_JoinUrl));
}
