// Adds a meeting through the sheet, saves, reopens, changes, moves, removes and sends it.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Parts.h"

#include <QApplication>
#include <QJsonObject>
#include <QLineEdit>
#include <QTextEdit>
#include <QTimeEdit>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

const QString typedText = u"Bring the figures."_s;
const QString password = u"Tulip7"_s;
constexpr int narrowEditor = 800;   // points
constexpr int stripSmallestX = 460; // points
constexpr int stripRise = 23;       // points: from 10 below the header's edge to 13 above it

// The client does not run yet. The newer host asks the agent to start it, the older one starts it itself.
bool launchClient(Session &session) {
    const mailhost::Appointment before = session.inFile(session.plainUid());
    if (!session.step(session.open(before.uid), u"a double click opens \"%1\""_s.arg(before.summary)))
        return false;
    click(session.stripButton(ButtonText::add()));
    const bool said = waitForButton(ButtonText::launch());
    if (!session.step(said, u"the client is not running: an alert says so and offers to launch it"_s))
        return false;
    session.picture(QApplication::activeModalWidget(), u"client-not-running"_s);
    return session.launchFromAlert(u"\"%1\" starts it in a process of its own"_s.arg(ButtonText::launch()));
}

bool addThroughTheSheet(Session &session) {
    if (!click(session.control<QTextEdit>(controls::bodyEditor)->viewport()))
        return session.step(false, u"the body can be clicked"_s);
    press(session.editor(), Qt::Key_End, Qt::ControlModifier);
    type(session.editor(), u" "_s + typedText);
    session.picture(session.editor(), u"editor-before"_s);
    if (!session.askForMeeting())
        return false;
    session.picture(session.editor(), u"editor-behind-sheet"_s);
    session.picture(QApplication::activeModalWidget(), u"settings-sheet"_s);
    click(shown(u"thirdPartyAudioButton"_s));
    click(shown(u"requiredMeetingPswButton"_s));
    Report::settle();
    type(QApplication::activeModalWidget(), password);
    session.picture(QApplication::activeModalWidget(), u"settings-sheet-longer"_s);
    click(shown(u"bothButton"_s));
    click(shown(u"enableJBHButton"_s));
    const bool attached = session.confirmSheet();
    session.picture(session.editor(), u"editor-with-meeting"_s);
    session.picture(session.strip(), u"strip-with-meeting"_s);
    session.step(attached && session.sent(meetingAction, schedulePrefix) == 1,
                 u"confirmed, the meeting is scheduled once and is in the appointment"_s);
    return attached;
}

bool saveMeeting(Session &session) {
    const mailhost::Appointment before = session.inFile(session.plainUid());
    const bool saved = session.save();
    const mailhost::Appointment now = session.inFile(before.uid);
    const QString url = session.record(before.uid).value(u"joinUrl"_s).toString();
    return session.step(saved && !session.meetingKey(before.uid).isEmpty() && !url.isEmpty() &&
                            now.location.contains(url) && now.bodyHtml.contains(url) &&
                            now.bodyHtml.contains(typedText) && now.location.startsWith(before.location),
                        u"saved, the file has the join URL in the location, the "
                        u"invitation below what was written, and the record"_s);
}

bool reopen(Session &session) {
    if (!session.step(session.closeEditor(), u"the editor closes without a question"_s))
        return false;
    QString error;
    const bool opened = session.host().openCalendar(&error) && session.open(session.plainUid());
    session.picture(session.editor(), u"editor-reopened"_s);
    return session.step(opened && session.stripButton(ButtonText::remove()),
                        u"reopened from the file, the appointment shows its meeting"_s);
}

bool changeSetting(Session &session) {
    session.report().mark();
    if (!click(session.stripButton(ButtonText::settings())) || !waitForButton(ButtonText::confirm()))
        return session.step(false, u"\"%1\" opens the sheet"_s.arg(ButtonText::settings()));
    click(shown(u"enableJBHButton"_s));
    session.picture(QApplication::activeModalWidget(), u"settings-changed"_s);
    click(shownButton(ButtonText::confirm()));
    // The write-back is complete when the meeting was read again after the update.
    const bool updated = Report::waitFor([&] { return session.answered(updateAnswer) == 1; }) &&
                         Report::waitFor([&] { return session.answered(readAnswer) == 2; });
    Report::settle();
    const bool joinsEarly = session.meetingOf(session.plainUid()).value(u"enableJBH"_s).toBool();
    return session.step(updated && session.save() && session.sent(meetingAction, updatePrefix) == 1 &&
                            !joinsEarly,
                        u"a changed setting reaches the client with one update"_s);
}

bool moveAndSave(Session &session) {
    session.report().mark();
    const mailhost::CalendarTime before = session.inFile(session.plainUid()).start;
    session.control<QTimeEdit>(controls::startTimeField)->setFocus();
    press(session.editor(), Qt::Key_Up);
    const bool moved = Report::waitFor([&] { return !session.isSaved(); }) && session.save();
    const mailhost::CalendarTime now = session.inFile(session.plainUid()).start;
    const qint64 start = session.meetingOf(session.plainUid()).value(u"startTime"_s).toInteger();
    return session.step(moved && now != before && session.sent(meetingAction, updatePrefix) == 1 &&
                            start == now.value.toSecsSinceEpoch(),
                        u"moved and saved, the client gets one update with the new time"_s);
}

bool saveUnchanged(Session &session) {
    session.report().mark();
    return session.step(session.save() && session.sent(meetingAction, updatePrefix) == 0,
                        u"saved again unchanged, the client gets no update"_s);
}

bool removeMeeting(Session &session) {
    session.report().mark();
    const QString key = session.meetingKey(session.plainUid());
    if (!click(session.stripButton(ButtonText::remove())))
        return session.step(false, u"\"%1\" can be clicked"_s.arg(ButtonText::remove()));
    const bool gone = session.waitForStrip(ButtonText::add());
    Report::settle();
    const bool saved = session.save();
    session.picture(session.editor(), u"editor-after-removal"_s);
    const mailhost::Appointment now = session.inFile(session.plainUid());
    session.step(gone && saved && session.sent(meetingAction, deletePrefix) == 1 &&
                     now.ucCapabilities.isEmpty() && !now.bodyHtml.contains(u"MacVlBookmark"_s) &&
                     now.location.isEmpty() && now.bodyHtml.contains(typedText) &&
                     session.client().meeting(key).isEmpty(),
                 u"removed and saved, client and file have no meeting, what was written is still there"_s);
    return session.closeEditor();
}

bool send(Session &session) {
    const QString uid = session.meetingUid();
    if (uid.isEmpty()) {
        session.report().comment(
            u"no meeting of the user's own with attendees in the week: nothing is sent"_s);
        return true;
    }
    if (!session.step(session.open(uid), u"a meeting with attendees opens"_s) || !session.askForMeeting())
        return false;
    if (!session.confirmSheet())
        return session.step(false, u"the meeting is added"_s);
    session.picture(session.editor(), u"meeting-with-attendees"_s);
    const int sequence = session.inFile(uid).sequence;
    const bool sent = session.send();
    session.step(sent && session.sentMessages().size() == 1 && session.inFile(uid).sequence == sequence + 1 &&
                     !session.record(uid).isEmpty(),
                 u"sent, the message is in the outbox and the sequence went up"_s);
    session.picture(shown(controls::mainWindow), u"main-window-after"_s);
    return sent;
}

// In a narrow header the strip stays where it covers no field; a time-zone row moves it upwards.
bool placeStrip(Session &session) {
    if (!session.step(session.open(session.plainUid()), u"the first appointment opens again"_s))
        return false;
    QWidget *editor = session.editor();
    const QWidget *strip = session.strip();
    const QSize usual = editor->size();
    editor->resize(narrowEditor, usual.height());
    const bool keepsLeft = Report::waitFor([strip] { return strip->x() == stripSmallestX; });
    session.picture(editor, u"editor-narrow"_s);
    editor->resize(usual);
    const auto above = [strip] { return strip->parentWidget()->height() - strip->geometry().bottom(); };
    const int before = above();
    click(shown(controls::timeZoneButton));
    const bool rises = Report::waitFor([&] { return above() == before + stripRise; });
    session.picture(editor, u"editor-time-zone"_s);
    click(shown(controls::timeZoneButton));
    const bool sinks = Report::waitFor([&] { return above() == before; });
    session.step(keepsLeft && rises && sinks,
                 u"the strip finds its place in a narrow editor and beside the time-zone row"_s);
    return session.discardEditor();
}

} // namespace

Part editorPart() {
    return {"editor",
            {launchClient, addThroughTheSheet, saveMeeting, reopen, changeSetting, moveAndSave, saveUnchanged,
             removeMeeting, send, placeStrip}};
}

} // namespace walkthrough
