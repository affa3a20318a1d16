#include "standin/walkthrough/Session.h"

#include "platform/services/Services.h"
#include "standin/mailhost/store/SampleCalendar.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/grid/EventTileView.h"
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
constexpr int launchMilliseconds = 30000;
} // namespace

QString pluginText(const QString &key) {
    QString text = platform::services().pluginBundle->localizedString(key, key, u"Localizable_prl"_s);
    return text.remove(u'&').trimmed();
}

Session::Session(const SessionOptions &options)
    : m_session(options)
    , m_out(QDir(options.out).filePath(u"host-"_s + options.hostVersion))
    , m_calendarPath(QDir(m_out).filePath(u"calendar.ics"_s))
    , m_source(options.calendar) {
    m_options.hostVersion = options.hostVersion;
    m_options.documentsFolder = stateFolder(u"Documents"_s);
    m_options.defaultsFolder = stateFolder(u"defaults"_s);
    m_options.outbox = QDir(m_out).filePath(u"outbox"_s);
    m_options.calendarPath = m_calendarPath;
}

QString Session::stateFolder(const QString &name) const {
    return QDir(m_session.state.isEmpty() ? m_folders.path() : m_session.state).filePath(name);
}

bool Session::copyCalendar() const {
    if (!m_source.isEmpty())
        return QFile::copy(m_source, m_calendarPath);
    const QByteArray sample = mailhost::sampleCalendar(QDate::currentDate());
    QFile file(m_calendarPath);
    return file.open(QIODevice::WriteOnly) && file.write(sample) == sample.size();
}

bool Session::start() {
    QDir().mkpath(m_out);
    QFile::remove(m_calendarPath);
    QDir(m_options.outbox).removeRecursively(); // of an earlier run
    if (!copyCalendar()) {
        std::fprintf(stderr, "The calendar %s cannot be copied to %s.\n", qPrintable(m_source),
                     qPrintable(m_calendarPath));
        return false;
    }
    m_host = std::make_unique<mailhost::HostApplication>(m_options);
    QString error;
    m_host->installDesktopServices();
    const bool installed = m_host->installBundle(&error);
    m_report = std::make_unique<Report>(m_out);
    if (m_session.kill)
        m_report->expect(*m_session.kill);
    m_host->start();
    const bool opened = installed && m_host->openCalendar(&error);
    m_host->show();
    if (!step(opened, u"the host opens the calendar "_s + error))
        return false;
    m_client = std::make_unique<RunningClient>(stateFolder(u"client/meetings.json"_s));
    if (!step(m_agent.start(), u"the plug-in agent runs in a process of its own"_s))
        return false;
    QString pluginError;
    if (!step(m_host->loadPlugin(&pluginError), u"the plug-in is loaded %1"_s.arg(pluginError)))
        return false;
    Report::waitFor([] { return shown(controls::mainWindow) != nullptr; });
    picture(shown(controls::mainWindow), u"main-window"_s);
    return pickAppointments();
}

// Picks an appointment without attendees and meetings with attendees: owned by the user, nearest to today,
// not recurring.
bool Session::pickAppointments() {
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
    return step(!m_uid.isEmpty(), u"the calendar has an appointment to use"_s);
}

// Makes an appointment if the calendar has none of the user.
QString Session::makeAppointment() {
    if (!openNew(u"Made for this run"_s) || !save())
        return {};
    const QString uid = editorController()->content()->UUID();
    return closeEditor() ? uid : QString();
}

mailhost::Appointment Session::inFile(const QString &uid, const QString &recurrenceId) const {
    QString error;
    const auto file = mailhost::CalendarFile::open(m_calendarPath, &error);
    const auto found = file ? file->find(uid, recurrenceId) : std::nullopt;
    return found ? *found : mailhost::Appointment();
}

QJsonObject Session::record(const QString &uid) const {
    return QJsonDocument::fromJson(inFile(uid).ucCapabilities.toUtf8()).object();
}

QString Session::meetingKey(const QString &uid) const {
    return record(uid).value(u"meetingKey"_s).toString();
}

QJsonObject Session::meetingOf(const QString &uid) const {
    return m_client->meeting(meetingKey(uid));
}

QStringList Session::sentMessages() const {
    return QDir(m_options.outbox).entryList({u"*.eml"_s}, QDir::Files);
}

QWidget *Session::mainWindow() const {
    const mailhost::MainWindowController *controller = m_host->mainWindowController();
    return controller ? controller->window() : nullptr;
}

// The identifier of an unchanged day of a series contains its date.
QDate Session::dayOf(const QString &uid, const QString &instanceId) const {
    const mailhost::Appointment stored = inFile(uid, instanceId);
    if (!stored.uid.isEmpty())
        return stored.start.value.toLocalTime().date();
    const QString format = u"yyyyMMdd'T'HHmmss"_s;
    QDateTime named = QDateTime::fromString(instanceId.left(15), format);
    if (instanceId.endsWith(u'Z'))
        named.setTimeSpec(Qt::UTC);
    return named.toLocalTime().date();
}

mailhost::CalendarGrid *Session::reveal(const QString &uid, const QString &instanceId) const {
    mailhost::MainWindowController *controller = m_host->mainWindowController();
    if (!controller)
        return nullptr;
    controller->showDay(dayOf(uid, instanceId));
    mailhost::CalendarGrid *grid = controller->mainWindow()->calendar();
    Report::settle();
    return grid->select(uid, instanceId) ? grid : nullptr;
}

mailhost::EditorViewController *Session::editorController() const {
    const auto open = mailhost::EditorWindowController::open();
    return open.isEmpty() ? nullptr : open.last()->editorWindow()->viewController();
}

QWidget *Session::editor() const {
    const auto open = mailhost::EditorWindowController::open();
    return open.isEmpty() ? nullptr : open.last()->window();
}

QWidget *Session::stripButton(const QString &text) const {
    QWidget *window = editor();
    if (!window)
        return nullptr;
    for (QAbstractButton *button : window->findChildren<QAbstractButton *>())
        if (button->isVisible() && button->accessibleName().startsWith(text))
            return button;
    return nullptr;
}

bool Session::open(const QString &uid) {
    const mailhost::CalendarGrid *grid = reveal(uid);
    mailhost::EventTileView *tile = grid ? grid->selectedTile() : nullptr;
    return tile && doubleClick(tile, tile->rect().center()) &&
           Report::waitFor([this] { return editor() != nullptr; }) && Report::waitFor([this] {
               return stripButton(ButtonText::add()) || stripButton(ButtonText::remove());
           });
}

bool Session::openNew(const QString &subject, const QString &attendee) const {
    click(shown(controls::newAppointmentButton));
    if (!Report::waitFor([this] { return editor() != nullptr; }) || !waitForStrip(ButtonText::add()))
        return false;
    // The proposed values are written when the field has the focus, so that they do not overwrite input.
    control<QLineEdit>(controls::subjectField)->setFocus();
    type(editor(), subject);
    if (attendee.isEmpty())
        return true;
    control<QLineEdit>(controls::attendeesField)->setFocus();
    return type(editor(), attendee);
}

QWidget *Session::strip() const {
    const QWidget *button = stripButton(ButtonText::add());
    if (!button)
        button = stripButton(ButtonText::remove());
    return button ? button->parentWidget() : nullptr;
}

bool Session::waitUntilClosed() const {
    const bool closed = Report::waitFor([this] { return !editor(); });
    Report::settle(closingSeconds);
    return closed;
}

bool Session::closeEditor() const {
    press(editor(), Qt::Key_W, Qt::ControlModifier);
    return waitUntilClosed();
}

bool Session::discardEditor() const {
    press(editor(), Qt::Key_W, Qt::ControlModifier);
    Report::waitFor([this] { return !editor() || shown(controls::discardChangesButton); });
    if (QWidget *discard = shown(controls::discardChangesButton))
        click(discard);
    return waitUntilClosed();
}

bool Session::isSaved() const {
    return editorController() && !editorController()->isDirty();
}

bool Session::save() const {
    press(editor(), Qt::Key_S, Qt::ControlModifier);
    Report::settle();
    return Report::waitFor([this] { return isSaved(); });
}

bool Session::send() const {
    click(shown(controls::sendButton));
    return waitUntilClosed();
}

bool Session::launchFromAlert(const QString &what) {
    click(shownButton(ButtonText::launch()));
    return step(Report::waitFor([] { return RunningClient::isRunning(); }, launchMilliseconds), what);
}

bool Session::askForMeeting() {
    m_report->mark();
    if (!click(stripButton(ButtonText::add())))
        return step(false, u"the button \"%1\" can be clicked"_s.arg(ButtonText::add()));
    if (!waitForButton(ButtonText::confirm()))
        return step(false, u"the settings sheet opens"_s);
    step(true, u"a click on \"%1\" opens the settings sheet"_s.arg(ButtonText::add()));
    return true;
}

bool Session::confirmSheet() const {
    click(shownButton(ButtonText::confirm()));
    const bool attached =
        waitForStrip(ButtonText::remove()) && Report::waitFor([this] {
            return control<QLineEdit>(controls::locationField)->text().contains(u"https://"_s);
        });
    Report::settle();
    return attached;
}

bool Session::waitForStrip(const QString &text) const {
    return Report::waitFor([this, &text] { return stripButton(text) != nullptr; });
}

bool Session::giveMeeting(const QString &uid) {
    return open(uid) && giveMeetingToOpen(uid);
}

bool Session::giveMeetingToOpen(const QString &uid) {
    if (!click(stripButton(ButtonText::add())) || !waitForButton(ButtonText::confirm()))
        return false;
    if (!confirmSheet())
        return false;
    if (shown(controls::sendButton))
        return send();
    return save() && !meetingKey(uid).isEmpty() && closeEditor();
}

bool Session::pressInMain(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    return press(mainWindow(), key, modifiers);
}

bool Session::shows(const QString &uid) const {
    const mailhost::CalendarGrid *grid = reveal(uid);
    if (!grid)
        return !isInFile(uid);
    const std::optional<mailhost::Occurrence> shown = grid->selected();
    const mailhost::Appointment stored = inFile(uid);
    return shown && shown->start == stored.start.value && shown->end == stored.end.value &&
           shown->summary == stored.summary;
}

} // namespace walkthrough
