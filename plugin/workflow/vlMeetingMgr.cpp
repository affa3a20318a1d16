#include "plugin/workflow/vlMeetingMgr.h"

#include "platform/services/Services.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/sharedObject.h"
#include "plugin/link/vlGetMeetingHelper.h"
#include "plugin/link/vlUserProfileHelper.h"
#include "plugin/workflow/savedSettings.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"

// The registration for the sheet's commit. It may outlive the services that it was made on.
class vlMeetingMgr::CommitObserver {
public:
    explicit CommitObserver(vlMeetingMgr &manager) {
        auto registered = std::make_shared<bool>(true);
        m_registered = registered;
        m_id = platform::services().notifications->addObserver(
            notify_SettingCommit, [registered, &manager](const QString &, const QVariantMap &userInfo) {
                manager.onInvokeSettingCommit(userInfo);
            });
    }
    ~CommitObserver() {
        // The id of a centre that is gone may be another observer's in the one that took its place.
        if (!m_registered.expired())
            platform::services().notifications->removeObserver(m_id);
    }
    CommitObserver(const CommitObserver &) = delete;
    CommitObserver &operator=(const CommitObserver &) = delete;

private:
    std::weak_ptr<bool> m_registered; // expires together with the centre that holds the registration
    platform::ObserverId m_id = 0;
};

vlMeetingMgr &vlMeetingMgr::sharedInstance() {
    return SharedObject<vlMeetingMgr>::get();
}

vlMeetingMgr::vlMeetingMgr()
    : m_commitObserver(std::make_unique<CommitObserver>(*this)) {}

vlMeetingMgr::~vlMeetingMgr() {
    if (LinkPorts::instance().finishReceiver == this)
        LinkPorts::instance().finishReceiver = nullptr;
    if (BodyPorts::instance().holder == this)
        BodyPorts::instance().holder = nullptr;
}

QVariantMap vlMeetingMgr::getVelaMeetingData(rt::Object *editor) const {
    QVariantMap request = vlMeetingDataMgr::sharedInstance().getVlSchMeetingData(editor);
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    const QString apptWindowID = vlMeetingWindows::getOLAppointmentWindowID(strip);
    if (!apptWindowID.isNull())
        request.insert(keyApptWindowID, apptWindowID);
    if (QWidget *window = vlMeetingWindows::windowOfEditor(editor))
        request.insert(keyEventOwnerWindow, rt::fromWidget(window));
    return request;
}

bool vlMeetingMgr::notShowSetting() const {
    return rt::boolValue(savedSettings().value(vl_Setting_NotShowMeAgain));
}

bool vlMeetingMgr::isSettingCommitOK(const QVariantMap &data) const {
    return rt::textValue(data.value(keyVLUserOperator)) == keyVLSettingCommit &&
           rt::boolValue(data.value(keyButtonClickIsOK));
}

void vlMeetingMgr::onInvokeSettingCommit(const QVariantMap &userInfo) {
    // Not the last command: with several editors open that may be another editor's.
    const QString apptWindowID = rt::textValue(userInfo.value(keyApptWindowID));
    const MeetingCommand command = m_sheetCommands.value(apptWindowID, m_vlMeetingAction);
    m_sheetCommands.remove(apptWindowID);
    onExcuteCommandFinished(command, userInfo);
}

void vlMeetingMgr::clearAllSavedData(bool dropEditor) {
    if (dropEditor)
        m_olWordMailEditor.reset();
    vlMeetingDataMgr::sharedInstance().clearSavedMeetingData();
    m_beforeChange.reset();
    constexpr bool forPMI = false;
    vlGetMeetingHelper::sharedInstance().setMeetingData({{vl_MeetingKey, QStringLiteral("")}}, forPMI);
    vlUserProfileHelper::sharedInstance().clearUserProfile();
}

void vlMeetingMgr::notifyActionResultToCalActionMgr(const QVariantMap &answer) {
    vlCalendarActionMgr::sharedInstance().setActionResultData(answer);
}

bool vlMeetingMgr::isMeetingChanged(const QVariantMap &request, const QVariantMap &loadedMeeting) const {
    return vlMeetingDataMgr::sharedInstance().isMeetingChanged(request, loadedMeeting);
}

QString vlMeetingMgr::getApptWindowIDByWindow(QWidget *window) const {
    return vlMeetingWindows::getApptWindowIDByWindow(window);
}

void vlMeetingMgr::setScheduleForEmail(const QString &email) {
    vlMeetingDataMgr::sharedInstance().setScheduleForEmail(email);
}

void vlMeetingMgr::setOLWordMailEditor(rt::Object *bodyEditor, rt::Object *editor) {
    m_olWordMailEditor = std::make_unique<vlOLWordMailEditor>(bodyEditor);
    m_bodyEditorHasOwner = editor != nullptr;
    std::erase_if(m_knownBodyEditors, [editor](const KnownBodyEditor &known) {
        return !known.editor || !known.bodyEditor || known.editor.get() == editor;
    });
    if (editor && bodyEditor)
        m_knownBodyEditors.push_back(
            {rt::Weak<>(editor), rt::Weak<>(bodyEditor), std::make_unique<vlOLWordMailEditor>(bodyEditor)});
}

vlOLWordMailEditor *vlMeetingMgr::bodyEditorOf(const rt::Object *editor) const {
    for (const KnownBodyEditor &known : m_knownBodyEditors)
        if (editor && known.editor.get() == editor)
            return known.adapter.get();
    return m_bodyEditorHasOwner ? nullptr : m_olWordMailEditor.get();
}

QString vlMeetingMgr::getMailBodyWithVelaContentFor1520(const QString &body, const QString &emailBody,
                                                        bool isHTMLBody) const {
    return vlEmailBodyMgr::sharedInstance().getMailBodyContentWithVela(body, emailBody, isHTMLBody);
}

QString vlMeetingMgr::encodeMailBody() const {
    return vlMeetingDataMgr::sharedInstance().encodeMailBody();
}
