#include "plugin/workflow/vlPACMeetingMgr.h"

#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "plugin/util/localizedString.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/appointmentText.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/workflowPorts.h"

namespace {

const QString keyUnreadableAnswer = u"SystemError"_s;
const QString keyAccountNotUsable = u"WarnMsg_PACIsDisabled"_s;
constexpr QChar numberSeparator = u',';

PACAccount chosenAccount() {
    return vlMeetingDataMgr::sharedInstance().pacAccountNo();
}

void removeAccount(QString &text, int account) {
    const vlGetPACHelper &accounts = vlGetPACHelper::sharedInstance();
    const QString numbers = accounts.pacDialInNumberWithCommaSeparator(account);
    // The text of an account without numbers is only separators: its one empty number removes them.
    for (const QString &number : numbers.split(numberSeparator))
        removeLocationPart(text, number, numberSeparator);
    removeLocationPart(text, accounts.pacMeetingID(account), numberSeparator);
}

bool isConferenceAdded() {
    return MeetingContext::atHand().state() == WorkflowState::StateAudioConference;
}

void tell(const EditorStrip *strip, const QString &key) {
    if (WorkflowAlerts *alerts = WorkflowPorts::instance().alerts)
        alerts->showAlertMessage(vlMeetingWindows::getPluginParentWindow(strip), vlLocalizedString(key));
}

} // namespace

int vlPACMeetingMgr::addPACMeeting(EditorStrip *strip, PACAccount account) {
    vlMeetingDataMgr::sharedInstance().setPACAccountNo(account);
    MeetingContext::atHand().isPACApplied = false;
    MeetingContext::atHand().usesProfile = true;
    if (vlUserProfileHelper::sharedInstance().hasUserProfile())
        executeGetPAC(strip);
    else
        vlAPIMgr::sharedInstance().getUserProfile(vlMeetingWindows::getPluginParentWindow(strip));
    return 0;
}

bool vlPACMeetingMgr::knowsTheUsersAccounts() {
    return vlGetPACHelper::sharedInstance().isOfPresentUser() &&
           !vlUserProfileHelper::sharedInstance().isAccountChanged();
}

void vlPACMeetingMgr::executeGetPAC(EditorStrip *strip) {
    if (!requestAccountsIfNeeded(strip))
        schedulePACMeeting(strip);
}

bool vlPACMeetingMgr::requestAccountsIfNeeded(const EditorStrip *strip) {
    if (knowsTheUsersAccounts())
        return false;
    vlUserProfileHelper::sharedInstance().setAccountChangedFlag(false);
    vlAPIMgr::sharedInstance().getPAC(vlMeetingWindows::getPluginParentWindow(strip),
                                      {{vl_API_Call_Para_ShowCommunicationDlg, isConferenceAdded()}});
    return true;
}

int vlPACMeetingMgr::schedulePACMeeting(EditorStrip *strip) {
    if (!strip)
        return 0;
    const vlGetPACHelper &accounts = vlGetPACHelper::sharedInstance();
    const int account = int(chosenAccount());
    const bool isHTML = accounts.supportHtmlInvitationMail(account);
    const QString text = isHTML ? accounts.htmlInvitationMail(account) : accounts.invitationMail(account);
    if (text.isEmpty()) {
        // The account stays selected but is not applied, so no later save writes its numbers.
        tell(strip, keyAccountNotUsable);
        strip->onUIChanged(StripState::NoMeeting);
    } else {
        const rt::Weak<> editor(strip->editorViewController());
        MeetingContext::atHand().isPACApplied = true;
        vlEmailBodyMgr::sharedInstance().updateMailBodyForPAC(editor.get(), text, isHTML);
        updateLocation(editor.get());
    }
    return 0;
}

int vlPACMeetingMgr::onGetPACActionFinished(const QVariantMap &data) {
    EditorStrip *strip = vlMeetingWindows::stripOfWindowID(rt::textValue(data.value(keyApptWindowID)));
    const bool isReadable = knowsTheUsersAccounts(); // else memory holds none or another user's accounts
    if (isConferenceAdded() && isReadable)
        schedulePACMeeting(strip);
    else if (isConferenceAdded())
        tell(strip, keyUnreadableAnswer);
    return 0;
}

QString vlPACMeetingMgr::getLocationWithPACAccountNo(PACAccount account) const {
    const vlGetPACHelper &accounts = vlGetPACHelper::sharedInstance();
    const QString numbers = accounts.pacDialInNumberWithCommaSeparator(int(account));
    const QString meetingID = accounts.pacMeetingID(int(account));
    return numbers.isNull() ? QString() : numbers + u", "_s + meetingID;
}

QString vlPACMeetingMgr::getNewLocationForPAC(const QString &location) const {
    const QString userText = getOLUserInputString(location);
    const QString part = getLocationWithPACAccountNo(chosenAccount());
    if (userText.isNull())
        return part;
    return part.isNull() ? userText : userText + u' ' + part;
}

void vlPACMeetingMgr::updateLocation(rt::Object *editor) {
    const vlERCalendarEventEditorViewController adapter(editor);
    const vlECCalendarEvent *event = adapter.ecCalendarEvent();
    const QString location = getNewLocationForPAC(event->location());
    if (location.isNull())
        return;
    event->setLocation(location);
    adapter.updateLocationFieldFromUI(location);
}

QString vlPACMeetingMgr::getOLUserInputString(const QString &location) const {
    if (location.isEmpty())
        return {};
    QString text = location;
    const int count = vlGetPACHelper::sharedInstance().pacCount();
    for (int account = 1; account <= count; ++account)
        removeAccount(text, account);
    return vlOLUtils::trimRLSpace(text);
}
