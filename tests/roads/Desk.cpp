#include "tests/roads/Desk.h"

#include "platform/services/Services.h"
#include "plugin/link/linkSession.h"
#include "plugin/link/localizedString.h"
#include "plugin/load/pluginLoad.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "plugin/workflow/workflowSession.h"
#include "standin/mailhost/windows/ControlNames.h"

#include <QApplication>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace roads {

namespace {

const QString requestChannel = QStringLiteral("VelaOutlookPluginToVelaVideoClient_PRL");
const QString clientIdentifier = QStringLiteral("com.parlo.meetings");
const QString clientBundle = QStringLiteral("/Applications/Parlo Meetings.app");
const QString hostBundle = QStringLiteral("/Applications/Host.app");
constexpr int turns = 4; // of the two loops, each of which may wake the other

const char usualCalendar[] =
    "BEGIN:VCALENDAR\r\n"
    "VERSION:2.0\r\n"
    "PRODID:-//Somebody//Else//EN\r\n"
    "X-UNKNOWN;X-P=1:kept\r\n"
    "BEGIN:VEVENT\r\n"
    "UID:plain@desk\r\n"
    "DTSTAMP:20261101T080000Z\r\n"
    "DTSTART:20261124T090000Z\r\n"
    "DTEND:20261124T093000Z\r\n"
    "SUMMARY:Quarterly review\r\n"
    "LOCATION:Room 7\r\n"
    "DESCRIPTION:Agenda first.\r\n"
    "X-ALT-DESC;FMTTYPE=text/html:<html><body><p>Agenda <b>first</b>.</p></body></html>\r\n"
    "END:VEVENT\r\n"
    "BEGIN:VEVENT\r\n"
    "UID:invited@desk\r\n"
    "DTSTAMP:20261101T080000Z\r\n"
    "DTSTART:20261125T130000Z\r\n"
    "DTEND:20261125T140000Z\r\n"
    "SUMMARY:Planning\r\n"
    "ORGANIZER;CN=Ada Example:mailto:ada@parlo.example\r\n"
    "ATTENDEE;CN=Ben Example;ROLE=REQ-PARTICIPANT:mailto:ben@parlo.example\r\n"
    "ATTENDEE;CN=Blue room;CUTYPE=ROOM:mailto:blue@parlo.example\r\n"
    "ATTENDEE;CN=Red room;CUTYPE=ROOM:mailto:red@parlo.example\r\n"
    "END:VEVENT\r\n"
    "BEGIN:VEVENT\r\n"
    "UID:other@desk\r\n"
    "DTSTAMP:20261101T080000Z\r\n"
    "DTSTART:20261126T100000Z\r\n"
    "DTEND:20261126T110000Z\r\n"
    "SUMMARY:Another one\r\n"
    "END:VEVENT\r\n"
    "END:VCALENDAR\r\n";

template<typename T>
T *shownWidget(const QString &objectName = {}) {
    for (QWidget *widget : QApplication::allWidgets())
        if (auto *match = qobject_cast<T *>(widget))
            if (match->isVisible() && (objectName.isEmpty() || match->objectName() == objectName))
                return match;
    return nullptr;
}

QAbstractButton *stripButton(mailhost::EditorWindow *window, const QString &key) {
    QString wanted = Desk::text(key);
    wanted.remove(u'&');
    for (auto *button : Desk::stripOf(window)->findChildren<QAbstractButton *>())
        if (button->isVisible() && button->accessibleName() == wanted)
            return button;
    return nullptr;
}

} // namespace

Desk::Desk(const QString &hostVersion, mailhost::BookmarkMangling mangling)
    : Desk(hostVersion, OpenedCalendar{usualCalendar}, mangling) {}

Desk::Desk(const QString &hostVersion, const OpenedCalendar &calendar, mailhost::BookmarkMangling mangling) {
    installServices(hostVersion);
    QFile file(calendarPath());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(calendar.text);
    file.close();
    m_client = std::make_unique<meetingclient::ClientLink>(m_store, m_service, m_rules);

    mailhost::HostOptions options;
    options.hostVersion = hostVersion;
    options.calendarPath = calendarPath();
    options.outbox = m_folder.filePath(QStringLiteral("outbox"));
    options.bookmarkMangling = mangling;
    options.today = calendar.today;
    options.accounts = calendar.accounts;
    m_host = std::make_unique<mailhost::HostApplication>(options);
    m_host->start();
    loadPlugin();
    fillPluginPorts();
    vlCommandItemMgr::sharedInstance().initPluginInstance(); // the host of this desk, not of an earlier one
    QString error;
    EXPECT_TRUE(m_host->openCalendar(&error)) << qPrintable(error);
    m_host->show();
    settle();
}

Desk::~Desk() {
    m_host.reset();
    settle();
    for (QWidget *window : QApplication::topLevelWidgets())
        if (qobject_cast<QMessageBox *>(window))
            delete window;
    m_client.reset();
    // What is remembered lives on the services of this desk.
    startWorkflowAfresh();
    startLinkAfresh();
}

void Desk::installServices(const QString &hostVersion) {
    m_desktop = platform::installTestServices();
    startWorkflowAfresh();
    startLinkAfresh();
    platform::services().pluginBundle = platform::makeFolderBundle(QStringLiteral(PARLO_RESOURCES));
    m_desktop.bundle = nullptr;
    platform::TableWorkspace &workspace = *m_desktop.workspace;
    workspace.root = m_folder.filePath(QStringLiteral("root"));
    workspace.documents = m_folder.filePath(QStringLiteral("Documents"));
    workspace.bundles = {{QStringLiteral("com.microsoft.Outlook"), hostBundle, QStringLiteral("/bin/host")}};
    workspace.running = {clientIdentifier};
    writeInfo(hostBundle, {{QStringLiteral("CFBundleShortVersionString"), hostVersion}});
    clientIsInstalled(QStringLiteral("3.6.40500"));
}

void Desk::writeInfo(const QString &bundle, const QVariantMap &values) {
    const QString contents = m_desktop.workspace->resolve(bundle) + QStringLiteral("/Contents");
    QDir().mkpath(contents);
    EXPECT_TRUE(platform::services().propertyLists->write(contents + QStringLiteral("/Info.plist"), values));
}

QString Desk::text(const QString &key) {
    return vlLocalizedString(key);
}

void Desk::settle() {
    for (int i = 0; i < turns; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_desktop.runLoop->advance(0);
    }
}

void Desk::wait(double seconds) {
    m_desktop.runLoop->advance(seconds);
    settle();
}

mailhost::EditorWindow *Desk::open(const QString &uid) {
    mailhost::EditorWindowController *controller = m_host->openEditorFor(uid);
    EXPECT_NE(controller, nullptr) << qPrintable(uid);
    settle();
    return controller ? controller->editorWindow() : nullptr;
}

vlActionAdditionView *Desk::stripOf(mailhost::EditorWindow *window) {
    return dynamic_cast<vlActionAdditionView *>(
        vlActionAdditionViewMonitor::sharedInstance().getVlActionAdditionViewByWindow(window));
}

void Desk::clickAdd(mailhost::EditorWindow *window) {
    QAbstractButton *button = stripButton(window, QStringLiteral("AddVelaButton"));
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Desk::clickRemove(mailhost::EditorWindow *window) {
    QAbstractButton *button = stripButton(window, QStringLiteral("CancelVelaButton"));
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Desk::clickSettings(mailhost::EditorWindow *window) {
    QAbstractButton *button = stripButton(window, QStringLiteral("ChangeSettingButton"));
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Desk::confirmSheet() {
    auto *button = shownWidget<QPushButton>(QStringLiteral("buttonContinue"));
    ASSERT_NE(button, nullptr) << "no settings sheet is up";
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Desk::cancelSheet() {
    auto *button = shownWidget<QPushButton>(QStringLiteral("buttonCancel"));
    ASSERT_NE(button, nullptr) << "no settings sheet is up";
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Desk::pressSave(mailhost::EditorWindow *window) {
    window->viewController()->requestSave();
    settle();
}

void Desk::pressSend(mailhost::EditorWindow *window) {
    window->viewController()->requestSend();
    settle();
}

void Desk::typeSubject(mailhost::EditorWindow *window, const QString &subject) {
    auto *field = window->findChild<QLineEdit *>(mailhost::controls::subjectField);
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClicks(field, subject);
    settle();
}

void Desk::addMeeting(mailhost::EditorWindow *window) {
    clickAdd(window);
    confirmSheet();
    ASSERT_EQ(stripOf(window)->uiStatus(), StripState::MeetingAttached);
    ASSERT_TRUE(alertText().isNull()) << qPrintable(alertText());
}

bool Desk::sheetIsUp() {
    return shownWidget<QPushButton>(QStringLiteral("buttonContinue")) != nullptr;
}

bool Desk::progressIsUp() {
    return shownWidget<QLabel>(QStringLiteral("text_communicationMsg")) != nullptr;
}

QString Desk::alertText() {
    const auto *alert = shownWidget<QMessageBox>();
    if (!alert)
        return {};
    return alert->informativeText().isEmpty() ? alert->text() : alert->informativeText();
}

void Desk::answerAlert() {
    auto *alert = shownWidget<QMessageBox>();
    ASSERT_NE(alert, nullptr) << "no alert is up";
    QTest::mouseClick(alert->defaultButton(), Qt::LeftButton);
    settle();
}

void Desk::dismissAlert() {
    auto *alert = shownWidget<QMessageBox>();
    ASSERT_NE(alert, nullptr) << "no alert is up";
    QTest::keyClick(alert, Qt::Key_Escape);
    settle();
}

mailhost::Appointment Desk::inFile(const QString &uid) const {
    QString error;
    const auto file = mailhost::CalendarFile::open(calendarPath(), &error);
    EXPECT_TRUE(file) << qPrintable(error);
    const auto found = file ? file->find(uid) : std::nullopt;
    EXPECT_TRUE(found) << qPrintable(uid);
    return found ? *found : mailhost::Appointment();
}

QByteArray Desk::fileBytes() const {
    QFile file(calendarPath());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

QString Desk::meetingKey(const QString &uid) const {
    return QJsonDocument::fromJson(inFile(uid).ucCapabilities.toUtf8())
        .object()
        .value(QStringLiteral("meetingKey"))
        .toString();
}

int Desk::sent(const QString &subCommand) const {
    return int(sentContents(subCommand).size());
}

QStringList Desk::sentContents(const QString &subCommand) const {
    QStringList contents;
    for (const auto &posted : m_desktop.bus->posted()) {
        const QString content = posted.userInfo.value(QStringLiteral("content"));
        if (posted.name == requestChannel &&
            posted.userInfo.value(QStringLiteral("actionId")) == QStringLiteral("3") &&
            content.startsWith(subCommand + u';'))
            contents.append(content);
    }
    return contents;
}

void Desk::given(const char *rule) {
    QString error;
    ASSERT_TRUE(m_rules.add(QString::fromLatin1(rule), &error)) << qPrintable(error);
}

void Desk::clientQuits() {
    m_desktop.workspace->running.clear();
    m_client.reset();
}

void Desk::clientRuns() {
    m_desktop.workspace->running = {clientIdentifier};
    if (!m_client)
        m_client = std::make_unique<meetingclient::ClientLink>(m_store, m_service, m_rules);
}

void Desk::clientIsUninstalled() {
    clientQuits();
    m_desktop.workspace->bundles.removeIf([](const platform::TableWorkspace::BundleEntry &entry) {
        return entry.identifier == clientIdentifier;
    });
    QDir(m_desktop.workspace->resolve(clientBundle)).removeRecursively();
}

void Desk::clientIsInstalled(const QString &version) {
    QList<platform::TableWorkspace::BundleEntry> &bundles = m_desktop.workspace->bundles;
    bundles.removeIf([](const platform::TableWorkspace::BundleEntry &entry) {
        return entry.identifier == clientIdentifier;
    });
    bundles.append({clientIdentifier, clientBundle, QStringLiteral("/bin/client")});
    writeInfo(clientBundle, {{QStringLiteral("CFBundleVersion"), version},
                             {QStringLiteral("CFBundleIdentifier"), clientIdentifier}});
}

void Desk::signedOut() {
    m_store.setSignedIn(false);
}

} // namespace roads
