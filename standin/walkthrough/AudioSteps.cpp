// Audio conferences: the first account, then the second in the same appointment, one that is switched off,
// one with gaps in its numbers, and another user.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Road.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTextEdit>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

constexpr quint32 accountsAction = 9;
constexpr quint32 profileAction = 6;

// What the client's first and second account put into a location, to the letter.
const QString firstPart = QStringLiteral(
    "+1 800 555 0111 (US Toll Free), +1 415 555 0142 (US Toll), +49 30 5550142 (DE Toll), 7301112222");
const QString secondPart =
    QStringLiteral("+33 800 555 018 (FR Toll Free), +81 3 5550 0199 (JP Toll), 7303334444");
const QString oddPart = QStringLiteral("+1 800 555 0122,  (US Toll Free), +1 415 555 0177, 7305556666");
const QString firstInvitation = QStringLiteral("730 111 2222");
const QString secondInvitation = QStringLiteral("730 333 4444");
const QString room = QStringLiteral("Room 5");

class AudioWalk {
public:
    explicit AudioWalk(Road &road)
        : m_road(road)
        , m_walk(road.walk()) {}
    bool walk() {
        return firstFromTheToolBar() && secondInTheSameAppointment() && anotherUser() && switchedOff() &&
               withGaps();
    }

private:
    bool firstFromTheToolBar();
    bool secondInTheSameAppointment();
    bool anotherUser();
    bool switchedOff();
    bool withGaps();
    // Opens the strip's menu and chooses the account, counted from 1.
    bool chooseAccount(int account);
    [[nodiscard]] QString location() const {
        return m_road.control<QLineEdit>(controls::locationField)->text();
    }
    [[nodiscard]] QString body() const {
        return m_road.control<QTextEdit>(controls::bodyEditor)->toPlainText();
    }
    bool saves() const;
    [[nodiscard]] QString uid() const { return m_road.editorController()->content()->UUID(); }

    Road &m_road;
    Walk &m_walk;
    QString m_uid;
};

bool AudioWalk::saves() const {
    press(m_road.editor(), Qt::Key_S, Qt::ControlModifier);
    return Walk::waitFor([this] { return m_road.saved(); });
}

// The strip does not offer audio conferences before it is known that there are any. Whose there are is asked
// once for each user: the one before this had none.
bool AudioWalk::firstFromTheToolBar() {
    RunningClient::tell(QStringLiteral("user u-1002"));
    RunningClient::tell(QStringLiteral("accounts two"));
    const bool opened =
        m_road.openNew(QStringLiteral("Plain")) && !(m_road.isFresh() && m_road.stripButton(audioButton()));
    m_walk.picture(m_road.strip(), QStringLiteral("strip-video-only"));
    const bool closed = m_road.discardEditor();
    m_walk.mark();
    click(shown(QStringLiteral("VLSchedulePACToolbarItem")));
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!m_walk.step(opened && closed && menu,
                     QStringLiteral("the tool-bar offers the audio-conference accounts")))
        return false;
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                      menu->actionGeometry(menu->actions().constFirst()).center());
    const bool added = Walk::waitFor([this] { return m_road.editor() != nullptr; }) &&
                       Walk::waitFor([this] { return location() == firstPart; });
    Walk::settle();
    m_walk.picture(m_road.editor(), QStringLiteral("audio-account-1"));
    if (!m_walk.step(added && body().contains(firstInvitation) && m_walk.sentSinceMark(accountsAction) == 1 &&
                         m_walk.sentSinceMark(meetingAction) == 0,
                     QStringLiteral("account 1 is in a new appointment: its numbers in the location, its "
                                    "invitation in the body, and nothing was scheduled")))
        return false;
    m_road.control<QLineEdit>(controls::subjectField)->setFocus();
    type(m_road.editor(), QStringLiteral("By phone"));
    const bool kept = saves();
    m_uid = uid();
    const mailhost::Appointment now = m_road.inFile(m_uid);
    // Stored, the part stands behind what is the person's own, which is empty here.
    const bool inFile = now.location == u' ' + firstPart && now.bodyHtml.contains(firstInvitation);
    return m_walk.step(kept && inFile && now.ucCapabilities.isEmpty() && m_road.closeEditor(),
                       QStringLiteral("saved, the file has both and no record of a meeting"));
}

bool AudioWalk::chooseAccount(int account) {
    if (!click(m_road.stripButton(audioButton())))
        return false;
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu)
        return false;
    m_walk.picture(menu, QStringLiteral("strip-audio-menu"));
    QList<QAction *> choices;
    for (QAction *action : menu->actions())
        if (action->isVisible() && !action->isSeparator())
            choices.append(action);
    if (choices.size() < account)
        return false;
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                      menu->actionGeometry(choices[account - 1]).center());
    Walk::settle();
    return true;
}

bool AudioWalk::secondInTheSameAppointment() {
    if (!m_walk.step(
            m_road.open(m_uid) && m_road.stripButton(audioButton()),
            QStringLiteral("opened again, the strip offers a video meeting and an audio conference")))
        return false;
    m_walk.picture(m_road.strip(), QStringLiteral("strip-video-and-audio"));
    hover(m_road.stripButton(audioButton()));
    m_walk.picture(m_road.strip(), QStringLiteral("strip-pointer-over"));
    m_road.stripButton(addButton())->setFocus(Qt::TabFocusReason);
    m_walk.picture(m_road.strip(), QStringLiteral("strip-focus"));
    m_road.control<QLineEdit>(controls::locationField)->setFocus();
    press(m_road.editor(), Qt::Key_Home);
    type(m_road.editor(), room + u' ');
    m_walk.mark();
    const bool chosen = chooseAccount(2);
    const bool added = Walk::waitFor([this] { return location() == room + u' ' + secondPart; });
    Walk::settle();
    m_walk.picture(m_road.editor(), QStringLiteral("audio-account-2"));
    if (!m_walk.step(
            chosen && added && body().contains(secondInvitation) && body().contains(firstInvitation) &&
                m_walk.sentSinceMark(accountsAction) == 0,
            QStringLiteral("account 2 takes the place of account 1 in the location, behind the room that was "
                           "typed; its invitation is added, and the client is not asked again")))
        return false;
    const bool kept = saves();
    const mailhost::Appointment now = m_road.inFile(m_uid);
    return m_walk.step(kept && now.location == room + u' ' + secondPart &&
                           now.bodyHtml.contains(firstInvitation) &&
                           now.bodyHtml.contains(secondInvitation) && m_road.closeEditor(),
                       QStringLiteral("saved, the file has both"));
}

// Other people have other accounts: they are asked for once more.
bool AudioWalk::anotherUser() {
    RunningClient::tell(QStringLiteral("user u-1001"));
    RunningClient::tell(QStringLiteral("accounts disabled"));
    Walk::settle(0.2);
    if (!m_road.open(m_uid))
        return m_walk.step(false, QStringLiteral("the appointment opens"));
    m_walk.mark();
    const bool chosen = chooseAccount(1);
    const bool added = Walk::waitFor([this] { return location() == room + u' ' + firstPart; });
    Walk::settle();
    return m_walk.step(
        chosen && added && m_walk.sentSinceMark(profileAction) == 1 &&
            m_walk.sentSinceMark(accountsAction) == 1,
        QStringLiteral("another user has signed in: user and accounts are read again, and account "
                       "1 takes the place of account 2"));
}

bool AudioWalk::switchedOff() {
    const QString before = body();
    const bool chosen = chooseAccount(2);
    const bool said = Walk::waitFor(
        [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()) != nullptr; });
    m_walk.picture(QApplication::activeModalWidget(), QStringLiteral("alert-account-disabled"));
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    Walk::waitFor([] { return QApplication::activeModalWidget() == nullptr; });
    return m_walk.step(chosen && said && body() == before && location() == room + u' ' + firstPart &&
                           m_road.stripButton(addButton()) && m_road.discardEditor(),
                       QStringLiteral("an account that is switched off is said, and nothing is changed"));
}

bool AudioWalk::withGaps() {
    RunningClient::tell(QStringLiteral("user u-1002"));
    RunningClient::tell(QStringLiteral("accounts odd"));
    Walk::settle(0.2);
    if (!m_road.openNew(QStringLiteral("Numbers with gaps")))
        return m_walk.step(false, QStringLiteral("a new editor opens"));
    const bool chosen = chooseAccount(1);
    const bool added = Walk::waitFor([this] { return location() == oddPart; });
    Walk::settle();
    m_walk.step(chosen && added, QStringLiteral("numbers without a country and entries without a number are "
                                                "taken as they are"));
    return m_road.discardEditor() && added;
}

} // namespace

bool walkTheAudioConferences(Road &road) {
    return AudioWalk(road).walk();
}

} // namespace walkthrough
