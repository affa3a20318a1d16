#include "standin/walkthrough/Road.h"

#include "platform/services/Services.h"
#include "standin/mailhost/store/SampleCalendar.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/EventTileView.h"
#include "standin/walkthrough/Input.h"

#include <QAbstractButton>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <algorithm>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {
constexpr double closingSeconds = 0.1; // the plug-in forgets a closed editor a hundredth of a second later
} // namespace

QString words(const QString &key) {
    QString text =
        platform::services().pluginBundle->localizedString(key, key, QStringLiteral("Localizable_prl"));
    return text.remove(u'&').trimmed();
}

Road::Road(const RoadOptions &options)
    : m_road(options)
    , m_out(QDir(options.out).filePath(QStringLiteral("host-") + options.hostVersion))
    , m_calendarPath(QDir(m_out).filePath(QStringLiteral("calendar.ics")))
    , m_source(options.calendar) {
    m_options.hostVersion = options.hostVersion;
    m_options.documentsFolder = stateFolder(QStringLiteral("Documents"));
    m_options.defaultsFolder = stateFolder(QStringLiteral("defaults"));
    m_options.outbox = QDir(m_out).filePath(QStringLiteral("outbox"));
    m_options.calendarPath = m_calendarPath;
}

QString Road::stateFolder(const QString &name) const {
    return QDir(m_road.state.isEmpty() ? m_folders.path() : m_road.state).filePath(name);
}

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
    if (m_road.mishap)
        m_walk->expect(*m_road.mishap);
    m_host->start();
    const bool opened = installed && m_host->openCalendar(&error);
    m_host->show();
    if (!m_walk->step(opened, QStringLiteral("the host opens the calendar ") + error))
        return false;
    m_client = std::make_unique<RunningClient>(stateFolder(QStringLiteral("client/meetings.json")));
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
        QString &uid = appointment.attendees.isEmpty() ? m_uid
                       : m_meetingUid.isEmpty()        ? m_meetingUid
                                                       : m_otherMeetingUid;
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
    const QString uid = editorController()->content()->UUID();
    return closeEditor() ? uid : QString();
}

mailhost::Appointment Road::inFile(const QString &uid, const QString &recurrenceId) const {
    QString error;
    const auto file = mailhost::CalendarFile::open(m_calendarPath, &error);
    const auto found = file ? file->find(uid, recurrenceId) : std::nullopt;
    return found ? *found : mailhost::Appointment();
}

QJsonObject Road::record(const QString &uid) const {
    return QJsonDocument::fromJson(inFile(uid).ucCapabilities.toUtf8()).object();
}

QString Road::meetingKey(const QString &uid) const {
    return record(uid).value(QStringLiteral("meetingKey")).toString();
}

QJsonObject Road::meetingOf(const QString &uid) const {
    return m_client->meeting(meetingKey(uid));
}

QStringList Road::sentMessages() const {
    return QDir(m_options.outbox).entryList({QStringLiteral("*.eml")}, QDir::Files);
}

QWidget *Road::mainWindow() const {
    const mailhost::MainWindowController *controller = m_host->mainWindowController();
    return controller ? controller->window() : nullptr;
}

// A day of a series that is not changed is where its name says.
QDate Road::dayOf(const QString &uid, const QString &instanceId) const {
    const mailhost::Appointment stored = inFile(uid, instanceId);
    if (!stored.uid.isEmpty())
        return stored.start.value.toLocalTime().date();
    const QString format = QStringLiteral("yyyyMMdd'T'HHmmss");
    QDateTime named = QDateTime::fromString(instanceId.left(15), format);
    if (instanceId.endsWith(u'Z'))
        named.setTimeSpec(Qt::UTC);
    return named.toLocalTime().date();
}

mailhost::CalendarGrid *Road::reveal(const QString &uid, const QString &instanceId) const {
    mailhost::MainWindowController *controller = m_host->mainWindowController();
    if (!controller)
        return nullptr;
    controller->showDay(dayOf(uid, instanceId));
    mailhost::CalendarGrid *grid = controller->mainWindow()->calendar();
    Walk::settle();
    return grid->select(uid, instanceId) ? grid : nullptr;
}

mailhost::EditorViewController *Road::editorController() const {
    const auto open = mailhost::EditorWindowController::open();
    return open.isEmpty() ? nullptr : open.last()->editorWindow()->viewController();
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
    const mailhost::CalendarGrid *grid = reveal(uid);
    mailhost::EventTileView *tile = grid ? grid->selectedTile() : nullptr;
    return tile && doubleClick(tile, tile->rect().center()) &&
           Walk::waitFor([this] { return editor() != nullptr; }) &&
           Walk::waitFor([this] { return stripButton(addButton()) || stripButton(removeButton()); });
}

bool Road::openNew(const QString &subject, const QString &attendee) const {
    click(shown(controls::newAppointmentButton));
    if (!Walk::waitFor([this] { return editor() != nullptr; }) ||
        !Walk::waitFor([this] { return stripButton(addButton()) != nullptr; }))
        return false;
    // What a new appointment offers is written by then, so that nothing is lost.
    control<QLineEdit>(controls::subjectField)->setFocus();
    type(editor(), subject);
    if (attendee.isEmpty())
        return true;
    control<QLineEdit>(controls::attendeesField)->setFocus();
    return type(editor(), attendee);
}

QWidget *Road::strip() const {
    const QWidget *button = stripButton(addButton());
    if (!button)
        button = stripButton(removeButton());
    return button ? button->parentWidget() : nullptr;
}

bool Road::closeEditor() const {
    press(editor(), Qt::Key_W, Qt::ControlModifier);
    const bool closed = Walk::waitFor([this] { return !editor(); });
    Walk::settle(closingSeconds);
    return closed;
}

bool Road::discardEditor() const {
    press(editor(), Qt::Key_W, Qt::ControlModifier);
    Walk::waitFor([this] { return !editor() || shown(controls::discardChangesButton); });
    if (QWidget *discard = shown(controls::discardChangesButton))
        click(discard);
    const bool closed = Walk::waitFor([this] { return !editor(); });
    Walk::settle(closingSeconds);
    return closed;
}

bool Road::saved() const {
    return editorController() && !editorController()->isDirty();
}

bool Road::askForMeeting() {
    m_walk->mark();
    if (!click(stripButton(addButton())))
        return m_walk->step(false, QStringLiteral("the button \"%1\" can be clicked").arg(addButton()));
    if (!Walk::waitFor([] { return shownButton(continueButton()) != nullptr; }))
        return m_walk->step(false, QStringLiteral("the settings sheet opens"));
    m_walk->step(true, QStringLiteral("a click on \"%1\" opens the settings sheet").arg(addButton()));
    return true;
}

bool Road::isAttached() const {
    return Walk::waitFor([this] { return stripButton(removeButton()) != nullptr; }) && Walk::waitFor([this] {
               return control<QLineEdit>(controls::locationField)
                   ->text()
                   .contains(QStringLiteral("https://"));
           });
}

bool Road::giveMeeting(const QString &uid) {
    return open(uid) && giveMeetingToOpen(uid);
}

bool Road::giveMeetingToOpen(const QString &uid) {
    if (!click(stripButton(addButton())) ||
        !Walk::waitFor([] { return shownButton(continueButton()) != nullptr; }))
        return false;
    click(shownButton(continueButton()));
    if (!isAttached())
        return false;
    Walk::settle();
    if (QWidget *send = shown(controls::sendButton)) {
        click(send);
        const bool closed = Walk::waitFor([this] { return !editor(); });
        Walk::settle(closingSeconds);
        return closed;
    }
    press(editor(), Qt::Key_S, Qt::ControlModifier);
    return Walk::waitFor([this, &uid] { return saved() && !meetingKey(uid).isEmpty(); }) && closeEditor();
}

bool Road::pressInMain(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    return press(mainWindow(), key, modifiers);
}

bool Road::shows(const QString &uid) const {
    const mailhost::CalendarGrid *grid = reveal(uid);
    if (!grid)
        return !isInFile(uid);
    const std::optional<mailhost::Occurrence> shown = grid->selected();
    const mailhost::Appointment stored = inFile(uid);
    return shown && shown->start == stored.start.value && shown->end == stored.end.value &&
           shown->summary == stored.summary;
}

} // namespace walkthrough
