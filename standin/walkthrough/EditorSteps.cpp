// Add a meeting through the sheet, save, reopen, change, move, remove, send.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Road.h"

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
    explicit EditorWalk(Road &road)
        : m_road(road)
        , m_walk(&road.walk())
        , m_client(&road.client())
        , m_uid(road.plainUid())
        , m_meetingUid(road.meetingUid()) {}
    bool walk() {
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

    Road &m_road;
    Walk *m_walk;
    RunningClient *m_client;
    QString m_uid;
    QString m_meetingUid;
    mailhost::Appointment m_before;
    QString m_key;
};

// Nobody has started the client yet. The newer host asks the agent to do it, the older one starts it itself.
bool EditorWalk::launchTheClient() {
    m_before = m_road.inFile(m_uid);
    if (!m_walk->step(m_road.open(m_uid),
                      QStringLiteral("a double click opens \"%1\"").arg(m_before.summary)))
        return false;
    click(m_road.stripButton(addButton()));
    if (!m_walk->step(Walk::waitFor([] { return shownButton(launchButton()) != nullptr; }),
                      QStringLiteral("the client is not running: it is said, and launching it is offered")))
        return false;
    m_walk->picture(QApplication::activeModalWidget(), QStringLiteral("client-not-running"));
    click(shownButton(launchButton()));
    return m_walk->step(Walk::waitFor([] { return RunningClient::isRunning(); }, launchMilliseconds),
                        QStringLiteral("\"%1\" starts it in a process of its own").arg(launchButton()));
}

bool EditorWalk::addThroughTheSheet() {
    auto *body = m_road.control<QTextEdit>(controls::bodyEditor);
    if (!click(body->viewport()))
        return m_walk->step(false, QStringLiteral("the body can be clicked"));
    press(m_road.editor(), Qt::Key_End, Qt::ControlModifier);
    type(m_road.editor(), QStringLiteral(" ") + ownWords);
    m_walk->picture(m_road.editor(), QStringLiteral("editor-before"));
    if (!m_road.askForMeeting())
        return false;
    m_walk->picture(m_road.editor(), QStringLiteral("editor-behind-sheet"));
    m_walk->picture(QApplication::activeModalWidget(), QStringLiteral("settings-sheet"));
    click(shown(QStringLiteral("thirdPartyAudioButton")));
    click(shown(QStringLiteral("requiredMeetingPswButton")));
    Walk::settle();
    m_walk->picture(QApplication::activeModalWidget(), QStringLiteral("settings-sheet-longer"));
    type(QApplication::activeModalWidget(), password);
    click(shown(QStringLiteral("bothButton")));
    click(shown(QStringLiteral("enableJBHButton")));
    click(shownButton(continueButton()));
    const bool attached = m_road.isAttached();
    m_walk->picture(m_road.editor(), QStringLiteral("editor-with-meeting"));
    m_walk->picture(m_road.strip(), QStringLiteral("strip-with-meeting"));
    m_walk->step(attached && m_walk->sentSinceMark(meetingAction, schedulePrefix) == 1,
                 QStringLiteral("confirmed, the meeting is scheduled once and is in the appointment"));
    return attached;
}

bool EditorWalk::save() {
    m_walk->mark();
    press(m_road.editor(), Qt::Key_S, Qt::ControlModifier);
    const bool done =
        Walk::waitFor([this] { return m_road.saved() && !m_road.inFile(m_uid).ucCapabilities.isEmpty(); });
    const mailhost::Appointment now = m_road.inFile(m_uid);
    const QJsonObject kept = m_road.record(m_uid);
    m_key = kept.value(QStringLiteral("meetingKey")).toString();
    const QString url = kept.value(QStringLiteral("joinUrl")).toString();
    return m_walk->step(
        done && !m_key.isEmpty() && !url.isEmpty() && now.location.contains(url) &&
            now.bodyHtml.contains(url) && now.bodyHtml.contains(ownWords) &&
            now.location.startsWith(m_before.location),
        QStringLiteral("saved, the file has the join URL in the location, the invitation below what was "
                       "written, and the record"));
}

bool EditorWalk::reopen() {
    if (!m_walk->step(m_road.closeEditor(), QStringLiteral("the editor closes without a question")))
        return false;
    QString error;
    const bool again = m_road.host().openCalendar(&error);
    const bool opened = again && m_road.open(m_uid);
    m_walk->picture(m_road.editor(), QStringLiteral("editor-reopened"));
    return m_walk->step(opened && m_road.stripButton(removeButton()),
                        QStringLiteral("reopened from the file, the appointment shows its meeting"));
}

bool EditorWalk::changeASetting() {
    m_walk->mark();
    if (!click(m_road.stripButton(settingsButton())) ||
        !Walk::waitFor([] { return shownButton(continueButton()) != nullptr; }))
        return m_walk->step(false, QStringLiteral("\"%1\" opens the sheet").arg(settingsButton()));
    click(shown(QStringLiteral("enableJBHButton")));
    m_walk->picture(QApplication::activeModalWidget(), QStringLiteral("settings-changed"));
    click(shownButton(continueButton()));
    // Written back: the meeting has been read again after the update.
    const bool updated = Walk::waitFor([this] { return m_walk->answeredSinceMark(updateAnswer) == 1; }) &&
                         Walk::waitFor([this] { return m_walk->answeredSinceMark(readAnswer) == 2; });
    Walk::settle();
    press(m_road.editor(), Qt::Key_S, Qt::ControlModifier);
    const bool kept = Walk::waitFor([this] { return m_road.saved(); });
    const QJsonObject meeting = m_client->meeting(m_key);
    return m_walk->step(updated && kept && m_walk->sentSinceMark(meetingAction, updatePrefix) == 1 &&
                            !meeting.value(QStringLiteral("enableJBH")).toBool(),
                        QStringLiteral("a changed setting reaches the client with one update"));
}

bool EditorWalk::moveAndSave() {
    m_walk->mark();
    auto *time = m_road.control<QTimeEdit>(controls::startTimeField);
    time->setFocus();
    press(m_road.editor(), Qt::Key_Up);
    const bool moved = Walk::waitFor([this] { return !m_road.saved(); });
    press(m_road.editor(), Qt::Key_S, Qt::ControlModifier);
    const bool kept =
        Walk::waitFor([this] { return m_road.saved() && m_road.inFile(m_uid).start != m_before.start; });
    const qint64 start = m_client->meeting(m_key).value(QStringLiteral("startTime")).toInteger();
    return m_walk->step(moved && kept && m_walk->sentSinceMark(meetingAction, updatePrefix) == 1 &&
                            start == m_road.inFile(m_uid).start.value.toSecsSinceEpoch(),
                        QStringLiteral("moved and saved, the client gets one update with the new time"));
}

bool EditorWalk::saveUnchanged() {
    m_walk->mark();
    press(m_road.editor(), Qt::Key_S, Qt::ControlModifier);
    Walk::settle();
    Walk::waitFor([this] { return m_road.saved(); });
    return m_walk->step(m_road.saved() && m_walk->sentSinceMark(meetingAction, updatePrefix) == 0,
                        QStringLiteral("saved again unchanged, the client gets no update"));
}

bool EditorWalk::removeTheMeeting() {
    m_walk->mark();
    if (!click(m_road.stripButton(removeButton())))
        return m_walk->step(false, QStringLiteral("\"%1\" can be clicked").arg(removeButton()));
    const bool gone = Walk::waitFor([this] { return m_road.stripButton(addButton()) != nullptr; });
    Walk::settle();
    press(m_road.editor(), Qt::Key_S, Qt::ControlModifier);
    const bool kept =
        Walk::waitFor([this] { return m_road.saved() && m_road.inFile(m_uid).ucCapabilities.isEmpty(); });
    m_walk->picture(m_road.editor(), QStringLiteral("editor-after-removal"));
    const mailhost::Appointment now = m_road.inFile(m_uid);
    m_walk->step(gone && kept && m_walk->sentSinceMark(meetingAction, deletePrefix) == 1 &&
                     !now.bodyHtml.contains(QStringLiteral("MacVlBookmark")) && now.location.isEmpty() &&
                     now.bodyHtml.contains(ownWords) && m_client->meeting(m_key).isEmpty(),
                 QStringLiteral(
                     "removed and saved, client and file have no meeting, what was written is still there"));
    return m_road.closeEditor();
}

bool EditorWalk::send() {
    if (m_meetingUid.isEmpty()) {
        m_walk->comment(
            QStringLiteral("no meeting of one's own with attendees in the week: nothing is sent"));
        return true;
    }
    if (!m_walk->step(m_road.open(m_meetingUid), QStringLiteral("a meeting with attendees opens")) ||
        !m_road.askForMeeting())
        return false;
    click(shownButton(continueButton()));
    if (!m_road.isAttached())
        return m_walk->step(false, QStringLiteral("the meeting is added"));
    Walk::settle();
    m_walk->picture(m_road.editor(), QStringLiteral("meeting-with-attendees"));
    const int sequence = m_road.inFile(m_meetingUid).sequence;
    click(shown(controls::sendButton));
    const bool sent = Walk::waitFor([this] { return !m_road.editor(); });
    const QStringList messages = m_road.sentMessages();
    m_walk->step(sent && messages.size() == 1 && m_road.inFile(m_meetingUid).sequence == sequence + 1 &&
                     !m_road.record(m_meetingUid).isEmpty(),
                 QStringLiteral("sent, the message is in the outbox and the sequence went up"));
    m_walk->picture(shown(controls::mainWindow), QStringLiteral("main-window-after"));
    return sent;
}

} // namespace

bool walkTheEditor(Road &road) {
    return EditorWalk(road).walk();
}

} // namespace walkthrough
