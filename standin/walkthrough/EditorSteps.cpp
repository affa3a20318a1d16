// Add a meeting through the sheet, save, reopen, change, move, remove, send.
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

constexpr int launchMilliseconds = 30000;

class EditorWalk {
public:
    explicit EditorWalk(Session &session)
        : m_session(session)
        , m_report(&session.report())
        , m_client(&session.client())
        , m_uid(session.plainUid())
        , m_meetingUid(session.meetingUid()) {}
    bool report() {
        return launchTheClient() && addThroughTheSheet() && save() && reopen() && changeASetting() &&
               moveAndSave() && saveUnchanged() && removeTheMeeting() && send();
    }

private:
    bool launchTheClient();
    bool addThroughTheSheet();
    bool save();
    bool reopen();
    bool changeASetting();
    bool moveAndSave();
    bool saveUnchanged();
    bool removeTheMeeting();
    bool send();

    Session &m_session;
    Report *m_report;
    RunningClient *m_client;
    QString m_uid;
    QString m_meetingUid;
    mailhost::Appointment m_before;
    QString m_key;
};

// Nobody has started the client yet. The newer host asks the agent to do it, the older one starts it itself.
bool EditorWalk::launchTheClient() {
    m_before = m_session.inFile(m_uid);
    if (!m_report->step(m_session.open(m_uid), u"a double click opens \"%1\""_s.arg(m_before.summary)))
        return false;
    click(m_session.stripButton(addButton()));
    if (!m_report->step(Report::waitFor([] { return shownButton(launchButton()) != nullptr; }),
                        u"the client is not running: it is said, and launching it is offered"_s))
        return false;
    m_report->picture(QApplication::activeModalWidget(), u"client-not-running"_s);
    click(shownButton(launchButton()));
    return m_report->step(Report::waitFor([] { return RunningClient::isRunning(); }, launchMilliseconds),
                          u"\"%1\" starts it in a process of its own"_s.arg(launchButton()));
}

bool EditorWalk::addThroughTheSheet() {
    auto *body = m_session.control<QTextEdit>(controls::bodyEditor);
    if (!click(body->viewport()))
        return m_report->step(false, u"the body can be clicked"_s);
    press(m_session.editor(), Qt::Key_End, Qt::ControlModifier);
    type(m_session.editor(), u" "_s + ownWords);
    m_report->picture(m_session.editor(), u"editor-before"_s);
    if (!m_session.askForMeeting())
        return false;
    m_report->picture(m_session.editor(), u"editor-behind-sheet"_s);
    m_report->picture(QApplication::activeModalWidget(), u"settings-sheet"_s);
    click(shown(u"thirdPartyAudioButton"_s));
    click(shown(u"requiredMeetingPswButton"_s));
    Report::settle();
    type(QApplication::activeModalWidget(), password);
    m_report->picture(QApplication::activeModalWidget(), u"settings-sheet-longer"_s);
    click(shown(u"bothButton"_s));
    click(shown(u"enableJBHButton"_s));
    click(shownButton(continueButton()));
    const bool attached = m_session.isAttached();
    m_report->picture(m_session.editor(), u"editor-with-meeting"_s);
    m_report->picture(m_session.strip(), u"strip-with-meeting"_s);
    m_report->step(attached && m_report->sentSinceMark(meetingAction, schedulePrefix) == 1,
                   u"confirmed, the meeting is scheduled once and is in the appointment"_s);
    return attached;
}

bool EditorWalk::save() {
    m_report->mark();
    press(m_session.editor(), Qt::Key_S, Qt::ControlModifier);
    const bool done = Report::waitFor(
        [this] { return m_session.saved() && !m_session.inFile(m_uid).ucCapabilities.isEmpty(); });
    const mailhost::Appointment now = m_session.inFile(m_uid);
    const QJsonObject kept = m_session.record(m_uid);
    m_key = kept.value(u"meetingKey"_s).toString();
    const QString url = kept.value(u"joinUrl"_s).toString();
    return m_report->step(done && !m_key.isEmpty() && !url.isEmpty() && now.location.contains(url) &&
                              now.bodyHtml.contains(url) && now.bodyHtml.contains(ownWords) &&
                              now.location.startsWith(m_before.location),
                          u"saved, the file has the join URL in the location, the invitation below what was "
                          "written, and the record"_s);
}

bool EditorWalk::reopen() {
    if (!m_report->step(m_session.closeEditor(), u"the editor closes without a question"_s))
        return false;
    QString error;
    const bool again = m_session.host().openCalendar(&error);
    const bool opened = again && m_session.open(m_uid);
    m_report->picture(m_session.editor(), u"editor-reopened"_s);
    return m_report->step(opened && m_session.stripButton(removeButton()),
                          u"reopened from the file, the appointment shows its meeting"_s);
}

bool EditorWalk::changeASetting() {
    m_report->mark();
    if (!click(m_session.stripButton(settingsButton())) ||
        !Report::waitFor([] { return shownButton(continueButton()) != nullptr; }))
        return m_report->step(false, u"\"%1\" opens the sheet"_s.arg(settingsButton()));
    click(shown(u"enableJBHButton"_s));
    m_report->picture(QApplication::activeModalWidget(), u"settings-changed"_s);
    click(shownButton(continueButton()));
    // Written back: the meeting has been read again after the update.
    const bool updated = Report::waitFor([this] { return m_report->answeredSinceMark(updateAnswer) == 1; }) &&
                         Report::waitFor([this] { return m_report->answeredSinceMark(readAnswer) == 2; });
    Report::settle();
    press(m_session.editor(), Qt::Key_S, Qt::ControlModifier);
    const bool kept = Report::waitFor([this] { return m_session.saved(); });
    const QJsonObject meeting = m_client->meeting(m_key);
    return m_report->step(updated && kept && m_report->sentSinceMark(meetingAction, updatePrefix) == 1 &&
                              !meeting.value(u"enableJBH"_s).toBool(),
                          u"a changed setting reaches the client with one update"_s);
}

bool EditorWalk::moveAndSave() {
    m_report->mark();
    auto *time = m_session.control<QTimeEdit>(controls::startTimeField);
    time->setFocus();
    press(m_session.editor(), Qt::Key_Up);
    const bool moved = Report::waitFor([this] { return !m_session.saved(); });
    press(m_session.editor(), Qt::Key_S, Qt::ControlModifier);
    const bool kept = Report::waitFor(
        [this] { return m_session.saved() && m_session.inFile(m_uid).start != m_before.start; });
    const qint64 start = m_client->meeting(m_key).value(u"startTime"_s).toInteger();
    return m_report->step(moved && kept && m_report->sentSinceMark(meetingAction, updatePrefix) == 1 &&
                              start == m_session.inFile(m_uid).start.value.toSecsSinceEpoch(),
                          u"moved and saved, the client gets one update with the new time"_s);
}

bool EditorWalk::saveUnchanged() {
    m_report->mark();
    press(m_session.editor(), Qt::Key_S, Qt::ControlModifier);
    Report::settle();
    Report::waitFor([this] { return m_session.saved(); });
    return m_report->step(m_session.saved() && m_report->sentSinceMark(meetingAction, updatePrefix) == 0,
                          u"saved again unchanged, the client gets no update"_s);
}

bool EditorWalk::removeTheMeeting() {
    m_report->mark();
    if (!click(m_session.stripButton(removeButton())))
        return m_report->step(false, u"\"%1\" can be clicked"_s.arg(removeButton()));
    const bool gone = Report::waitFor([this] { return m_session.stripButton(addButton()) != nullptr; });
    Report::settle();
    press(m_session.editor(), Qt::Key_S, Qt::ControlModifier);
    const bool kept = Report::waitFor(
        [this] { return m_session.saved() && m_session.inFile(m_uid).ucCapabilities.isEmpty(); });
    m_report->picture(m_session.editor(), u"editor-after-removal"_s);
    const mailhost::Appointment now = m_session.inFile(m_uid);
    m_report->step(gone && kept && m_report->sentSinceMark(meetingAction, deletePrefix) == 1 &&
                       !now.bodyHtml.contains(u"MacVlBookmark"_s) && now.location.isEmpty() &&
                       now.bodyHtml.contains(ownWords) && m_client->meeting(m_key).isEmpty(),
                   u"removed and saved, client and file have no meeting, what was written is still there"_s);
    return m_session.closeEditor();
}

bool EditorWalk::send() {
    if (m_meetingUid.isEmpty()) {
        m_report->comment(u"no meeting of one's own with attendees in the week: nothing is sent"_s);
        return true;
    }
    if (!m_report->step(m_session.open(m_meetingUid), u"a meeting with attendees opens"_s) ||
        !m_session.askForMeeting())
        return false;
    click(shownButton(continueButton()));
    if (!m_session.isAttached())
        return m_report->step(false, u"the meeting is added"_s);
    Report::settle();
    m_report->picture(m_session.editor(), u"meeting-with-attendees"_s);
    const int sequence = m_session.inFile(m_meetingUid).sequence;
    click(shown(controls::sendButton));
    const bool sent = Report::waitFor([this] { return !m_session.editor(); });
    const QStringList messages = m_session.sentMessages();
    m_report->step(sent && messages.size() == 1 && m_session.inFile(m_meetingUid).sequence == sequence + 1 &&
                       !m_session.record(m_meetingUid).isEmpty(),
                   u"sent, the message is in the outbox and the sequence went up"_s);
    m_report->picture(shown(controls::mainWindow), u"main-window-after"_s);
    return sent;
}

} // namespace

bool runEditor(Session &session) {
    return EditorWalk(session).report();
}

} // namespace walkthrough
