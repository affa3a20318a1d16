// Adds a meeting through the sheet, saves, reopens, changes, moves, removes and sends it.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Parts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTextEdit>
#include <QTimeEdit>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

const QString typedText = u"Bring the figures."_s;
const QString password = u"Tulip7"_s;
const QString joinEarlyBox = u"enableJBHButton"_s;
constexpr int narrowEditor = 800;   // points
constexpr int stripSmallestX = 460; // points
constexpr int stripRise = 23;       // points: from 10 below the header's edge to 13 above it

// The client does not run yet. The newer host asks the agent to start it, the older one starts it itself.
void launchTheClient(Session &walk) {
    const QString subject = walk.plain().summary;
    walk.step(walk.open(walk.uid().plain), u"a double click opens \"%1\""_s.arg(subject));
    click(walk.stripButton(buttons::add));
    walk.step(waitForButton(buttons::launch),
              u"the client is not running: an alert says so and offers to launch it"_s);
    walk.picture(QApplication::activeModalWidget(), u"client-not-running"_s);
    walk.launchClient(u"\"%1\" starts it in a process of its own"_s.arg(pluginText(buttons::launch)));
}

void addThroughTheSheet(Session &walk) {
    click(walk.control<QTextEdit>(controls::bodyEditor)->viewport());
    press(walk.editor(), Qt::CTRL | Qt::Key_End);
    type(walk.editor(), u" "_s + typedText);
    walk.picture(walk.editor(), u"editor-before"_s);
    walk.askForMeeting();
    walk.picture(walk.editor(), u"editor-behind-sheet"_s);
    walk.picture(QApplication::activeModalWidget(), u"settings-sheet"_s);
    click(shown(u"thirdPartyAudioButton"_s));
    click(shown(u"requiredMeetingPswButton"_s));
    settle();
    type(QApplication::activeModalWidget(), password);
    walk.picture(QApplication::activeModalWidget(), u"settings-sheet-longer"_s);
    click(shown(u"bothButton"_s));
    click(shown(joinEarlyBox));
    const bool attached = walk.confirmSheet();
    walk.picture(walk.editor(), u"editor-with-meeting"_s);
    walk.picture(walk.strip(), u"strip-with-meeting"_s);
    walk.step(attached && walk.sent(requests::schedule) == 1,
              u"confirmed, the meeting is scheduled once and is in the appointment"_s);
}

void saveAndReopen(Session &walk) {
    const QString uid = walk.uid().plain;
    const QString location = walk.plain().location;
    const bool saved = walk.save();
    const mailhost::Appointment now = walk.plain();
    const QString url = walk.record(uid).value(u"joinUrl"_s).toString();
    walk.step(saved && !walk.meetingKey(uid).isEmpty() && !url.isEmpty() && now.location.contains(url) &&
                  now.bodyHtml.contains(url) && now.bodyHtml.contains(typedText) &&
                  now.location.startsWith(location),
              u"saved, the file has the join URL in the location, the "
              "invitation below what was written, and the record"_s);
    walk.step(walk.closeEditor(), u"the editor closes without a question"_s);
    QString error;
    const bool opened = walk.host().openCalendar(&error) && walk.open(uid);
    walk.picture(walk.editor(), u"editor-reopened"_s);
    walk.step(opened && walk.stripButton(buttons::remove),
              u"reopened from the file, the appointment shows its meeting"_s);
}

void changeSetting(Session &walk) {
    walk.mark();
    click(walk.stripButton(buttons::settings));
    waitForButton(buttons::confirm);
    click(shown(joinEarlyBox));
    walk.picture(QApplication::activeModalWidget(), u"settings-changed"_s);
    click(shownButton(buttons::confirm));
    // The write-back is complete when the meeting was read again after the update.
    const bool updated = waitFor([&] { return walk.answered(updateAnswer) == 1; }) &&
                         waitFor([&] { return walk.answered(readAnswer) == 2; });
    settle();
    const bool joinsEarly = walk.meetingOf(walk.uid().plain).value(u"enableJBH"_s).toBool();
    walk.step(updated && walk.save() && walk.sent(requests::update) == 1 && !joinsEarly,
              u"a changed setting reaches the client with one update"_s);
}

void moveAndSave(Session &walk) {
    walk.mark();
    const mailhost::CalendarTime before = walk.plain().start;
    walk.control<QTimeEdit>(controls::startTimeField)->setFocus();
    press(walk.editor(), Qt::Key_Up);
    const bool moved = waitFor([&] { return walk.editor()->viewController()->isDirty(); }) && walk.save();
    const mailhost::CalendarTime now = walk.plain().start;
    const qint64 start = walk.meetingOf(walk.uid().plain).value(u"startTime"_s).toInteger();
    walk.step(moved && now != before && walk.sent(requests::update) == 1 &&
                  start == now.value.toSecsSinceEpoch(),
              u"moved and saved, the client gets one update with the new time"_s);
    walk.mark();
    walk.step(walk.save() && walk.sent(requests::update) == 0,
              u"saved again unchanged, the client gets no update"_s);
}

void removeMeeting(Session &walk) {
    walk.mark();
    const QString key = walk.meetingKey(walk.uid().plain);
    const bool gone = click(walk.stripButton(buttons::remove)) && walk.waitForStrip(buttons::add);
    settle();
    const bool saved = walk.save();
    walk.picture(walk.editor(), u"editor-after-removal"_s);
    const mailhost::Appointment now = walk.plain();
    walk.step(gone && saved && walk.sent(requests::deletion) == 1 && now.ucCapabilities.isEmpty() &&
                  !now.bodyHtml.contains(u"MacVlBookmark"_s) && now.location.isEmpty() &&
                  now.bodyHtml.contains(typedText) && walk.clientMeeting(key).isEmpty() && walk.closeEditor(),
              u"removed and saved, client and file have no meeting, what was written is still there"_s);
}

void sendMeeting(Session &walk) {
    const QString uid = walk.uid().meeting;
    if (uid.isEmpty())
        return walk.comment(u"no meeting of the user's own with attendees in the week: nothing is sent"_s);
    walk.step(walk.open(uid), u"a meeting with attendees opens"_s);
    walk.askForMeeting();
    const bool added = walk.confirmSheet();
    walk.picture(walk.editor(), u"meeting-with-attendees"_s);
    const int sequence = walk.inFile(uid).sequence;
    const bool sent = added && walk.send();
    walk.step(sent && walk.mailsInOutbox() == 1 && walk.inFile(uid).sequence == sequence + 1 &&
                  !walk.record(uid).isEmpty(),
              u"sent, the message is in the outbox and the sequence went up"_s);
    walk.picture(walk.mainWindow(), u"main-window-after"_s);
}

// In a narrow header the strip stays where it covers no field; a time-zone row moves it upwards.
void placeStrip(Session &walk) {
    walk.step(walk.open(walk.uid().plain), u"the first appointment opens again"_s);
    QWidget *editor = walk.editor();
    const QWidget *strip = walk.strip();
    const QSize usual = editor->size();
    editor->resize(narrowEditor, usual.height());
    const bool keepsLeft = waitFor([strip] { return strip->x() == stripSmallestX; });
    walk.picture(editor, u"editor-narrow"_s);
    editor->resize(usual);
    const auto above = [strip] { return strip->parentWidget()->height() - strip->geometry().bottom(); };
    const int before = above();
    click(shown(controls::timeZoneButton));
    const bool rises = waitFor([&] { return above() == before + stripRise; });
    walk.picture(editor, u"editor-time-zone"_s);
    click(shown(controls::timeZoneButton));
    const bool sinks = waitFor([&] { return above() == before; });
    walk.step(keepsLeft && rises && sinks && walk.discardEditor(),
              u"the strip finds its place in a narrow editor and beside the time-zone row"_s);
}

} // namespace

void changeInEditor(Session &walk) {
    launchTheClient(walk);
    addThroughTheSheet(walk);
    saveAndReopen(walk);
    changeSetting(walk);
    moveAndSave(walk);
    removeMeeting(walk);
    sendMeeting(walk);
    placeStrip(walk);
}

} // namespace walkthrough
