#include "plugin/ui/settings/SettingsSheetModel.h"

#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlOnbehalfData.h"

void SettingsSheetModel::initFields() {
    const ContextScope context(m_apptWindowID);
    m_settings.initSettingData();
    m_settings.initWithSiteMeetingInfo();
}

void SettingsSheetModel::refresh() {
    const ContextScope context(m_apptWindowID);
    const vlSettingData::OneWrite write;
    if (m_settings.usePMI()) {
        m_settings.initWithSiteMeetingInfo();
        m_settings.setUsePMI(true);
    } else {
        m_settings.updateWithSiteDefault();
    }
}

void SettingsSheetModel::setUsePMI(bool use) {
    m_settings.setUsePMI(use);
    if (use)
        getPMIMeetingInfo();
    else
        refresh();
}

void SettingsSheetModel::getPMIMeetingInfo() {
    vlMeetingMgr::sharedInstance().getPMIMeetingInfo(vlMeetingWindows::stripOfWindowID(m_apptWindowID),
                                                     WorkflowState::StateSettingsPMI);
}

void SettingsSheetModel::setScheduleFor() {
    m_settings.setScheduleForEmail(
        isForOther() ? vlOnbehalfData::sharedInstance().onbehalfEmail(m_apptWindowID) : u""_s);
}

bool SettingsSheetModel::isForOther() const {
    return vlOnbehalfData::sharedInstance().isCurrentScheduleVelaForOther(m_apptWindowID);
}

QString SettingsSheetModel::personalMeetingNumber() const {
    return vlSettingData::getFormatRoomMeetingId(m_settings.roomMeetingId());
}

bool SettingsSheetModel::showsThirdPartyText() const {
    return m_settings.audioType() == int(vlSettingData::AudioType::ThirdParty);
}

QString SettingsSheetModel::beginThirdPartyText() {
    m_shownThirdPartyAudio = m_settings.enableThirdPartyAudio() ? m_settings.thirdPartyAudio() : QString();
    return m_shownThirdPartyAudio;
}

QVariantMap SettingsSheetModel::getSettingsData(const QString &edited) {
    const QString &text = edited.isNull() ? m_shownThirdPartyAudio : edited;
    if (!text.isNull())
        m_settings.setThirdPartyAudio(text);
    return m_settings.getSettingsData();
}
