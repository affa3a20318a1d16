// Schedules for other people: for one who has granted it and one who has not; and sends after From has
// changed, which is refused.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Parts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

const QString self = u"ada@parlo.example"_s;
const QString principal = u"kim@parlo.example"_s;  // has granted it
const QString stranger = u"robin@parlo.example"_s; // has not
const QString guest = u"guest@parlo.example"_s;
const bool schedulesForOthers = QLatin1String(PARLO_EDITION) == QLatin1String("Vela");

// Searches only the alert, because the strip has a button of that name too.
QAbstractButton *removeInAlert() {
    if (alert())
        for (QAbstractButton *button : alert()->findChildren<QAbstractButton *>())
            if (button->text().remove(u'&') == ButtonText::removeInAlert())
                return button;
    return nullptr;
}

bool chooseFrom(const Session &session, const QString &email) {
    auto *from = session.control<QComboBox>(controls::fromChooser);
    const int index = from ? from->findData(email) : -1;
    if (index < 0)
        return false;
    from->setFocus();
    for (int i = 0; i < from->count(); ++i) // from the first one on, as by keys
        press(session.editor(), Qt::Key_Up);
    for (int i = 0; i < index; ++i)
        press(session.editor(), Qt::Key_Down);
    Report::settle();
    return from->currentIndex() == index;
}

// The person for whom the first schedule request since the mark was made.
QString scheduledFor(const Session &session) {
    for (const Message &message : session.report().sinceMark()) {
        if (!message.sent || message.actionId != meetingAction || !message.content.startsWith(schedulePrefix))
            continue;
        const QByteArray json = message.content.mid(message.content.indexOf(u'{')).toUtf8();
        const QJsonObject setting = QJsonDocument::fromJson(json).object().value(u"setting"_s).toObject();
        return setting.value(u"scheduleFor"_s).toString();
    }
    return {};
}

bool audioConference(Session &session) {
    RunningClient::tell(u"user u-1001"_s);
    RunningClient::tell(u"accounts two"_s);
    RunningClient::tell(u"bosses "_s + principal);
    Report::settle(0.2);
    if (!session.openNew(u"By phone for Kim"_s) || !chooseFrom(session, principal))
        return session.step(false, u"From offers the people whose calendars are managed"_s);
    const bool said = choose(openMenu(session.stripButton(ButtonText::audio())), 0) && waitForAlert();
    session.picture(alert(), u"alert-audio-for-others"_s);
    dismissModal();
    return session.step(said && session.discardEditor(),
                        u"an audio conference is not added to another person's appointment"_s);
}

bool forThePrincipal(Session &session) {
    if (!session.openNew(u"Meeting for Kim"_s, guest) || !chooseFrom(session, principal) ||
        !session.askForMeeting())
        return session.step(false, u"a meeting is asked for in Kim's name"_s);
    const auto *banner = qobject_cast<QLabel *>(shown(u"_textOnbehalfInfo"_s));
    const bool named = banner && banner->text().contains(u"Kim Principal"_s);
    session.picture(QApplication::activeModalWidget(), u"settings-sheet-for-others"_s);
    const bool attached = session.confirmSheet();
    session.picture(session.editor(), u"editor-for-others"_s);
    return session.step(named && attached && scheduledFor(session) == principal,
                        u"the sheet says for whom the meeting is scheduled, and so does the request"_s);
}

bool switchFromBack(Session &session) {
    const auto *settings = qobject_cast<QAbstractButton *>(session.stripButton(ButtonText::settings()));
    const bool enabledBefore = settings && settings->isEnabled();
    const bool switched = chooseFrom(session, self);
    session.picture(session.strip(), u"strip-settings-disabled"_s);
    const bool disabled = settings && !settings->isEnabled() && !settings->toolTip().isEmpty();
    const bool back = chooseFrom(session, principal) && settings && settings->isEnabled();
    return session.step(enabledBefore && switched && disabled && back && chooseFrom(session, self),
                        u"with another From the settings cannot be changed, and a tip says why"_s);
}

bool sendIsRefused(Session &session) {
    const qsizetype sent = session.sentMessages().size();
    click(shown(controls::sendButton));
    const bool said = waitForAlert();
    session.picture(alert(), u"alert-other-organizer"_s);
    return session.step(said && removeInAlert() && session.sentMessages().size() == sent && session.editor(),
                        u"the send is refused: the meeting was made for another organizer"_s);
}

bool removeFromTheAlert(Session &session) {
    session.report().mark();
    const qsizetype sent = session.sentMessages().size();
    click(removeInAlert());
    const bool removed = session.waitForStrip(ButtonText::add());
    Report::settle();
    return session.step(session.send() && removed && session.sent(meetingAction, deletePrefix) == 1 &&
                            session.sentMessages().size() == sent + 1,
                        u"removed from the alert, and sent without a meeting"_s);
}

bool forSomeoneElse(Session &session) {
    if (!session.openNew(u"Meeting for Robin"_s, guest) || !chooseFrom(session, stranger) ||
        !session.askForMeeting())
        return session.step(false, u"a meeting is asked for in Robin's name"_s);
    const QWidget *banner = shown(u"_textOnbehalfInfo"_s);
    const bool attached = session.confirmSheet();
    const QString whom = scheduledFor(session);
    const qsizetype sent = session.sentMessages().size();
    Report::settle();
    return session.step(session.send() && !banner && attached && whom.isEmpty() &&
                            session.sentMessages().size() == sent + 1,
                        u"for a person who has not granted it the meeting is the "
                        u"user's own, and it is sent"_s);
}

} // namespace

// One edition cannot schedule for others.
Part onBehalfPart() {
    if (!schedulesForOthers)
        return {"on behalf", {}};
    return {"on behalf",
            {audioConference, forThePrincipal, switchFromBack, sendIsRefused, removeFromTheAlert,
             forSomeoneElse}};
}

} // namespace walkthrough
