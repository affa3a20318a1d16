// Audio conferences: the first account, then the second in the same appointment, one that is switched off,
// one with gaps in its numbers, and another user.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Parts.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QMenu>
#include <QTextEdit>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

// The exact texts that the client's first and second account add to a location.
const QString firstPart =
    u"+1 800 555 0111 (US Toll Free), +1 415 555 0142 (US Toll), +49 30 5550142 (DE Toll), 7301112222"_s;
const QString secondPart = u"+33 800 555 018 (FR Toll Free), +81 3 5550 0199 (JP Toll), 7303334444"_s;
const QString oddPart = u"+1 800 555 0122,  (US Toll Free), +1 415 555 0177, 7305556666"_s;
const QString firstInvitation = u"730 111 2222"_s;
const QString secondInvitation = u"730 333 4444"_s;
const QString room = u"Room 5 "_s;

QString bodyOf(Session &walk) {
    return walk.control<QTextEdit>(controls::bodyEditor)->toPlainText();
}

bool locationBecomes(const QString &text) {
    const bool became = waitFor([&] {
        return Session::editor() && Session::control<QLineEdit>(controls::locationField)->text() == text;
    });
    settle();
    return became;
}

bool chooseAccount(Session &walk, int account) {
    QMenu *menu = openMenu(walk.stripButton(buttons::audio));
    walk.picture(menu, u"strip-audio-menu"_s);
    return choose(menu, account - 1);
}

void signIn(const QString &user, const QString &accounts) {
    Session::tell(u"user "_s + user);
    Session::tell(u"accounts "_s + accounts);
}

// The strip offers audio conferences only after the plug-in has found accounts. It requests them once for
// each user, and the previous user had none. Returns the UID of the new appointment.
QString addFirstFromToolBar(Session &walk) {
    signIn(u"u-1002"_s, u"two"_s);
    const bool opened = walk.openNew(u"Plain"_s) && !(walk.isFresh() && walk.stripButton(buttons::audio));
    walk.picture(walk.strip(), u"strip-video-only"_s);
    const bool closed = walk.discardEditor();
    walk.mark();
    QMenu *menu = openMenu(shown(audioItem));
    walk.step(opened && closed && menu, u"the tool-bar offers the audio-conference accounts"_s);
    const bool added = choose(menu, 0) && locationBecomes(firstPart);
    walk.picture(walk.editor(), u"audio-account-1"_s);
    walk.step(added && bodyOf(walk).contains(firstInvitation) && walk.sent(requests::accounts) == 1 &&
                  walk.sent(requests::meeting) == 0,
              u"account 1 is in a new appointment: its numbers in the location, its "
              "invitation in the body, and nothing was scheduled"_s);
    const bool saved = walk.typeInto(controls::subjectField, u"By phone"_s) && walk.save();
    const QString uid = walk.editor()->viewController()->content()->UUID();
    const mailhost::Appointment now = walk.inFile(uid);
    // In the stored location the part follows the user's text, which is empty here.
    walk.step(saved && now.location == u' ' + firstPart && now.bodyHtml.contains(firstInvitation) &&
                  now.ucCapabilities.isEmpty() && walk.closeEditor(),
              u"saved, the file has both and no record of a meeting"_s);
    return uid;
}

void addSecond(Session &walk, const QString &uid) {
    walk.step(walk.open(uid) && walk.stripButton(buttons::audio),
              u"opened again, the strip offers a video meeting and an audio conference"_s);
    walk.picture(walk.strip(), u"strip-video-and-audio"_s);
    hover(walk.stripButton(buttons::audio));
    walk.picture(walk.strip(), u"strip-pointer-over"_s);
    walk.stripButton(buttons::add)->setFocus(Qt::TabFocusReason);
    walk.picture(walk.strip(), u"strip-focus"_s);
    walk.control<QLineEdit>(controls::locationField)->setFocus();
    press(walk.editor(), Qt::Key_Home);
    type(walk.editor(), room);
    walk.mark();
    const bool added = chooseAccount(walk, 2) && locationBecomes(room + secondPart);
    walk.picture(walk.editor(), u"audio-account-2"_s);
    walk.step(added && bodyOf(walk).contains(secondInvitation) && bodyOf(walk).contains(firstInvitation) &&
                  walk.sent(requests::accounts) == 0,
              u"account 2 takes the place of account 1 in the location, behind the "
              "room that was typed; its invitation is added, and the client is not asked again"_s);
    const bool saved = walk.save();
    const mailhost::Appointment now = walk.inFile(uid);
    walk.step(saved && now.location == room + secondPart && now.bodyHtml.contains(firstInvitation) &&
                  now.bodyHtml.contains(secondInvitation) && walk.closeEditor(),
              u"saved, the file has both"_s);
}

// Other users have other accounts, so the plug-in requests them again.
void signInAsAnother(Session &walk, const QString &uid) {
    signIn(u"u-1001"_s, u"disabled"_s);
    walk.open(uid);
    walk.mark();
    walk.step(chooseAccount(walk, 1) && locationBecomes(room + firstPart) &&
                  walk.sent(requests::profile) == 1 && walk.sent(requests::accounts) == 1,
              u"another user has signed in: user and accounts are read "
              "again, and account 1 takes the place of account 2"_s);
    const QString before = bodyOf(walk);
    const bool said = chooseAccount(walk, 2) && walk.isAlerted(u"alert-account-disabled"_s);
    walk.step(said && bodyOf(walk) == before && locationBecomes(room + firstPart) &&
                  walk.stripButton(buttons::add) && walk.discardEditor(),
              u"an account that is switched off causes an alert, and nothing is changed"_s);
}

void addWithGaps(Session &walk) {
    signIn(u"u-1002"_s, u"odd"_s);
    walk.step(walk.openNew(u"Numbers with gaps"_s) && chooseAccount(walk, 1) && locationBecomes(oddPart) &&
                  walk.discardEditor(),
              u"numbers without a country and entries without a number are taken as they are"_s);
}

} // namespace

void addAudioConferences(Session &walk) {
    const QString uid = addFirstFromToolBar(walk);
    addSecond(walk, uid);
    signInAsAnother(walk, uid);
    addWithGaps(walk);
}

} // namespace walkthrough
