#include "tests/scenarios/Scenario.h"

#include "platform/services/Services.h"
#include "plugin/link/linkSession.h"
#include "plugin/load/pluginLoad.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "plugin/util/localizedString.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/support/FreshWorkflow.h"

#include <QApplication>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace scenarios {

namespace {

const QString requestChannel = u"VelaOutlookPluginToVelaVideoClient_PRL"_s;
const QString clientIdentifier = u"com.parlo.meetings"_s;
const QString clientBundle = u"/Applications/Parlo Meetings.app"_s;
const QString hostBundle = u"/Applications/Host.app"_s;
constexpr int turns = 4; // of the two loops, each of which may wake the other

const char usualCalendar[] =
    "BEGIN:VCALENDAR\r\n"
    "VERSION:2.0\r\n"
    "PRODID:-//Somebody//Else//EN\r\n"
    "X-UNKNOWN;X-P=1:kept\r\n"
    "BEGIN:VEVENT\r\n"
    "UID:plain@scenario\r\n"
    "DTSTAMP:20261101T080000Z\r\n"
    "DTSTART:20261124T090000Z\r\n"
    "DTEND:20261124T093000Z\r\n"
    "SUMMARY:Quarterly review\r\n"
    "LOCATION:Room 7\r\n"
    "DESCRIPTION:Agenda first.\r\n"
    "X-ALT-DESC;FMTTYPE=text/html:<html><body><p>Agenda <b>first</b>.</p></body></html>\r\n"
    "END:VEVENT\r\n"
    "BEGIN:VEVENT\r\n"
    "UID:invited@scenario\r\n"
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
    "UID:other@scenario\r\n"
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
    QString wanted = Scenario::text(key);
    wanted.remove(u'&');
    for (auto *button : Scenario::stripOf(window)->findChildren<QAbstractButton *>())
        if (button->isVisible() && button->accessibleName() == wanted)
            return button;
    return nullptr;
}

} // namespace

Scenario::Scenario(const QString &hostVersion, mailhost::BookmarkMangling mangling)
    : Scenario(hostVersion, OpenedCalendar{usualCalendar}, mangling) {}

Scenario::Scenario(const QString &hostVersion, const OpenedCalendar &calendar,
                   mailhost::BookmarkMangling mangling) {
    installServices(hostVersion);
    QFile file(calendarPath());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(calendar.text);
    file.close();
    m_client = std::make_unique<meetingclient::ClientLink>(m_store, m_service, m_rules);

    mailhost::HostOptions options;
    options.hostVersion = hostVersion;
    options.calendarPath = calendarPath();
    options.outbox = m_folder.filePath(u"outbox"_s);
    options.bookmarkMangling = mangling;
    options.today = calendar.today;
    options.accounts = calendar.accounts;
    m_host = std::make_unique<mailhost::HostApplication>(options);
    m_host->start();
    loadPlugin();
    fillPluginPorts();
    vlCommandItemMgr::sharedInstance()
        .initPluginInstance(); // the host of this scenario, not of an earlier one
    QString error;
    EXPECT_TRUE(m_host->openCalendar(&error)) << qPrintable(error);
    m_host->show();
    settle();
}

Scenario::~Scenario() {
    m_host.reset();
    settle();
    for (QWidget *window : QApplication::topLevelWidgets())
        if (qobject_cast<QMessageBox *>(window))
            delete window;
    m_client.reset();
    // What is remembered lives on the services of this scenario.
    startWorkflowAfresh();
    startLinkAfresh();
}

void Scenario::installServices(const QString &hostVersion) {
    m_desktop = platform::installTestServices();
    startWorkflowAfresh();
    startLinkAfresh();
    platform::services().pluginBundle = platform::makeFolderBundle(u"" PARLO_RESOURCES ""_s);
    m_desktop.bundle = nullptr;
    platform::TableWorkspace &workspace = *m_desktop.workspace;
    workspace.root = m_folder.filePath(u"root"_s);
    workspace.documents = m_folder.filePath(u"Documents"_s);
    workspace.bundles = {{u"com.microsoft.Outlook"_s, hostBundle, u"/bin/host"_s}};
    workspace.running = {clientIdentifier};
    writeInfo(hostBundle, {{u"CFBundleShortVersionString"_s, hostVersion}});
    clientIsInstalled(u"3.6.40500"_s);
}

void Scenario::writeInfo(const QString &bundle, const QVariantMap &values) {
    const QString contents = m_desktop.workspace->resolve(bundle) + u"/Contents"_s;
    QDir().mkpath(contents);
    EXPECT_TRUE(platform::services().propertyLists->write(contents + u"/Info.plist"_s, values));
}

QString Scenario::text(const QString &key) {
    return vlLocalizedString(key);
}

void Scenario::settle() {
    for (int i = 0; i < turns; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_desktop.runLoop->advance(0);
    }
}

void Scenario::wait(double seconds) {
    m_desktop.runLoop->advance(seconds);
    settle();
}

mailhost::EditorWindow *Scenario::open(const QString &uid) {
    mailhost::EditorWindowController *controller = m_host->openEditorFor(uid);
    EXPECT_NE(controller, nullptr) << qPrintable(uid);
    settle();
    return controller ? controller->editorWindow() : nullptr;
}

vlActionAdditionView *Scenario::stripOf(mailhost::EditorWindow *window) {
    return dynamic_cast<vlActionAdditionView *>(
        vlActionAdditionViewMonitor::sharedInstance().getVlActionAdditionViewByWindow(window));
}

void Scenario::clickAdd(mailhost::EditorWindow *window) {
    QAbstractButton *button = stripButton(window, u"AddVelaButton"_s);
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Scenario::clickRemove(mailhost::EditorWindow *window) {
    QAbstractButton *button = stripButton(window, u"CancelVelaButton"_s);
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Scenario::clickSettings(mailhost::EditorWindow *window) {
    QAbstractButton *button = stripButton(window, u"ChangeSettingButton"_s);
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Scenario::confirmSheet() {
    auto *button = shownWidget<QPushButton>(u"buttonContinue"_s);
    ASSERT_NE(button, nullptr) << "no settings sheet is up";
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Scenario::cancelSheet() {
    auto *button = shownWidget<QPushButton>(u"buttonCancel"_s);
    ASSERT_NE(button, nullptr) << "no settings sheet is up";
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void Scenario::pressSave(mailhost::EditorWindow *window) {
    window->viewController()->requestSave();
    settle();
}

void Scenario::pressSend(mailhost::EditorWindow *window) {
    window->viewController()->requestSend();
    settle();
}

void Scenario::typeSubject(mailhost::EditorWindow *window, const QString &subject) {
    auto *field = window->findChild<QLineEdit *>(mailhost::controls::subjectField);
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClicks(field, subject);
    settle();
}

void Scenario::addMeeting(mailhost::EditorWindow *window) {
    clickAdd(window);
    confirmSheet();
    ASSERT_EQ(stripOf(window)->uiStatus(), StripState::MeetingAttached);
    ASSERT_TRUE(alertText().isNull()) << qPrintable(alertText());
}

bool Scenario::sheetIsUp() {
    return shownWidget<QPushButton>(u"buttonContinue"_s) != nullptr;
}

bool Scenario::progressIsUp() {
    return shownWidget<QLabel>(u"text_communicationMsg"_s) != nullptr;
}

QString Scenario::alertText() {
    const auto *alert = shownWidget<QMessageBox>();
    if (!alert)
        return {};
    return alert->informativeText().isEmpty() ? alert->text() : alert->informativeText();
}

void Scenario::answerAlert() {
    auto *alert = shownWidget<QMessageBox>();
    ASSERT_NE(alert, nullptr) << "no alert is up";
    QTest::mouseClick(alert->defaultButton(), Qt::LeftButton);
    settle();
}

void Scenario::dismissAlert() {
    auto *alert = shownWidget<QMessageBox>();
    ASSERT_NE(alert, nullptr) << "no alert is up";
    QTest::keyClick(alert, Qt::Key_Escape);
    settle();
}

mailhost::Appointment Scenario::inFile(const QString &uid) const {
    QString error;
    const auto file = mailhost::CalendarFile::open(calendarPath(), &error);
    EXPECT_TRUE(file) << qPrintable(error);
    const auto found = file ? file->find(uid) : std::nullopt;
    EXPECT_TRUE(found) << qPrintable(uid);
    return found ? *found : mailhost::Appointment();
}

QByteArray Scenario::fileBytes() const {
    QFile file(calendarPath());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

QString Scenario::meetingKey(const QString &uid) const {
    return QJsonDocument::fromJson(inFile(uid).ucCapabilities.toUtf8())
        .object()
        .value(u"meetingKey"_s)
        .toString();
}

int Scenario::sent(const QString &subCommand) const {
    return int(sentContents(subCommand).size());
}

QStringList Scenario::sentContents(const QString &subCommand) const {
    QStringList contents;
    for (const auto &posted : m_desktop.bus->posted()) {
        const QString content = posted.userInfo.value(u"content"_s);
        if (posted.name == requestChannel && posted.userInfo.value(u"actionId"_s) == u"3"_s &&
            content.startsWith(subCommand + u';'))
            contents.append(content);
    }
    return contents;
}

void Scenario::given(const char *rule) {
    QString error;
    ASSERT_TRUE(m_rules.add(QString::fromLatin1(rule), &error)) << qPrintable(error);
}

void Scenario::clientQuits() {
    m_desktop.workspace->running.clear();
    m_client.reset();
}

void Scenario::clientRuns() {
    m_desktop.workspace->running = {clientIdentifier};
    if (!m_client)
        m_client = std::make_unique<meetingclient::ClientLink>(m_store, m_service, m_rules);
}

void Scenario::clientIsUninstalled() {
    clientQuits();
    m_desktop.workspace->bundles.removeIf([](const platform::TableWorkspace::BundleEntry &entry) {
        return entry.identifier == clientIdentifier;
    });
    QDir(m_desktop.workspace->resolve(clientBundle)).removeRecursively();
}

void Scenario::clientIsInstalled(const QString &version) {
    QList<platform::TableWorkspace::BundleEntry> &bundles = m_desktop.workspace->bundles;
    bundles.removeIf([](const platform::TableWorkspace::BundleEntry &entry) {
        return entry.identifier == clientIdentifier;
    });
    bundles.append({clientIdentifier, clientBundle, u"/bin/client"_s});
    writeInfo(clientBundle, {{u"CFBundleVersion"_s, version}, {u"CFBundleIdentifier"_s, clientIdentifier}});
}

void Scenario::signedOut() {
    m_store.setSignedIn(false);
}

} // namespace scenarios
