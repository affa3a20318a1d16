#include "standin/mailhost/windows/HostApplication.h"

#include "platform/runtime/Loading.h"
#include "platform/services/Services.h"
#include "platform/services/propertylist/PropertyList.h"
#include "platform/services/storage/WholeFile.h"
#include "platform/toolkit/Windows.h"
#include "standin/mailhost/model/HostContext.h"
#include "standin/mailhost/store/SampleCalendar.h"
#include "standin/support/BusNames.h"
#include "standin/support/Program.h"

#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>

namespace mailhost {

namespace {

bool writeFile(const QString &path, const QByteArray &bytes, QString *error) {
    QDir().mkpath(QFileInfo(path).path());
    QString reason;
    if (platform::writeWholeFile(path, bytes, &reason))
        return true;
    *error = QObject::tr("%1 cannot be written: %2").arg(path, reason);
    return false;
}

QByteArray bundleInformation(const QString &version) {
    return platform::PropertyList::toXml(QVariantMap{{u"CFBundleIdentifier"_s, standin::names::host},
                                                     {u"CFBundleExecutable"_s, u"parlo-host"_s},
                                                     {u"CFBundleShortVersionString"_s, version},
                                                     {u"CFBundleVersion"_s, version}});
}

} // namespace

HostApplication::HostApplication(HostOptions options)
    : m_options(std::move(options)) {}

HostApplication::~HostApplication() {
    for (EditorWindowController *controller : EditorWindowController::open())
        delete controller;
    HostContext::instance() = {};
    errorPresenter() = nullptr;
    platform::setApplicationDelegate(nullptr);
    qDeleteAll(m_mainWindows);
}

// A program may run over midnight.
QDate HostApplication::today() const {
    return m_options.today.isValid() ? m_options.today : QDate::currentDate();
}

void HostApplication::defineClasses() {
    defineDateClass();
    defineAccountClasses();
    defineEventClasses();
    defineBodyClasses();
    defineComposeViewClass();
    defineHeaderClasses();
    defineEditorViewControllerClass();
    defineEditorWindowClasses();
    defineGridClasses();
    defineMainWindowClasses();
}

bool HostApplication::installBundle(QString *error) const {
    const QString path =
        platform::services().workspace->resolve(u"/Applications/Parlo Host.app/Contents/Info.plist"_s);
    const QByteArray information = bundleInformation(m_options.hostVersion);
    QFile existing(path);
    if (existing.open(QIODevice::ReadOnly) && existing.readAll() == information)
        return true;
    return writeFile(path, information, error);
}

void HostApplication::installDesktopServices() const {
    platform::DesktopOptions desktop;
    desktop.bundleIdentifier = standin::names::host;
    desktop.documentsFolder = m_options.documentsFolder;
    desktop.defaultsFolder = m_options.defaultsFolder;
    platform::setServices(platform::makeDesktopServices(desktop));
}

void HostApplication::start() {
    defineClasses();
    m_delegate = std::make_unique<AppDelegate>();
    platform::setApplicationDelegate(m_delegate.get());
    errorPresenter() = [this](QWidget *parent, const QString &message) {
        const MainWindowController *main = mainWindowController();
        showErrorMessage(parent || !main ? parent : main->window(), message);
    };
    HostContext::instance().placeOfNew = [this] { return placeOfNew(); };
    addMainWindow();
}

MainWindowController *HostApplication::addMainWindow() {
    auto *controller = new MainWindowController([this] { return today(); });
    m_mainWindows.append(controller);
    controller->setSession(m_session.get());
    QObject::connect(controller->mainWindow(), &MainWindow::closed, controller,
                     [this, controller] { windowClosed(controller); });
    QObject::connect(controller, &MainWindowController::anotherWindowWanted, controller,
                     [this] { addMainWindow()->window()->show(); });
    QObject::connect(controller, &MainWindowController::quitWanted, controller, [this] { closeAll(); });
    return controller;
}

// Editors stay open; the program ends with its last window.
void HostApplication::windowClosed(MainWindowController *controller) {
    m_mainWindows.removeOne(controller);
    platform::unregisterWindow(controller->window());
    controller->deleteLater(); // the caller may still be running in it
}

bool HostApplication::closeAll() {
    for (EditorWindowController *controller : EditorWindowController::open())
        if (controller->editorWindow() && !controller->editorWindow()->close() &&
            controller->editorWindow()->isVisible())
            return false;
    for (MainWindowController *controller : mainWindowControllers()) // a copy: each leaves the list
        controller->window()->close();
    return true;
}

// Uses the active main window, else the first one.
NewPlace HostApplication::placeOfNew() const {
    for (const MainWindowController *controller : m_mainWindows)
        if (controller->window()->isActiveWindow())
            return controller->placeOfNew();
    if (!m_mainWindows.isEmpty())
        return m_mainWindows.first()->placeOfNew();
    return {QDateTime(today(), QTime(9, 0)), false};
}

QString HostApplication::dataFolder() const {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

QString HostApplication::sampleFile(QString *error) const {
    // One file for each week, because last week's sample would show an empty week today. The user's changes
    // stay in the file.
    const QString monday = mondayOf(today()).toString(Qt::ISODate);
    const QString path = dataFolder() + u"/Sample week %1.ics"_s.arg(monday);
    if (QFile::exists(path) || writeFile(path, sampleCalendar(today()), error))
        return path;
    return {};
}

bool HostApplication::openCalendar(QString *error) {
    const QString path = m_options.calendarPath.isEmpty() ? sampleFile(error) : m_options.calendarPath;
    if (path.isEmpty())
        return false;
    std::unique_ptr<CalendarFile> file = CalendarFile::open(path, error);
    if (!file)
        return false;
    const QString outbox = m_options.outbox.isEmpty() ? dataFolder() + u"/Outbox"_s : m_options.outbox;
    auto session = std::make_unique<CalendarSession>(std::move(file), m_options, outbox);
    for (MainWindowController *controller : std::as_const(m_mainWindows))
        controller->setSession(session.get());
    m_session = std::move(session);
    HostContext::instance().session = m_session.get();
    return true;
}

void HostApplication::show() {
    for (const MainWindowController *controller : std::as_const(m_mainWindows))
        controller->window()->show();
    if (const MainWindowController *first = mainWindowController())
        first->window()->activateWindow();
}

bool HostApplication::loadPlugin(QString *error) const {
    if (m_options.noPlugin)
        return true;
    if (!m_options.pluginPath.isEmpty())
        return rt::loadImage(m_options.pluginPath, error);
    const QString installed = platform::services().workspace->resolve(
        u"/Users/Shared/ParloMeetingsOutlookPlugin/ParloMeetings.bundle/Contents/MacOS/ParloMeetings.so"_s);
    if (QFile::exists(installed))
        return rt::loadImage(installed, error);
    *error = QObject::tr("The plug-in is not installed. Name it with --plugin, or start with --no-plugin.");
    return false;
}

EditorWindowController *HostApplication::openEditorFor(const QString &uid, const QString &recurrenceId) {
    if (!m_session || !m_session->file().contains(uid, recurrenceId))
        return nullptr;
    return dynamic_cast<EditorWindowController *>(
        showEditorFor(std::make_unique<CalendarEvent>(m_session.get(), uid, recurrenceId, false)));
}

EditorWindowController *HostApplication::openNewAppointment() {
    rt::send(editorWindowClass(), "showWindowForNewEvent");
    const QList<EditorWindowController *> open = EditorWindowController::open();
    return open.value(open.size() - 1);
}

HostOptions optionsFromArguments() {
    QCommandLineParser parser;
    parser.setApplicationDescription(QObject::tr("A mail and calendar program."));
    const auto add = [&parser](const char *name, const QString &text, const char *value,
                               const QString &standard = {}) {
        parser.addOption({QString::fromLatin1(name), text, QString::fromLatin1(value), standard});
    };
    add("host-version", QObject::tr("Generation: 14.1.4, 15.8, 15.9 or 16."), "version", u"16"_s);
    add("no-plugin", QObject::tr("Start without the plug-in."), "");
    add("plugin", QObject::tr("The plug-in's library."), "path");
    add("documents", QObject::tr("Folder that serves as Documents."), "folder");
    add("defaults", QObject::tr("Folder of the stored defaults."), "folder");
    add("outbox", QObject::tr("Folder that messages are written to."), "folder");
    parser.addPositionalArgument(u"calendar.ics"_s, QObject::tr("The calendar to open."),
                                 u"[calendar.ics]"_s);
    program::parse(parser);
    static const QStringList versions{u"14.1.4"_s, u"15.8"_s, u"15.9"_s, u"16"_s};
    HostOptions options;
    options.hostVersion = parser.value(u"host-version"_s);
    if (!versions.contains(options.hostVersion))
        program::refuse(QObject::tr("There is no generation %1 of the host; choose one of %2")
                            .arg(options.hostVersion, versions.join(u", "_s)));
    if (parser.positionalArguments().size() > 1)
        program::refuse(QObject::tr("Only one calendar can be opened"));
    options.noPlugin = parser.isSet(u"no-plugin"_s);
    options.pluginPath = parser.value(u"plugin"_s);
    options.documentsFolder = parser.value(u"documents"_s);
    options.defaultsFolder = parser.value(u"defaults"_s);
    options.outbox = parser.value(u"outbox"_s);
    options.calendarPath = parser.positionalArguments().value(0);
    return options;
}

} // namespace mailhost
