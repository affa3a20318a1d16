#include "standin/walkthrough/RoadSteps.h"

#include "platform/services/Services.h"
#include "standin/mailhost/store/CalendarFile.h"
#include "standin/mailhost/store/SampleCalendar.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/EditorWindow.h"
#include "standin/mailhost/windows/HostApplication.h"
#include "standin/mailhost/windows/WeekList.h"
#include "standin/walkthrough/Desktop.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Walk.h"

#include <QApplication>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextEdit>
#include <QTimeEdit>
#include <algorithm>

namespace walkthrough {

namespace {

namespace controls = mailhost::controls;

constexpr double closingSeconds = 0.1; // the plug-in forgets a closed editor a hundredth of a second later
constexpr int launchMilliseconds = 30000;
constexpr quint32 meetingAction = 3;
constexpr quint32 updateAnswer = 2;
constexpr quint32 readAnswer = 4;
const QString schedulePrefix = QStringLiteral("1;");
const QString updatePrefix = QStringLiteral("2;");
const QString deletePrefix = QStringLiteral("3;");
const QString ownWords = QStringLiteral("Bring the figures.");

// The plug-in's words, as its English table has them.
const QString addButton = QStringLiteral("Add video meeting");
const QString removeButton = QStringLiteral("Remove meeting");
const QString launchButton = QStringLiteral("Launch Parlo Meetings");
const QString settingsButton = QStringLiteral("Change settings");

class Road {
public:
    Road(const QString &version, const QString &out, const QString &calendar)
        : m_out(out)
        , m_calendarPath(QDir(out).filePath(QStringLiteral("calendar.ics")))
        , m_source(calendar) {
        m_options.hostVersion = version;
        m_options.documentsFolder = m_folders.filePath(QStringLiteral("Documents"));
        m_options.defaultsFolder = m_folders.filePath(QStringLiteral("defaults"));
        m_options.outbox = QDir(out).filePath(QStringLiteral("outbox"));
        m_options.calendarPath = m_calendarPath;
    }

    int walk() {
        if (!start())
            return 1;
        const bool done = launchTheClient() && addThroughTheSheet() && save() && reopen() &&
                          changeASetting() && moveAndSave() && saveUnchanged() && removeTheMeeting() &&
                          send();
        if (!done)
            m_walk->comment(QStringLiteral("the steps after this one were not walked"));
        return done && !m_walk->failed() ? 0 : 1;
    }

private:
    [[nodiscard]] bool copyCalendar() const;
    bool start();
    bool open(const QString &uid);
    bool launchTheClient();
    bool addThroughTheSheet();
    bool save();
    bool reopen();
    bool changeASetting();
    bool moveAndSave();
    bool saveUnchanged();
    bool removeTheMeeting();
    bool send();

    bool pickAppointments();
    QString makeAppointment();
    bool addMeeting();
    [[nodiscard]] bool isAttached() const;
    [[nodiscard]] mailhost::Appointment inFile(const QString &uid) const;
    [[nodiscard]] QJsonObject record(const QString &uid) const;
    [[nodiscard]] QWidget *editor() const;
    template<typename T>
    [[nodiscard]] T *control(const QString &name) const {
        return editor() ? editor()->findChild<T *>(name) : nullptr;
    }
    [[nodiscard]] QWidget *stripButton(const QString &text) const;
    [[nodiscard]] bool closeEditor() const;
    [[nodiscard]] bool saved() const;

    QTemporaryDir m_folders;
    QString m_out;
    QString m_calendarPath;
    QString m_source;
    mailhost::HostOptions m_options;
    std::unique_ptr<mailhost::HostApplication> m_host;
    std::unique_ptr<Walk> m_walk;
    std::unique_ptr<RunningClient> m_client;
    AgentProcess m_agent;
    QString m_uid;        // of the appointment that the road is walked with
    QString m_meetingUid; // of one with attendees
    mailhost::Appointment m_before;
    QString m_key;
};

bool Road::copyCalendar() const {
    if (!m_source.isEmpty())
        return QFile::copy(m_source, m_calendarPath);
    const QByteArray sample = mailhost::sampleCalendar(QDate::currentDate());
    QFile file(m_calendarPath);
    return file.open(QIODevice::WriteOnly) && file.write(sample) == sample.size();
}

bool Road::start() {
    QDir().mkpath(m_out);
    QFile::remove(m_calendarPath);
    QDir(m_options.outbox).removeRecursively(); // of an earlier walk
    if (!copyCalendar()) {
        std::fprintf(stderr, "The calendar %s cannot be copied to %s.\n", qPrintable(m_source),
                     qPrintable(m_calendarPath));
        return false;
    }
    m_host = std::make_unique<mailhost::HostApplication>(m_options);
    QString error;
    const bool installed = m_host->installBundle(&error);
    m_host->installDesktopServices();
    m_walk = std::make_unique<Walk>(m_out);
    m_host->start();
    const bool opened = installed && m_host->openCalendar(&error);
    m_host->show();
    if (!m_walk->step(opened, QStringLiteral("the host opens the calendar ") + error))
        return false;
    m_client = std::make_unique<RunningClient>(m_folders.filePath(QStringLiteral("client/meetings.json")));
    if (!m_walk->step(m_agent.start(), QStringLiteral("the plug-in agent runs in a process of its own")))
        return false;
    QString pluginError;
    if (!m_walk->step(m_host->loadPlugin(&pluginError),
                      QStringLiteral("the plug-in is loaded %1").arg(pluginError)))
        return false;
    Walk::waitFor([] { return shown(controls::mainWindow) != nullptr; });
    m_walk->picture(shown(controls::mainWindow), QStringLiteral("main-window"));
    return pickAppointments();
}

// One appointment of one's own without attendees, and a meeting of one's own with some, those nearest to
// today; neither part of a series.
bool Road::pickAppointments() {
    const QDateTime now = QDateTime::currentDateTime();
    QList<mailhost::Appointment> all = m_host->session()->file().appointments();
    std::sort(all.begin(), all.end(), [&now](const mailhost::Appointment &a, const mailhost::Appointment &b) {
        return std::abs(a.start.value.secsTo(now)) < std::abs(b.start.value.secsTo(now));
    });
    for (const mailhost::Appointment &appointment : all) {
        if (!appointment.recurrenceRule.isEmpty() || !appointment.recurrenceId.isEmpty() ||
            appointment.start.kind == mailhost::CalendarTime::Kind::Date ||
            !appointment.ucCapabilities.isEmpty() || !m_host->session()->isOwner(appointment))
            continue;
        QString &uid = appointment.attendees.isEmpty() ? m_uid : m_meetingUid;
        if (uid.isEmpty())
            uid = appointment.uid;
    }
    if (m_uid.isEmpty())
        m_uid = makeAppointment();
    return m_walk->step(!m_uid.isEmpty(), QStringLiteral("the calendar has an appointment to walk with"));
}

// For a calendar that has none of one's own.
QString Road::makeAppointment() {
    click(shown(controls::newAppointmentButton));
    if (!Walk::waitFor([this] { return editor() != nullptr; }))
        return {};
    type(editor(), QStringLiteral("Walk through"));
    press(editor(), Qt::Key_S, Qt::ControlModifier);
    Walk::waitFor([this] { return saved(); });
    const mailhost::EditorWindow *window = mailhost::EditorWindowController::open().last()->editorWindow();
    const QString uid = window->viewController()->content()->UUID();
    return closeEditor() ? uid : QString();
}

mailhost::Appointment Road::inFile(const QString &uid) const {
    QString error;
    const auto file = mailhost::CalendarFile::open(m_calendarPath, &error);
    const auto found = file ? file->find(uid) : std::nullopt;
    return found ? *found : mailhost::Appointment();
}

QJsonObject Road::record(const QString &uid) const {
    return QJsonDocument::fromJson(inFile(uid).ucCapabilities.toUtf8()).object();
}

QWidget *Road::editor() const {
    const auto open = mailhost::EditorWindowController::open();
    return open.isEmpty() ? nullptr : open.last()->window();
}

QWidget *Road::stripButton(const QString &text) const {
    QWidget *window = editor();
    if (!window)
        return nullptr;
    for (QAbstractButton *button : window->findChildren<QAbstractButton *>())
        if (button->isVisible() && button->accessibleName().startsWith(text))
            return button;
    return nullptr;
}

bool Road::open(const QString &uid) {
    QWidget *window = shown(controls::mainWindow);
    m_host->mainWindowController()->showWeek(inFile(uid).start.value.date());
    auto *list = window ? window->findChild<mailhost::WeekList *>(controls::weekList) : nullptr;
    if (!list || !list->select(uid))
        return false;
    list->scrollToItem(list->currentItem());
    const QRect row = list->visualItemRect(list->currentItem());
    return doubleClick(list->viewport(), row.center()) &&
           Walk::waitFor([this] { return editor() != nullptr; }) &&
           Walk::waitFor([this] { return stripButton(addButton) || stripButton(removeButton); });
}

bool Road::closeEditor() const {
    press(editor(), Qt::Key_W, Qt::ControlModifier);
    const bool closed = Walk::waitFor([this] { return !editor(); });
    Walk::settle(closingSeconds);
    return closed;
}

bool Road::saved() const {
    const auto open = mailhost::EditorWindowController::open();
    return !open.isEmpty() && !open.last()->editorWindow()->viewController()->isDirty();
}

// From the click on the strip's button to the meeting in the appointment.
bool Road::addMeeting() {
    m_walk->mark();
    if (!click(stripButton(addButton)))
        return m_walk->step(false, QStringLiteral("the button \"%1\" can be clicked").arg(addButton));
    if (!Walk::waitFor([] { return shownButton(QStringLiteral("Continue")) != nullptr; }))
        return m_walk->step(false, QStringLiteral("the settings sheet opens"));
    m_walk->step(true, QStringLiteral("a click on \"%1\" opens the settings sheet").arg(addButton));
    return true;
}

// Nobody has started the client yet. The newer host asks the agent to do it, the older one starts it itself.
bool Road::launchTheClient() {
    m_before = inFile(m_uid);
    if (!m_walk->step(open(m_uid), QStringLiteral("a double click opens \"%1\"").arg(m_before.summary)))
        return false;
    click(stripButton(addButton));
    if (!m_walk->step(Walk::waitFor([] { return shownButton(launchButton) != nullptr; }),
                      QStringLiteral("the client is not running: it is said, and launching it is offered")))
        return false;
    m_walk->picture(QApplication::activeModalWidget(), QStringLiteral("client-not-running"));
    click(shownButton(launchButton));
    return m_walk->step(Walk::waitFor([] { return RunningClient::isRunning(); }, launchMilliseconds),
                        QStringLiteral("\"%1\" starts it in a process of its own").arg(launchButton));
}

// Shown by the strip and written into the appointment.
bool Road::isAttached() const {
    return Walk::waitFor([this] { return stripButton(removeButton) != nullptr; }) && Walk::waitFor([this] {
               return control<QLineEdit>(controls::locationField)
                   ->text()
                   .contains(QStringLiteral("https://"));
           });
}

bool Road::addThroughTheSheet() {
    auto *body = control<QTextEdit>(controls::bodyEditor);
    if (!click(body->viewport()))
        return m_walk->step(false, QStringLiteral("the body can be clicked"));
    press(editor(), Qt::Key_End, Qt::ControlModifier);
    type(editor(), QStringLiteral(" ") + ownWords);
    m_walk->picture(editor(), QStringLiteral("editor-before"));
    if (!addMeeting())
        return false;
    m_walk->picture(editor(), QStringLiteral("editor-behind-sheet"));
    m_walk->picture(QApplication::activeModalWidget(), QStringLiteral("settings-sheet"));
    click(shown(QStringLiteral("enableJBHButton")));
    click(shownButton(QStringLiteral("Continue")));
    const bool attached = isAttached();
    m_walk->picture(editor(), QStringLiteral("editor-with-meeting"));
    m_walk->step(attached && m_walk->sentSinceMark(meetingAction, schedulePrefix) == 1,
                 QStringLiteral("confirmed, the meeting is scheduled once and is in the appointment"));
    return attached;
}

bool Road::save() {
    m_walk->mark();
    press(editor(), Qt::Key_S, Qt::ControlModifier);
    const bool done = Walk::waitFor([this] { return saved() && !inFile(m_uid).ucCapabilities.isEmpty(); });
    const mailhost::Appointment now = inFile(m_uid);
    const QJsonObject kept = record(m_uid);
    m_key = kept.value(QStringLiteral("meetingKey")).toString();
    const QString url = kept.value(QStringLiteral("joinUrl")).toString();
    return m_walk->step(
        done && !m_key.isEmpty() && !url.isEmpty() && now.location.contains(url) &&
            now.bodyHtml.contains(url) && now.bodyHtml.contains(ownWords) &&
            now.location.startsWith(m_before.location),
        QStringLiteral("saved, the file has the join URL in the location, the invitation below what was "
                       "written, and the record"));
}

bool Road::reopen() {
    if (!m_walk->step(closeEditor(), QStringLiteral("the editor closes without a question")))
        return false;
    QString error;
    const bool again = m_host->openCalendar(&error);
    const bool opened = again && open(m_uid);
    m_walk->picture(editor(), QStringLiteral("editor-reopened"));
    return m_walk->step(opened && stripButton(removeButton),
                        QStringLiteral("reopened from the file, the appointment shows its meeting"));
}

bool Road::changeASetting() {
    m_walk->mark();
    if (!click(stripButton(settingsButton)) ||
        !Walk::waitFor([] { return shownButton(QStringLiteral("Continue")) != nullptr; }))
        return m_walk->step(false, QStringLiteral("\"%1\" opens the sheet").arg(settingsButton));
    click(shown(QStringLiteral("enableJBHButton")));
    m_walk->picture(QApplication::activeModalWidget(), QStringLiteral("settings-changed"));
    click(shownButton(QStringLiteral("Continue")));
    // Written back: the meeting has been read again after the update.
    const bool updated = Walk::waitFor([this] { return m_walk->answeredSinceMark(updateAnswer) == 1; }) &&
                         Walk::waitFor([this] { return m_walk->answeredSinceMark(readAnswer) == 2; });
    Walk::settle();
    press(editor(), Qt::Key_S, Qt::ControlModifier);
    const bool kept = Walk::waitFor([this] { return saved(); });
    const QJsonObject meeting = m_client->meeting(m_key);
    return m_walk->step(updated && kept && m_walk->sentSinceMark(meetingAction, updatePrefix) == 1 &&
                            !meeting.value(QStringLiteral("enableJBH")).toBool(),
                        QStringLiteral("a changed setting reaches the client with one update"));
}

bool Road::moveAndSave() {
    m_walk->mark();
    auto *time = control<QTimeEdit>(controls::startTimeField);
    time->setFocus();
    press(editor(), Qt::Key_Up);
    const bool moved = Walk::waitFor([this] { return !saved(); });
    press(editor(), Qt::Key_S, Qt::ControlModifier);
    const bool kept = Walk::waitFor([this] { return saved() && inFile(m_uid).start != m_before.start; });
    const qint64 start = m_client->meeting(m_key).value(QStringLiteral("startTime")).toInteger();
    return m_walk->step(moved && kept && m_walk->sentSinceMark(meetingAction, updatePrefix) == 1 &&
                            start == inFile(m_uid).start.value.toSecsSinceEpoch(),
                        QStringLiteral("moved and saved, the client gets one update with the new time"));
}

bool Road::saveUnchanged() {
    m_walk->mark();
    press(editor(), Qt::Key_S, Qt::ControlModifier);
    Walk::settle();
    Walk::waitFor([this] { return saved(); });
    return m_walk->step(saved() && m_walk->sentSinceMark(meetingAction, updatePrefix) == 0,
                        QStringLiteral("saved again unchanged, the client gets no update"));
}

bool Road::removeTheMeeting() {
    m_walk->mark();
    if (!click(stripButton(removeButton)))
        return m_walk->step(false, QStringLiteral("\"%1\" can be clicked").arg(removeButton));
    const bool gone = Walk::waitFor([this] { return stripButton(addButton) != nullptr; });
    Walk::settle();
    press(editor(), Qt::Key_S, Qt::ControlModifier);
    const bool kept = Walk::waitFor([this] { return saved() && inFile(m_uid).ucCapabilities.isEmpty(); });
    m_walk->picture(editor(), QStringLiteral("editor-after-removal"));
    const mailhost::Appointment now = inFile(m_uid);
    m_walk->step(gone && kept && m_walk->sentSinceMark(meetingAction, deletePrefix) == 1 &&
                     !now.bodyHtml.contains(QStringLiteral("MacVlBookmark")) && now.location.isEmpty() &&
                     now.bodyHtml.contains(ownWords) && m_client->meeting(m_key).isEmpty(),
                 QStringLiteral(
                     "removed and saved, client and file have no meeting, what was written is still there"));
    return closeEditor();
}

bool Road::send() {
    if (m_meetingUid.isEmpty()) {
        m_walk->comment(
            QStringLiteral("no meeting of one's own with attendees in the week: nothing is sent"));
        return true;
    }
    if (!m_walk->step(open(m_meetingUid), QStringLiteral("a meeting with attendees opens")) || !addMeeting())
        return false;
    click(shownButton(QStringLiteral("Continue")));
    if (!isAttached())
        return m_walk->step(false, QStringLiteral("the meeting is added"));
    Walk::settle();
    m_walk->picture(editor(), QStringLiteral("meeting-with-attendees"));
    const int sequence = inFile(m_meetingUid).sequence;
    click(shown(controls::sendButton));
    const bool sent = Walk::waitFor([this] { return !editor(); });
    const QStringList messages = QDir(m_options.outbox).entryList({QStringLiteral("*.eml")}, QDir::Files);
    m_walk->step(sent && messages.size() == 1 && inFile(m_meetingUid).sequence == sequence + 1 &&
                     !record(m_meetingUid).isEmpty(),
                 QStringLiteral("sent, the message is in the outbox and the sequence went up"));
    m_walk->picture(shown(controls::mainWindow), QStringLiteral("main-window-after"));
    return sent;
}

} // namespace

int walkTheRoad(const QString &hostVersion, const QString &out, const QString &calendar) {
    Road road(hostVersion, QDir(out).filePath(QStringLiteral("host-") + hostVersion), calendar);
    return road.walk();
}

} // namespace walkthrough
