// Schedules for other people: for one who has granted it and one who has not; and sends after From has
// changed, which is refused.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Parts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QJsonDocument>
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
const QString banner = u"_textOnbehalfInfo"_s;

// Searches only the alert, because the strip has a button of that name too.
QAbstractButton *removeInAlert() {
    return alert() ? shownButton(buttons::removeInAlert, alert()) : nullptr;
}

bool chooseFrom(Session &walk, const QString &email) {
    auto *from = walk.control<QComboBox>(controls::fromChooser);
    const int index = from ? from->findData(email) : -1;
    if (index < 0)
        return false;
    from->setFocus();
    for (int i = 0; i < from->count(); ++i) // from the first one on, as by keys
        press(walk.editor(), Qt::Key_Up);
    for (int i = 0; i < index; ++i)
        press(walk.editor(), Qt::Key_Down);
    settle();
    return from->currentIndex() == index;
}

// The person for whom the first schedule request since the mark was made.
QString scheduledFor(Session &walk) {
    const QString content = walk.sentContents(requests::schedule).value(0);
    const QByteArray json = content.mid(content.indexOf(u'{')).toUtf8();
    const QJsonObject setting = QJsonDocument::fromJson(json).object().value(u"setting"_s).toObject();
    return setting.value(u"scheduleFor"_s).toString();
}

void refuseAudioConference(Session &walk) {
    for (const QString &order : {u"user u-1001"_s, u"accounts two"_s, u"bosses "_s + principal})
        walk.tell(order);
    const bool said = walk.openNew(u"By phone for Kim"_s) && chooseFrom(walk, principal) &&
                      choose(openMenu(walk.stripButton(buttons::audio)), 0) &&
                      walk.isAlerted(u"alert-audio-for-others"_s);
    walk.step(said && walk.discardEditor(),
              u"an audio conference is not added to another person's appointment"_s);
}

void scheduleForPrincipal(Session &walk) {
    const bool chosen = walk.openNew(u"Meeting for Kim"_s, guest) && chooseFrom(walk, principal);
    walk.askForMeeting();
    const auto *label = qobject_cast<QLabel *>(shown(banner));
    const bool named = label && label->text().contains(u"Kim Principal"_s);
    walk.picture(QApplication::activeModalWidget(), u"settings-sheet-for-others"_s);
    const bool attached = walk.confirmSheet();
    walk.picture(walk.editor(), u"editor-for-others"_s);
    walk.step(chosen && named && attached && scheduledFor(walk) == principal,
              u"the sheet says for whom the meeting is scheduled, and so does the request"_s);
}

void switchFromBack(Session &walk) {
    const QAbstractButton *settings = walk.stripButton(buttons::settings);
    const bool enabledBefore = settings && settings->isEnabled();
    const bool switched = chooseFrom(walk, self);
    walk.picture(walk.strip(), u"strip-settings-disabled"_s);
    const bool disabled = enabledBefore && !settings->isEnabled() && !settings->toolTip().isEmpty();
    const bool back = chooseFrom(walk, principal) && disabled && settings->isEnabled();
    walk.step(switched && back && chooseFrom(walk, self),
              u"with another From the settings cannot be changed, and a tip says why"_s);
}

void refuseToSend(Session &walk) {
    const qsizetype mails = walk.mailsInOutbox();
    click(shown(controls::sendButton));
    const bool said = waitForAlert();
    walk.picture(alert(), u"alert-other-organizer"_s);
    walk.step(said && removeInAlert() && walk.mailsInOutbox() == mails && walk.editor(),
              u"the send is refused: the meeting was made for another organizer"_s);
    walk.mark();
    click(removeInAlert());
    const bool removed = walk.waitForStrip(buttons::add);
    settle();
    walk.step(walk.send() && removed && walk.sent(requests::deletion) == 1 &&
                  walk.mailsInOutbox() == mails + 1,
              u"removed from the alert, and sent without a meeting"_s);
}

void scheduleForStranger(Session &walk) {
    const bool chosen = walk.openNew(u"Meeting for Robin"_s, guest) && chooseFrom(walk, stranger);
    walk.askForMeeting();
    const bool named = shown(banner) != nullptr;
    const bool attached = walk.confirmSheet();
    const QString whom = scheduledFor(walk);
    const qsizetype mails = walk.mailsInOutbox();
    settle();
    walk.step(walk.send() && chosen && !named && attached && whom.isEmpty() &&
                  walk.mailsInOutbox() == mails + 1,
              u"for a person who has not granted it the meeting is the "
              "user's own, and it is sent"_s);
}

} // namespace

// One edition cannot schedule for others.
void scheduleForOthers(Session &walk) {
    if (QLatin1String(PARLO_EDITION) != QLatin1String("Vela"))
        return;
    refuseAudioConference(walk);
    scheduleForPrincipal(walk);
    switchFromBack(walk);
    refuseToSend(walk);
    scheduleForStranger(walk);
}

} // namespace walkthrough
