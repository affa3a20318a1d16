// Audio conferences: the first account, then the second in the same appointment, one that is switched off,
// one with gaps in its numbers, and another user.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Parts.h"

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
const QString firstPart =
    u"+1 800 555 0111 (US Toll Free), +1 415 555 0142 (US Toll), +49 30 5550142 (DE Toll), 7301112222"_s;
const QString secondPart = u"+33 800 555 018 (FR Toll Free), +81 3 5550 0199 (JP Toll), 7303334444"_s;
const QString oddPart = u"+1 800 555 0122,  (US Toll Free), +1 415 555 0177, 7305556666"_s;
const QString firstInvitation = u"730 111 2222"_s;
const QString secondInvitation = u"730 333 4444"_s;
const QString room = u"Room 5"_s;

class AudioWalk {
public:
    explicit AudioWalk(Session &session)
        : m_session(session)
        , m_report(session.report()) {}
    bool report() {
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
        return m_session.control<QLineEdit>(controls::locationField)->text();
    }
    [[nodiscard]] QString body() const {
        return m_session.control<QTextEdit>(controls::bodyEditor)->toPlainText();
    }
    bool saves() const;
    [[nodiscard]] QString uid() const { return m_session.editorController()->content()->UUID(); }

    Session &m_session;
    Report &m_report;
    QString m_uid;
};

bool AudioWalk::saves() const {
    press(m_session.editor(), Qt::Key_S, Qt::ControlModifier);
    return Report::waitFor([this] { return m_session.saved(); });
}

// The strip does not offer audio conferences before it is known that there are any. Whose there are is asked
// once for each user: the one before this had none.
bool AudioWalk::firstFromTheToolBar() {
    RunningClient::tell(u"user u-1002"_s);
    RunningClient::tell(u"accounts two"_s);
    const bool opened =
        m_session.openNew(u"Plain"_s) && !(m_session.isFresh() && m_session.stripButton(audioButton()));
    m_report.picture(m_session.strip(), u"strip-video-only"_s);
    const bool closed = m_session.discardEditor();
    m_report.mark();
    click(shown(u"VLSchedulePACToolbarItem"_s));
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!m_report.step(opened && closed && menu, u"the tool-bar offers the audio-conference accounts"_s))
        return false;
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                      menu->actionGeometry(menu->actions().constFirst()).center());
    const bool added = Report::waitFor([this] { return m_session.editor() != nullptr; }) &&
                       Report::waitFor([this] { return location() == firstPart; });
    Report::settle();
    m_report.picture(m_session.editor(), u"audio-account-1"_s);
    if (!m_report.step(added && body().contains(firstInvitation) &&
                           m_report.sentSinceMark(accountsAction) == 1 &&
                           m_report.sentSinceMark(meetingAction) == 0,
                       u"account 1 is in a new appointment: its numbers in the location, its "
                       "invitation in the body, and nothing was scheduled"_s))
        return false;
    m_session.control<QLineEdit>(controls::subjectField)->setFocus();
    type(m_session.editor(), u"By phone"_s);
    const bool kept = saves();
    m_uid = uid();
    const mailhost::Appointment now = m_session.inFile(m_uid);
    // Stored, the part stands behind what is the person's own, which is empty here.
    const bool inFile = now.location == u' ' + firstPart && now.bodyHtml.contains(firstInvitation);
    return m_report.step(kept && inFile && now.ucCapabilities.isEmpty() && m_session.closeEditor(),
                         u"saved, the file has both and no record of a meeting"_s);
}

bool AudioWalk::chooseAccount(int account) {
    if (!click(m_session.stripButton(audioButton())))
        return false;
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu)
        return false;
    m_report.picture(menu, u"strip-audio-menu"_s);
    QList<QAction *> choices;
    for (QAction *action : menu->actions())
        if (action->isVisible() && !action->isSeparator())
            choices.append(action);
    if (choices.size() < account)
        return false;
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                      menu->actionGeometry(choices[account - 1]).center());
    Report::settle();
    return true;
}

bool AudioWalk::secondInTheSameAppointment() {
    if (!m_report.step(m_session.open(m_uid) && m_session.stripButton(audioButton()),
                       u"opened again, the strip offers a video meeting and an audio conference"_s))
        return false;
    m_report.picture(m_session.strip(), u"strip-video-and-audio"_s);
    hover(m_session.stripButton(audioButton()));
    m_report.picture(m_session.strip(), u"strip-pointer-over"_s);
    m_session.stripButton(addButton())->setFocus(Qt::TabFocusReason);
    m_report.picture(m_session.strip(), u"strip-focus"_s);
    m_session.control<QLineEdit>(controls::locationField)->setFocus();
    press(m_session.editor(), Qt::Key_Home);
    type(m_session.editor(), room + u' ');
    m_report.mark();
    const bool chosen = chooseAccount(2);
    const bool added = Report::waitFor([this] { return location() == room + u' ' + secondPart; });
    Report::settle();
    m_report.picture(m_session.editor(), u"audio-account-2"_s);
    if (!m_report.step(chosen && added && body().contains(secondInvitation) &&
                           body().contains(firstInvitation) && m_report.sentSinceMark(accountsAction) == 0,
                       u"account 2 takes the place of account 1 in the location, behind the room that was "
                       "typed; its invitation is added, and the client is not asked again"_s))
        return false;
    const bool kept = saves();
    const mailhost::Appointment now = m_session.inFile(m_uid);
    return m_report.step(kept && now.location == room + u' ' + secondPart &&
                             now.bodyHtml.contains(firstInvitation) &&
                             now.bodyHtml.contains(secondInvitation) && m_session.closeEditor(),
                         u"saved, the file has both"_s);
}

// Other people have other accounts: they are asked for once more.
bool AudioWalk::anotherUser() {
    RunningClient::tell(u"user u-1001"_s);
    RunningClient::tell(u"accounts disabled"_s);
    Report::settle(0.2);
    if (!m_session.open(m_uid))
        return m_report.step(false, u"the appointment opens"_s);
    m_report.mark();
    const bool chosen = chooseAccount(1);
    const bool added = Report::waitFor([this] { return location() == room + u' ' + firstPart; });
    Report::settle();
    return m_report.step(chosen && added && m_report.sentSinceMark(profileAction) == 1 &&
                             m_report.sentSinceMark(accountsAction) == 1,
                         u"another user has signed in: user and accounts are read again, and account "
                         "1 takes the place of account 2"_s);
}

bool AudioWalk::switchedOff() {
    const QString before = body();
    const bool chosen = chooseAccount(2);
    const bool said = Report::waitFor(
        [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()) != nullptr; });
    m_report.picture(QApplication::activeModalWidget(), u"alert-account-disabled"_s);
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    Report::waitFor([] { return QApplication::activeModalWidget() == nullptr; });
    return m_report.step(chosen && said && body() == before && location() == room + u' ' + firstPart &&
                             m_session.stripButton(addButton()) && m_session.discardEditor(),
                         u"an account that is switched off is said, and nothing is changed"_s);
}

bool AudioWalk::withGaps() {
    RunningClient::tell(u"user u-1002"_s);
    RunningClient::tell(u"accounts odd"_s);
    Report::settle(0.2);
    if (!m_session.openNew(u"Numbers with gaps"_s))
        return m_report.step(false, u"a new editor opens"_s);
    const bool chosen = chooseAccount(1);
    const bool added = Report::waitFor([this] { return location() == oddPart; });
    Report::settle();
    m_report.step(chosen && added, u"numbers without a country and entries without a number are "
                                   "taken as they are"_s);
    return m_session.discardEditor() && added;
}

} // namespace

bool runAudioConferences(Session &session) {
    return AudioWalk(session).report();
}

} // namespace walkthrough
