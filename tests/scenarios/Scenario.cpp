#include "tests/scenarios/Scenario.h"

#include "plugin/load/pluginLoad.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "standin/mailhost/windows/ControlNames.h"

namespace scenarios {

namespace {

const QString requestChannel = u"VelaOutlookPluginToVelaVideoClient_PRL"_s;
const QString clientIdentifier = u"com.parlo.meetings"_s;
const QString clientPath = u"/Applications/Parlo Meetings.app"_s;
constexpr int turns = 4; // of the two loops, each of which may wake the other

template<typename T>
T *shownWidget(const QString &objectName = {}) {
    for (QWidget *widget : QApplication::allWidgets())
        if (auto *match = qobject_cast<T *>(widget))
            if (match->isVisible() && (objectName.isEmpty() || match->objectName() == objectName))
                return match;
    return nullptr;
}

} // namespace

CalendarBuilder usualCalendar() {
    return CalendarBuilder()
        .lines("X-UNKNOWN;X-P=1:kept\n")
        .event(Scenario::plain, "Quarterly review",
               "DTSTART:20261124T090000Z\nDTEND:20261124T093000Z\nLOCATION:Room 7\n"
               "DESCRIPTION:Agenda first.\n"
               "X-ALT-DESC;FMTTYPE=text/html:<html><body><p>Agenda <b>first</b>.</p></body></html>\n")
        .event(Scenario::invited, "Planning",
               "DTSTART:20261125T130000Z\nDTEND:20261125T140000Z\n"
               "ORGANIZER;CN=Ada Example:mailto:ada@parlo.example\n"
               "ATTENDEE;CN=Ben Example;ROLE=REQ-PARTICIPANT:mailto:ben@parlo.example\n"
               "ATTENDEE;CN=Blue room;CUTYPE=ROOM:mailto:blue@parlo.example\n"
               "ATTENDEE;CN=Red room;CUTYPE=ROOM:mailto:red@parlo.example\n")
        .event(Scenario::other, "Another one", "DTSTART:20261126T100000Z\nDTEND:20261126T110000Z\n");
}

QString meetingKeyIn(const mailhost::Appointment &appointment) {
    const QJsonDocument record = QJsonDocument::fromJson(appointment.ucCapabilities.toUtf8());
    return record.object().value(u"meetingKey"_s).toString();
}

Scenario::Scenario(const QString &hostVersion, const OpenedCalendar &calendar,
                   mailhost::BookmarkMangling mangling) {
    platform::services().pluginBundle = platform::makeFolderBundle(u"" PARLO_RESOURCES ""_s);
    m_desktop.bundle = nullptr;
    m_desktop.workspace->root = m_folder.filePath(u"root"_s);
    m_desktop.workspace->documents = m_folder.filePath(u"Documents"_s);
    installHost(m_desktop, hostVersion);
    clientIsInstalled();
    writeFile(calendar.text);
    clientRuns();

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
    static const bool isFilled = WorkflowPorts::instance().strips; // by the first load, which is the only one
    EXPECT_TRUE(isFilled);
    fillPluginPorts();
    vlCommandItemMgr::sharedInstance().initPluginInstance(); // of this scenario's host, not an earlier one's
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

void Scenario::close(mailhost::EditorWindow *window) {
    window->closeNow();
    settle();
    wait(1);
}

QAbstractButton *Scenario::stripButton(mailhost::EditorWindow *window, const QString &textKey) {
    if (const vlActionAdditionView *strip = stripOf(window))
        for (auto *button : strip->findChildren<QAbstractButton *>())
            if (button->isVisible() && button->accessibleName() == text(textKey).remove(u'&'))
                return button;
    return nullptr;
}

void Scenario::click(QWidget *control) {
    ASSERT_NE(control, nullptr) << "there is no such control";
    QTest::mouseClick(control, Qt::LeftButton);
    settle();
}

void Scenario::confirmSheet() {
    click(shownWidget<QPushButton>(u"buttonContinue"_s));
}

void Scenario::cancelSheet() {
    click(shownWidget<QPushButton>(u"buttonCancel"_s));
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

void Scenario::addMeetingAndSave(mailhost::EditorWindow *window) {
    addMeeting(window);
    pressSave(window);
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

void Scenario::dismissAlert() {
    if (auto *alert = shownWidget<QMessageBox>())
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

void Scenario::writeFile(const QByteArray &calendar) const {
    QFile file(calendarPath());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(calendar);
}

int Scenario::mailsSent(const QString &pattern) const {
    return int(QDir(m_folder.filePath(u"outbox"_s)).entryList({pattern}).size());
}

QString Scenario::meetingKey(const QString &uid) const {
    return meetingKeyIn(inFile(uid));
}

QJsonObject Scenario::meeting(const QString &uid) const {
    return m_store.meeting(meetingKey(uid)).value_or(QJsonObject());
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

void Scenario::given(const QString &rule) {
    QString error;
    ASSERT_TRUE(m_rules.add(rule, &error)) << qPrintable(error);
}

void Scenario::clientQuits() {
    m_desktop.workspace->running.clear();
    m_client.reset();
}

void Scenario::clientRuns() {
    m_desktop.workspace->running = {clientIdentifier};
    if (!m_client)
        m_client = std::make_unique<meetingclient::ClientLink>(m_store, m_rules);
}

void Scenario::clientIsUninstalled() {
    clientQuits();
    m_desktop.workspace->bundles.resize(1); // the host's
    QDir(m_desktop.workspace->resolve(clientPath)).removeRecursively();
}

// Takes the place of another version, which may be running.
void Scenario::clientIsInstalled(const QString &version) {
    m_desktop.workspace->bundles.resize(1); // the host's
    installBundle(m_desktop, clientIdentifier, clientPath,
                  {{u"CFBundleVersion"_s, version}, {u"CFBundleIdentifier"_s, clientIdentifier}});
}

} // namespace scenarios
