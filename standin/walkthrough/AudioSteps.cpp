// Audio conferences: the first account, then the second in the same appointment, one that is switched off,
// one with gaps in its numbers, and another user.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Parts.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTextEdit>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

constexpr quint32 accountsAction = 9;
constexpr quint32 profileAction = 6;

// The exact texts that the client's first and second account add to a location.
const QString firstPart =
    u"+1 800 555 0111 (US Toll Free), +1 415 555 0142 (US Toll), +49 30 5550142 (DE Toll), 7301112222"_s;
const QString secondPart = u"+33 800 555 018 (FR Toll Free), +81 3 5550 0199 (JP Toll), 7303334444"_s;
const QString oddPart = u"+1 800 555 0122,  (US Toll Free), +1 415 555 0177, 7305556666"_s;
const QString firstInvitation = u"730 111 2222"_s;
const QString secondInvitation = u"730 333 4444"_s;
const QString room = u"Room 5"_s;
const QString subject = u"By phone"_s; // subject of the appointment that gets the conferences

QString uid(const Session &session) {
    const auto all = session.host().session()->file().appointments();
    const auto found = std::find_if(all.rbegin(), all.rend(), // of several the newest
                                    [](const mailhost::Appointment &one) { return one.summary == subject; });
    return found == all.rend() ? QString() : found->uid;
}

QString body(const Session &session) {
    return session.control<QTextEdit>(controls::bodyEditor)->toPlainText();
}

bool locationBecomes(const Session &session, const QString &text) {
    const bool became = Report::waitFor([&] {
        return session.editor() && session.control<QLineEdit>(controls::locationField)->text() == text;
    });
    Report::settle();
    return became;
}

bool chooseAccount(const Session &session, int account) {
    QMenu *menu = openMenu(session.stripButton(ButtonText::audio()));
    session.picture(menu, u"strip-audio-menu"_s);
    return choose(menu, account - 1);
}

void signIn(const QString &user, const QString &accounts) {
    RunningClient::tell(u"user "_s + user);
    RunningClient::tell(u"accounts "_s + accounts);
    Report::settle(0.2);
}

// The strip offers audio conferences only after the plug-in has found accounts. It requests them once for
// each user, and the previous user had none.
bool firstFromTheToolBar(Session &session) {
    signIn(u"u-1002"_s, u"two"_s);
    const bool opened =
        session.openNew(u"Plain"_s) && !(session.isFresh() && session.stripButton(ButtonText::audio()));
    session.picture(session.strip(), u"strip-video-only"_s);
    const bool closed = session.discardEditor();
    session.report().mark();
    QMenu *menu = openMenu(shown(audioItem));
    if (!session.step(opened && closed && menu, u"the tool-bar offers the audio-conference accounts"_s))
        return false;
    const bool added = choose(menu, 0) && locationBecomes(session, firstPart);
    session.picture(session.editor(), u"audio-account-1"_s);
    return session.step(
        added && body(session).contains(firstInvitation) && session.sent(accountsAction) == 1 &&
            session.sent(meetingAction) == 0,
        u"account 1 is in a new appointment: its numbers in the location, its invitation in the body, and nothing was scheduled"_s);
}

bool saveFirst(Session &session) {
    session.control<QLineEdit>(controls::subjectField)->setFocus();
    type(session.editor(), subject);
    const bool saved = session.save();
    const mailhost::Appointment now = session.inFile(uid(session));
    // In the stored location the part follows the user's text, which is empty here.
    return session.step(saved && now.location == u' ' + firstPart && now.bodyHtml.contains(firstInvitation) &&
                            now.ucCapabilities.isEmpty() && session.closeEditor(),
                        u"saved, the file has both and no record of a meeting"_s);
}

bool secondInTheSameAppointment(Session &session) {
    if (!session.step(session.open(uid(session)) && session.stripButton(ButtonText::audio()),
                      u"opened again, the strip offers a video meeting and an audio conference"_s))
        return false;
    session.picture(session.strip(), u"strip-video-and-audio"_s);
    hover(session.stripButton(ButtonText::audio()));
    session.picture(session.strip(), u"strip-pointer-over"_s);
    session.stripButton(ButtonText::add())->setFocus(Qt::TabFocusReason);
    session.picture(session.strip(), u"strip-focus"_s);
    session.control<QLineEdit>(controls::locationField)->setFocus();
    press(session.editor(), Qt::Key_Home);
    type(session.editor(), room + u' ');
    session.report().mark();
    const bool added = chooseAccount(session, 2) && locationBecomes(session, room + u' ' + secondPart);
    session.picture(session.editor(), u"audio-account-2"_s);
    if (!session.step(added && body(session).contains(secondInvitation) &&
                          body(session).contains(firstInvitation) && session.sent(accountsAction) == 0,
                      u"account 2 takes the place of account 1 in the location, behind the "
                      u"room that was typed; its invitation is added, and the client is not asked again"_s))
        return false;
    const bool saved = session.save();
    const mailhost::Appointment now = session.inFile(uid(session));
    return session.step(saved && now.location == room + u' ' + secondPart &&
                            now.bodyHtml.contains(firstInvitation) &&
                            now.bodyHtml.contains(secondInvitation) && session.closeEditor(),
                        u"saved, the file has both"_s);
}

// Other users have other accounts, so the plug-in requests them again.
bool anotherUser(Session &session) {
    signIn(u"u-1001"_s, u"disabled"_s);
    if (!session.open(uid(session)))
        return session.step(false, u"the appointment opens"_s);
    session.report().mark();
    const bool added = chooseAccount(session, 1) && locationBecomes(session, room + u' ' + firstPart);
    return session.step(added && session.sent(profileAction) == 1 && session.sent(accountsAction) == 1,
                        u"another user has signed in: user and accounts are read "
                        u"again, and account 1 takes the place of account 2"_s);
}

bool switchedOff(Session &session) {
    const QString before = body(session);
    const bool said = chooseAccount(session, 2) && waitForAlert();
    session.picture(alert(), u"alert-account-disabled"_s);
    dismissModal();
    return session.step(said && body(session) == before &&
                            locationBecomes(session, room + u' ' + firstPart) &&
                            session.stripButton(ButtonText::add()) && session.discardEditor(),
                        u"an account that is switched off causes an alert, and nothing is changed"_s);
}

bool withGaps(Session &session) {
    signIn(u"u-1002"_s, u"odd"_s);
    if (!session.openNew(u"Numbers with gaps"_s))
        return session.step(false, u"a new editor opens"_s);
    const bool added = chooseAccount(session, 1) && locationBecomes(session, oddPart);
    session.step(added, u"numbers without a country and entries without a number are taken as they are"_s);
    return session.discardEditor() && added;
}

} // namespace

Part audioPart() {
    return {"audio conferences",
            {firstFromTheToolBar, saveFirst, secondInTheSameAppointment, anotherUser, switchedOff, withGaps}};
}

} // namespace walkthrough
