// Scheduling for other people: one who has granted it, one who has not, and a send that is refused because
// From has changed.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Parts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMessageBox>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

const QString self = u"ada@parlo.example"_s;
const QString principal = u"kim@parlo.example"_s;  // has granted it
const QString stranger = u"robin@parlo.example"_s; // has not
const QString guest = u"guest@parlo.example"_s;
const bool schedulesForOthers = QLatin1String(PARLO_EDITION) == QLatin1String("Vela");

class OnBehalfWalk {
public:
    explicit OnBehalfWalk(Session &session)
        : m_session(session)
        , m_report(session.report()) {}
    bool report();

private:
    bool audioConference();
    bool forThePrincipal();
    bool fromIsSwitchedBack();
    bool sendIsRefused();
    bool removedFromTheAlert();
    bool forSomeoneElse();
    bool choosesFrom(const QString &email) const;
    [[nodiscard]] QMessageBox *alert() const {
        return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    }
    // The strip has a button of that name too.
    [[nodiscard]] QAbstractButton *removeInAlert() const;
    [[nodiscard]] QString scheduledFor(const QString &prefix) const;

    Session &m_session;
    Report &m_report;
};

QAbstractButton *OnBehalfWalk::removeInAlert() const {
    if (alert())
        for (QAbstractButton *button : alert()->findChildren<QAbstractButton *>())
            if (button->text().remove(u'&') == removeInAlertButton())
                return button;
    return nullptr;
}

bool OnBehalfWalk::choosesFrom(const QString &email) const {
    auto *from = m_session.control<QComboBox>(controls::fromChooser);
    const int index = from ? from->findData(email) : -1;
    if (index < 0)
        return false;
    from->setFocus();
    for (int i = 0; i < from->count(); ++i) // from the first one on, as by keys
        press(m_session.editor(), Qt::Key_Up);
    for (int i = 0; i < index; ++i)
        press(m_session.editor(), Qt::Key_Down);
    Report::settle();
    return from->currentIndex() == index;
}

// Of the first request that begins with the sub-command.
QString OnBehalfWalk::scheduledFor(const QString &prefix) const {
    for (const Message &message : m_report.sinceMark()) {
        if (!message.sent || message.actionId != meetingAction || !message.content.startsWith(prefix))
            continue;
        const QByteArray json = message.content.mid(message.content.indexOf(u'{')).toUtf8();
        const QJsonObject setting = QJsonDocument::fromJson(json).object().value(u"setting"_s).toObject();
        return setting.value(u"scheduleFor"_s).toString();
    }
    return {};
}

bool OnBehalfWalk::audioConference() {
    if (!m_session.openNew(u"By phone for Kim"_s) || !choosesFrom(principal))
        return m_report.step(false, u"From offers the people whose calendars are managed"_s);
    click(m_session.stripButton(audioButton()));
    press(QApplication::activePopupWidget(), Qt::Key_Down);
    press(QApplication::activePopupWidget(), Qt::Key_Return);
    const bool said = Report::waitFor([this] { return alert() != nullptr; });
    m_report.picture(alert(), u"alert-audio-for-others"_s);
    press(alert(), Qt::Key_Escape);
    Report::waitFor([] { return QApplication::activeModalWidget() == nullptr; });
    return m_report.step(said && m_session.discardEditor(),
                         u"an audio conference is not added to another person's appointment"_s);
}

bool OnBehalfWalk::forThePrincipal() {
    if (!m_session.openNew(u"Meeting for Kim"_s, guest) || !choosesFrom(principal) ||
        !m_session.askForMeeting())
        return m_report.step(false, u"a meeting is asked for in Kim's name"_s);
    const auto *banner = qobject_cast<QLabel *>(shown(u"_textOnbehalfInfo"_s));
    const bool named = banner && banner->text().contains(u"Kim Principal"_s);
    m_report.picture(QApplication::activeModalWidget(), u"settings-sheet-for-others"_s);
    click(shownButton(continueButton()));
    const bool attached = m_session.isAttached();
    Report::settle();
    m_report.picture(m_session.editor(), u"editor-for-others"_s);
    return m_report.step(named && attached && scheduledFor(schedulePrefix) == principal,
                         u"the sheet says for whom the meeting is scheduled, and so does the request"_s);
}

bool OnBehalfWalk::fromIsSwitchedBack() {
    const auto *settings = qobject_cast<QAbstractButton *>(m_session.stripButton(settingsButton()));
    const bool enabledBefore = settings && settings->isEnabled();
    const bool switched = choosesFrom(self);
    m_report.picture(m_session.strip(), u"strip-settings-disabled"_s);
    const bool disabled = settings && !settings->isEnabled() && !settings->toolTip().isEmpty();
    const bool back = choosesFrom(principal) && settings && settings->isEnabled();
    return m_report.step(enabledBefore && switched && disabled && back && choosesFrom(self),
                         u"with another From the settings cannot be changed, and a tip says why"_s);
}

bool OnBehalfWalk::sendIsRefused() {
    const qsizetype sent = m_session.sentMessages().size();
    click(shown(controls::sendButton));
    const bool said = Report::waitFor([this] { return alert() != nullptr; });
    m_report.picture(alert(), u"alert-other-organizer"_s);
    return m_report.step(said && removeInAlert() && m_session.sentMessages().size() == sent &&
                             m_session.editor(),
                         u"the send is refused: the meeting was made for another organizer"_s);
}

bool OnBehalfWalk::removedFromTheAlert() {
    m_report.mark();
    const qsizetype sent = m_session.sentMessages().size();
    click(removeInAlert());
    const bool removed = Report::waitFor([this] { return m_session.stripButton(addButton()) != nullptr; });
    Report::settle();
    click(shown(controls::sendButton));
    const bool gone = Report::waitFor([this] { return !m_session.editor(); });
    Report::settle(0.1);
    return m_report.step(removed && gone && m_report.sentSinceMark(meetingAction, deletePrefix) == 1 &&
                             m_session.sentMessages().size() == sent + 1,
                         u"removed from the alert, and sent without a meeting"_s);
}

bool OnBehalfWalk::forSomeoneElse() {
    if (!m_session.openNew(u"Meeting for Robin"_s, guest) || !choosesFrom(stranger) ||
        !m_session.askForMeeting())
        return m_report.step(false, u"a meeting is asked for in Robin's name"_s);
    const QWidget *banner = shown(u"_textOnbehalfInfo"_s);
    click(shownButton(continueButton()));
    const bool attached = m_session.isAttached();
    const QString whom = scheduledFor(schedulePrefix);
    const qsizetype sent = m_session.sentMessages().size();
    Report::settle();
    click(shown(controls::sendButton));
    const bool gone = Report::waitFor([this] { return !m_session.editor(); });
    Report::settle(0.1);
    return m_report.step(!banner && attached && whom.isEmpty() && gone &&
                             m_session.sentMessages().size() == sent + 1,
                         u"for a person who has not granted it the meeting is the user's own, and it "
                         "is sent"_s);
}

bool OnBehalfWalk::report() {
    RunningClient::tell(u"user u-1001"_s);
    RunningClient::tell(u"accounts two"_s);
    RunningClient::tell(u"bosses "_s + principal);
    Report::settle(0.2);
    if (!schedulesForOthers) {
        m_report.comment(u"this edition schedules for nobody else: on behalf is not walked"_s);
        return true;
    }
    return audioConference() && forThePrincipal() && fromIsSwitchedBack() && sendIsRefused() &&
           removedFromTheAlert() && forSomeoneElse();
}

} // namespace

bool runOnBehalf(Session &session) {
    return OnBehalfWalk(session).report();
}

} // namespace walkthrough
