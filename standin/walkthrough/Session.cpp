#include "standin/walkthrough/Session.h"

#include "standin/mailhost/store/SampleCalendar.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/grid/EventTileView.h"
#include "standin/support/BusNames.h"

#include <QDir>
#include <QJsonDocument>
#include <QLineEdit>
#include <QMessageBox>
#include <algorithm>

namespace walkthrough {

namespace controls = mailhost::controls;
namespace names = standin::names;

namespace {

constexpr double closingSeconds = 0.1; // the plug-in forgets a closed editor a hundredth of a second later
constexpr int startMilliseconds = 20'000;
constexpr int launchMilliseconds = 30'000;

QString outFolder(const SessionOptions &options) {
    return QDir(options.out).filePath(u"host-"_s + options.hostVersion);
}

mailhost::HostOptions hostOptions(const SessionOptions &options, const QDir &state) {
    const QDir out(outFolder(options));
    mailhost::HostOptions host;
    host.hostVersion = options.hostVersion;
    host.documentsFolder = state.filePath(u"Documents"_s);
    host.defaultsFolder = state.filePath(u"defaults"_s);
    host.outbox = out.filePath(u"outbox"_s);
    host.calendarPath = out.filePath(u"calendar.ics"_s);
    return host;
}

// The identifier of an unchanged day of a series contains its date.
QDate dayOf(const mailhost::Appointment &stored, const QString &instanceId) {
    if (!stored.uid.isEmpty())
        return stored.start.value.toLocalTime().date();
    QDateTime named = QDateTime::fromString(instanceId.left(15), u"yyyyMMdd'T'HHmmss"_s);
    if (instanceId.endsWith(u'Z'))
        named.setTimeSpec(Qt::UTC);
    return named.toLocalTime().date();
}

bool waitUntilClosed() {
    const bool closed = waitFor([] { return !Session::editor(); });
    settle(closingSeconds);
    return closed;
}

} // namespace

bool looksLike(const mailhost::Appointment &one, const mailhost::Appointment &other) {
    return one.start.value == other.start.value && one.end.value == other.end.value &&
           one.summary == other.summary;
}

Session::Session(const SessionOptions &options)
    : Report(outFolder(options), options.kill)
    , m_session(options)
    , m_clientData(QDir(isFresh() ? m_folders.path() : options.state).filePath(u"client/meetings.json"_s))
    , m_host(hostOptions(options, QDir(isFresh() ? m_folders.path() : options.state))) {
    qputenv("PARLO_CLIENT_DATA", m_clientData.toUtf8());
}

Session::~Session() {
    endClient();
}

bool Session::copyCalendar() const {
    QDir().mkpath(outFolder(m_session));
    QDir(m_host.options().outbox).removeRecursively(); // of an earlier run
    QFile file(m_host.options().calendarPath);
    file.remove();
    if (!m_session.calendar.isEmpty())
        return QFile::copy(m_session.calendar, file.fileName());
    const QByteArray sample = mailhost::sampleCalendar(QDate::currentDate());
    return file.open(QIODevice::WriteOnly) && file.write(sample) == sample.size();
}

void Session::start() {
    m_host.installDesktopServices(); // first: the destructor uses them even after a failed step
    observe([this] { killWhenDue(); });
    need(copyCalendar(), u"the calendar %1 is copied to %2"_s.arg(m_session.calendar, m_session.out));
    QString error;
    const bool installed = m_host.installBundle(&error);
    m_host.start();
    const bool opened = installed && m_host.openCalendar(&error);
    m_host.show();
    step(opened, u"the host opens the calendar "_s + error);
    const platform::Workspace &workspace = *platform::services().workspace;
    m_agent.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    step(m_agent.run(workspace.executablePath(workspace.pathForBundleIdentifier(names::agent))) &&
             waitFor([] { return standin::isRunning(names::agent); }, startMilliseconds),
         u"the plug-in agent runs in a process of its own"_s);
    const bool loaded = m_host.loadPlugin(&error);
    step(loaded, u"the plug-in is loaded "_s + error);
    waitFor([this] { return mainWindow()->isVisible(); });
    picture(mainWindow(), u"main-window"_s);
    pickAppointments();
}

// Owned by the user, nearest to today, not recurring. Makes an appointment if the calendar has none of the
// user.
void Session::pickAppointments() {
    const QDateTime now = QDateTime::currentDateTime();
    QList<mailhost::Appointment> all = m_host.session()->file().appointments();
    std::ranges::sort(all, {}, [&now](const mailhost::Appointment &appointment) {
        return std::abs(appointment.start.value.secsTo(now));
    });
    for (const mailhost::Appointment &appointment : all) {
        if (!appointment.recurrenceRule.isEmpty() || !appointment.recurrenceId.isEmpty() ||
            appointment.start.kind == mailhost::CalendarTime::Kind::Date ||
            !appointment.ucCapabilities.isEmpty() || !m_host.session()->isOwner(appointment))
            continue;
        QString &uid = appointment.attendees.isEmpty() ? m_picked.plain
                       : m_picked.meeting.isEmpty()    ? m_picked.meeting
                                                       : m_picked.otherMeeting;
        if (uid.isEmpty())
            uid = appointment.uid;
    }
    bool hasOne = !m_picked.plain.isEmpty();
    if (!hasOne && openNew(u"Made for this run"_s) && save()) {
        m_picked.plain = editor()->viewController()->content()->UUID();
        hasOne = closeEditor();
    }
    step(hasOne, u"the calendar has an appointment to use"_s);
}

mailhost::Appointment Session::inFile(const QString &uid, const QString &recurrenceId) const {
    QString error;
    const auto file = mailhost::CalendarFile::open(m_host.options().calendarPath, &error);
    return file ? file->find(uid, recurrenceId).value_or(mailhost::Appointment()) : mailhost::Appointment();
}

QJsonObject Session::record(const QString &uid) const {
    return QJsonDocument::fromJson(inFile(uid).ucCapabilities.toUtf8()).object();
}

QString Session::meetingKey(const QString &uid) const {
    return record(uid).value(u"meetingKey"_s).toString();
}

qsizetype Session::mailsInOutbox() const {
    return QDir(m_host.options().outbox).entryList({u"*.eml"_s}, QDir::Files).size();
}

bool Session::isClientRunning() {
    return standin::isRunning(names::client);
}

void Session::tell(const QString &rule) {
    standin::post(names::control, {{names::controlRuleKey, rule}});
    settle(0.2);
}

void Session::endClient() {
    tell(names::controlExit);
    waitFor([] { return !isClientRunning(); });
}

void Session::launchClient(const QString &what) {
    const bool clicked = click(shownButton(buttons::launch));
    step(clicked && waitFor(isClientRunning, launchMilliseconds), what);
}

QJsonObject Session::clientMeeting(const QString &key) const {
    QFile file(m_clientData);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll())["meetings"][key].toObject();
}

mailhost::MainWindow *Session::mainWindow() const {
    const mailhost::MainWindowController *controller = m_host.mainWindowController();
    return controller ? controller->mainWindow() : nullptr;
}

mailhost::CalendarGrid *Session::reveal(const QString &uid, const QString &instanceId) const {
    mailhost::MainWindowController *controller = m_host.mainWindowController();
    if (!controller)
        return nullptr;
    controller->showDay(dayOf(inFile(uid, instanceId), instanceId));
    settle();
    mailhost::CalendarGrid *grid = controller->mainWindow()->calendar();
    return grid->select(uid, instanceId) ? grid : nullptr;
}

mailhost::CalendarGrid *Session::select(const QString &uid, const QString &instanceId) {
    mailhost::CalendarGrid *grid = reveal(uid, instanceId);
    need(grid, u"the grid shows the appointment"_s);
    return grid;
}

void Session::pressOn(const QString &uid, QKeyCombination key, const QString &instanceId) {
    select(uid, instanceId);
    press(mainWindow(), key);
}

bool Session::shows(const QString &uid) const {
    const mailhost::Appointment stored = inFile(uid);
    const mailhost::CalendarGrid *grid = reveal(uid);
    if (!grid)
        return stored.uid.isEmpty();
    const std::optional<mailhost::Occurrence> shown = grid->selected();
    return shown && shown->start == stored.start.value && shown->end == stored.end.value &&
           shown->summary == stored.summary;
}

mailhost::EditorWindow *Session::editor() {
    const auto open = mailhost::EditorWindowController::open();
    return open.isEmpty() ? nullptr : open.last()->editorWindow();
}

QAbstractButton *Session::stripButton(const QString &key) {
    if (editor())
        for (QAbstractButton *button : editor()->findChildren<QAbstractButton *>())
            if (button->isVisible() && button->accessibleName().startsWith(pluginText(key)))
                return button;
    return nullptr;
}

bool Session::waitForStrip(const QString &key) {
    return waitFor([&key] { return stripButton(key) != nullptr; });
}

QWidget *Session::strip() {
    const QAbstractButton *add = stripButton(buttons::add);
    const QAbstractButton *button = add ? add : stripButton(buttons::remove);
    return button ? button->parentWidget() : nullptr;
}

bool Session::open(const QString &uid) const {
    const mailhost::CalendarGrid *grid = reveal(uid);
    return grid && doubleClick(grid->selectedTile()) && waitFor([] { return strip() != nullptr; });
}

bool Session::openNew(const QString &subject, const QString &attendee) {
    click(shown(controls::newAppointmentButton));
    return waitForStrip(buttons::add) && typeInto(controls::subjectField, subject) &&
           (attendee.isEmpty() || typeInto(controls::attendeesField, attendee));
}

// The proposed values are written when the field has the focus, so that they do not overwrite input.
bool Session::typeInto(const QString &field, const QString &text) {
    control<QLineEdit>(field)->setFocus();
    return type(editor(), text);
}

bool Session::save() {
    press(editor(), Qt::CTRL | Qt::Key_S);
    settle();
    return waitFor([] { return editor() && !editor()->viewController()->isDirty(); });
}

bool Session::send() {
    click(shown(controls::sendButton));
    return waitUntilClosed();
}

bool Session::closeEditor() {
    press(editor(), Qt::CTRL | Qt::Key_W);
    return waitUntilClosed();
}

bool Session::discardEditor() {
    press(editor(), Qt::CTRL | Qt::Key_W);
    waitFor([] { return !editor() || shown(controls::discardChangesButton); });
    if (QWidget *discard = shown(controls::discardChangesButton))
        click(discard);
    return waitUntilClosed();
}

void Session::askForMeeting() {
    mark();
    const bool opened = click(stripButton(buttons::add)) && waitForButton(buttons::confirm);
    step(opened, u"a click on \"%1\" opens the settings sheet"_s.arg(pluginText(buttons::add)));
}

bool Session::confirmSheet() {
    click(shownButton(buttons::confirm));
    const auto hasUrl = [] {
        const auto *location = control<QLineEdit>(controls::locationField);
        return location && location->text().contains(u"https://"_s);
    };
    const bool attached = waitForStrip(buttons::remove) && waitFor(hasUrl);
    settle();
    return attached;
}

bool Session::giveMeeting(const QString &uid) const {
    if (!click(stripButton(buttons::add)) || !waitForButton(buttons::confirm) || !confirmSheet())
        return false;
    if (shown(controls::sendButton))
        return send();
    return save() && !meetingKey(uid).isEmpty() && closeEditor();
}

bool Session::isAlerted(const QString &pictureName) {
    const bool said = waitForAlert();
    picture(alert(), pictureName);
    return dismissModal() && said;
}

} // namespace walkthrough
