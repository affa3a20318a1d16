// Scheduling for other people: one who has granted it, one who has not, and a send that is refused because
// From has changed.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Road.h"

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

const QString self = QStringLiteral("ada@parlo.example");
const QString principal = QStringLiteral("kim@parlo.example");  // has granted it
const QString stranger = QStringLiteral("robin@parlo.example"); // has not
const QString guest = QStringLiteral("guest@parlo.example");
const bool schedulesForOthers = QLatin1String(PARLO_EDITION) == QLatin1String("Vela");

class OnBehalfWalk {
public:
    explicit OnBehalfWalk(Road &road)
        : m_road(road)
        , m_walk(road.walk()) {}
    bool walk();

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

    Road &m_road;
    Walk &m_walk;
};

QAbstractButton *OnBehalfWalk::removeInAlert() const {
    if (alert())
        for (QAbstractButton *button : alert()->findChildren<QAbstractButton *>())
            if (button->text().remove(u'&') == removeInAlertButton())
                return button;
    return nullptr;
}

bool OnBehalfWalk::choosesFrom(const QString &email) const {
    auto *from = m_road.control<QComboBox>(controls::fromChooser);
    const int index = from ? from->findData(email) : -1;
    if (index < 0)
        return false;
    from->setFocus();
    for (int i = 0; i < from->count(); ++i) // from the first one on, as by keys
        press(m_road.editor(), Qt::Key_Up);
    for (int i = 0; i < index; ++i)
        press(m_road.editor(), Qt::Key_Down);
    Walk::settle();
    return from->currentIndex() == index;
}

// Of the first request that begins with the sub-command.
QString OnBehalfWalk::scheduledFor(const QString &prefix) const {
    for (const Message &message : m_walk.sinceMark()) {
        if (!message.sent || message.actionId != meetingAction || !message.content.startsWith(prefix))
            continue;
        const QByteArray json = message.content.mid(message.content.indexOf(u'{')).toUtf8();
        const QJsonObject setting =
            QJsonDocument::fromJson(json).object().value(QStringLiteral("setting")).toObject();
        return setting.value(QStringLiteral("scheduleFor")).toString();
    }
    return {};
}

bool OnBehalfWalk::audioConference() {
    if (!m_road.openNew(QStringLiteral("By phone for Kim")) || !choosesFrom(principal))
        return m_walk.step(false, QStringLiteral("From offers the people whose calendars are managed"));
    click(m_road.stripButton(audioButton()));
    press(QApplication::activePopupWidget(), Qt::Key_Down);
    press(QApplication::activePopupWidget(), Qt::Key_Return);
    const bool said = Walk::waitFor([this] { return alert() != nullptr; });
    m_walk.picture(alert(), QStringLiteral("alert-audio-for-others"));
    press(alert(), Qt::Key_Escape);
    Walk::waitFor([] { return QApplication::activeModalWidget() == nullptr; });
    return m_walk.step(said && m_road.discardEditor(),
                       QStringLiteral("an audio conference is not added to another person's appointment"));
}

bool OnBehalfWalk::forThePrincipal() {
    if (!m_road.openNew(QStringLiteral("Meeting for Kim"), guest) || !choosesFrom(principal) ||
        !m_road.askForMeeting())
        return m_walk.step(false, QStringLiteral("a meeting is asked for in Kim's name"));
    const auto *banner = qobject_cast<QLabel *>(shown(QStringLiteral("_textOnbehalfInfo")));
    const bool named = banner && banner->text().contains(QStringLiteral("Kim Principal"));
    m_walk.picture(QApplication::activeModalWidget(), QStringLiteral("settings-sheet-for-others"));
    click(shownButton(continueButton()));
    const bool attached = m_road.isAttached();
    Walk::settle();
    m_walk.picture(m_road.editor(), QStringLiteral("editor-for-others"));
    return m_walk.step(
        named && attached && scheduledFor(schedulePrefix) == principal,
        QStringLiteral("the sheet says for whom the meeting is scheduled, and so does the request"));
}

bool OnBehalfWalk::fromIsSwitchedBack() {
    const auto *settings = qobject_cast<QAbstractButton *>(m_road.stripButton(settingsButton()));
    const bool enabledBefore = settings && settings->isEnabled();
    const bool switched = choosesFrom(self);
    m_walk.picture(m_road.strip(), QStringLiteral("strip-settings-disabled"));
    const bool disabled = settings && !settings->isEnabled() && !settings->toolTip().isEmpty();
    const bool back = choosesFrom(principal) && settings && settings->isEnabled();
    return m_walk.step(
        enabledBefore && switched && disabled && back && choosesFrom(self),
        QStringLiteral("with another From the settings cannot be changed, and a tip says why"));
}

bool OnBehalfWalk::sendIsRefused() {
    const qsizetype sent = m_road.sentMessages().size();
    click(shown(controls::sendButton));
    const bool said = Walk::waitFor([this] { return alert() != nullptr; });
    m_walk.picture(alert(), QStringLiteral("alert-other-organizer"));
    return m_walk.step(said && removeInAlert() && m_road.sentMessages().size() == sent && m_road.editor(),
                       QStringLiteral("the send is refused: the meeting was made for another organizer"));
}

bool OnBehalfWalk::removedFromTheAlert() {
    m_walk.mark();
    const qsizetype sent = m_road.sentMessages().size();
    click(removeInAlert());
    const bool removed = Walk::waitFor([this] { return m_road.stripButton(addButton()) != nullptr; });
    Walk::settle();
    click(shown(controls::sendButton));
    const bool gone = Walk::waitFor([this] { return !m_road.editor(); });
    Walk::settle(0.1);
    return m_walk.step(removed && gone && m_walk.sentSinceMark(meetingAction, deletePrefix) == 1 &&
                           m_road.sentMessages().size() == sent + 1,
                       QStringLiteral("removed from the alert, and sent without a meeting"));
}

bool OnBehalfWalk::forSomeoneElse() {
    if (!m_road.openNew(QStringLiteral("Meeting for Robin"), guest) || !choosesFrom(stranger) ||
        !m_road.askForMeeting())
        return m_walk.step(false, QStringLiteral("a meeting is asked for in Robin's name"));
    const QWidget *banner = shown(QStringLiteral("_textOnbehalfInfo"));
    click(shownButton(continueButton()));
    const bool attached = m_road.isAttached();
    const QString whom = scheduledFor(schedulePrefix);
    const qsizetype sent = m_road.sentMessages().size();
    Walk::settle();
    click(shown(controls::sendButton));
    const bool gone = Walk::waitFor([this] { return !m_road.editor(); });
    Walk::settle(0.1);
    return m_walk.step(
        !banner && attached && whom.isEmpty() && gone && m_road.sentMessages().size() == sent + 1,
        QStringLiteral("for a person who has not granted it the meeting is the user's own, and it "
                       "is sent"));
}

bool OnBehalfWalk::walk() {
    RunningClient::tell(QStringLiteral("user u-1001"));
    RunningClient::tell(QStringLiteral("accounts two"));
    RunningClient::tell(QStringLiteral("bosses ") + principal);
    Walk::settle(0.2);
    if (!schedulesForOthers) {
        m_walk.comment(QStringLiteral("this edition schedules for nobody else: on behalf is not walked"));
        return true;
    }
    return audioConference() && forThePrincipal() && fromIsSwitchedBack() && sendIsRefused() &&
           removedFromTheAlert() && forSomeoneElse();
}

} // namespace

bool walkOnBehalf(Road &road) {
    return OnBehalfWalk(road).walk();
}

} // namespace walkthrough
