#include "tests/simulation/Desktop.h"

#include "platform/runtime/Runtime.h"
#include "platform/toolkit/Windows.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/support/FullDisk.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QTextEdit>
#include <QWindow>

namespace simulation {

namespace {

const QString requestChannel = u"VelaOutlookPluginToVelaVideoClient_PRL"_s;
const QString answerChannel = u"VelaVideoClientToVelaOutlookPlugin_PRL"_s;

constexpr double secondsOfAStep = 0.2; // nobody is faster

scenarios::OpenedCalendar calendar() {
    return {
        "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Somebody//Else//EN\r\nX-UNKNOWN;X-P=1:kept\r\n"
        "BEGIN:VEVENT\r\nUID:plain@scenario\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261124T090000Z\r\n"
        "DTEND:20261124T093000Z\r\nSUMMARY:Quarterly review\r\nLOCATION:Room 7\r\n"
        "DESCRIPTION:Agenda first.\r\n"
        "X-ALT-DESC;FMTTYPE=text/html:<html><body><p>Agenda <b>first</b>.</p></body></html>\r\n"
        "END:VEVENT\r\n"
        "BEGIN:VEVENT\r\nUID:untouched@scenario\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261124T120000Z\r\n"
        "DTEND:20261124T130000Z\r\nSUMMARY;LANGUAGE=en:Some\\, lunch\r\nX-ODD ;x=\"1\":kept \r\n"
        "LOCATION:A long line that another program has fold\r\n ed here\r\nEND:VEVENT\r\n"
        "BEGIN:VEVENT\r\nUID:invited@scenario\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261125T130000Z\r\n"
        "DTEND:20261125T140000Z\r\nSUMMARY:Planning\r\n"
        "ORGANIZER;CN=Ada Example:mailto:ada@parlo.example\r\n"
        "ATTENDEE;CN=Ben Example;ROLE=REQ-PARTICIPANT:mailto:ben@parlo.example\r\n"
        "ATTENDEE;CN=Blue room;CUTYPE=ROOM:mailto:blue@parlo.example\r\n"
        "ATTENDEE;CN=Red room;CUTYPE=ROOM:mailto:red@parlo.example\r\nEND:VEVENT\r\n"
        "BEGIN:VEVENT\r\nUID:other@scenario\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261126T100000Z\r\n"
        "DTEND:20261126T110000Z\r\nSUMMARY:Another one\r\nEND:VEVENT\r\n"
        "BEGIN:VEVENT\r\nUID:series@scenario\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261123T080000Z\r\n"
        "DTEND:20261123T083000Z\r\nSUMMARY:Stand-up\r\nRRULE:FREQ=DAILY;COUNT=5\r\n"
        "END:VEVENT\r\nEND:VCALENDAR\r\n",
        QDate(2026, 11, 24),
        {{u"Ada Example"_s, u"ada@parlo.example"_s}, {u"Ada Elsewhere"_s, u"ada@other.example"_s}}};
}

QJsonArray audioAccounts() {
    const auto account = [](int number, const QString &phone) {
        const QJsonObject free{{u"country"_s, u"US"_s}, {u"number"_s, phone}};
        return QJsonObject{{u"meetingNumber"_s, number},
                           {u"tollFreeNumbers"_s, QJsonArray{free}},
                           {u"invitation"_s, u"Dial in: "_s + phone}};
    };
    return {account(4155551, u"+1 800 5550100"_s), account(4155552, u"+1 800 5550101"_s)};
}

QStringList warningsOfRun;
QtMessageHandler handlerBefore = nullptr;

// The run's own: a warning belongs to the step in which it came.
void keepWarning(QtMsgType type, const QMessageLogContext &, const QString &text) {
    // The bus cannot carry every corrupt answer, and says so.
    const bool harmless = type == QtDebugMsg || type == QtInfoMsg || text.contains(u"propagateSizeHints") ||
                          text.contains(u"it contains a NUL character");
    if (!harmless)
        warningsOfRun.append(text);
}

bool isInside(const QWidget *window, const QWidget *of) {
    for (; window; window = windowBelow(window))
        if (window == of)
            return true;
    return false;
}

bool stands(const QWidget *dialog, const QWidget *before) {
    if (!dialog->isVisible() || !dialog->isModal() || isInside(before, dialog))
        return false;
    if (dialog->windowModality() == Qt::ApplicationModal)
        return QApplication::activeModalWidget() != before;
    return isInside(dialog, before);
}

} // namespace

QWidget *windowBelow(const QWidget *window) {
    if (window->parentWidget())
        return window->parentWidget()->window();
    const QWindow *below = window->windowHandle() ? window->windowHandle()->transientParent() : nullptr;
    for (QWidget *candidate : QApplication::topLevelWidgets())
        if (below && candidate->windowHandle() == below)
            return candidate;
    return nullptr;
}

bool isReachable(const QWidget *widget) {
    if (!widget || !widget->isVisible() || !widget->isEnabled())
        return false;
    for (const QWidget *window : QApplication::topLevelWidgets())
        if (stands(window, widget->window()))
            return false;
    return true;
}

Desktop::Desktop(const QString &hostVersion)
    : m_scenario(hostVersion, calendar())
    , m_uids{{u"plain"_s, scenarios::Scenario::plain},
             {u"invited"_s, scenarios::Scenario::invited},
             {u"other"_s, scenarios::Scenario::other},
             {u"series"_s, u"series@scenario"_s}}
    , m_calendarAtFirst(m_scenario.fileBytes()) {
    m_scenario.client().setAccounts(audioAccounts());
    watchHost();
    (void)takeHostRuns();
    warningsOfRun.clear();
    handlerBefore = qInstallMessageHandler(keepWarning);
    for (const QString &name : m_uids.keys())
        m_savedBodies.insert(name, {});
    m_savedBodies[u"plain"_s].append(u"Agenda"_s);
}

Desktop::~Desktop() {
    qInstallMessageHandler(handlerBefore);
}

const QStringList &Desktop::warnings() const {
    return warningsOfRun;
}

QString Desktop::uidOf(const QString &appointment) const {
    return m_uids.value(appointment);
}

QStringList Desktop::appointments() const {
    return m_uids.keys();
}

mailhost::MainWindow *Desktop::mainWindow() const {
    return const_cast<scenarios::Scenario &>(m_scenario).host().mainWindowController()->mainWindow();
}

mailhost::EditorWindow *Desktop::editorOf(const QString &appointment) const {
    for (const Editor &editor : m_editors)
        if (editor.appointment == appointment)
            return editor.window;
    return nullptr;
}

Editor *Desktop::entryOf(const QString &appointment) {
    for (Editor &editor : m_editors)
        if (editor.appointment == appointment)
            return &editor;
    return nullptr;
}

bool Desktop::perform(const QString &line) {
    const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    static const QList<Verb> verbs = usersVerbs() + clientsVerbs();
    for (const Verb &verb : verbs) {
        if (words.value(0) != QLatin1String(verb.word) || words.size() <= verb.arguments)
            continue;
        beforeStep(line);
        {
            std::optional<FullDisk> full;
            if (m_diskFull)
                full.emplace();
            if (!(this->*verb.run)(words.mid(1)))
                return false;
            m_scenario.wait(secondsOfAStep);
        }
        afterStep();
        return true;
    }
    return false;
}

void Desktop::beforeStep(const QString &line) {
    m_last = {};
    m_last.line = line;
    m_last.diskFull = m_diskFull;
    m_scenario.forget();
    for (const Editor &editor : std::as_const(m_editors)) {
        m_last.openBefore.insert(editor.window.data());
        const auto *view = editor.window ? editor.window->viewController() : nullptr;
        if (view && view->isOccurrenceOrException() && !view->isDirty())
            m_last.nothingToStore.insert(editor.window.data());
    }
}

void Desktop::press(HostOperation operation, mailhost::EditorWindow *editor) {
    m_last.pressed = operation;
    m_last.pressedIn = editor;
}

bool Happened::hasStored(const mailhost::EditorWindow *editor) const {
    return !diskFull && std::any_of(runs.begin(), runs.end(),
                                    [editor](const HostRun &run) { return run.editor == editor; });
}

void Desktop::afterStep() {
    for (const auto &posted : m_scenario.desktop().bus->posted()) {
        m_last.posted.append(posted);
        if (posted.name == requestChannel)
            m_last.requests.append(posted);
        if (posted.name == answerChannel)
            m_last.answers.append(posted);
    }
    if (!m_last.requests.isEmpty())
        m_lastRequest = m_scenario.desktop().runLoop->now();
    m_last.runs = takeHostRuns();
    readDisk();
    noteSaved();
    noteEmptiedPlaces();
    if (m_last.line.startsWith(u"menu undo") || m_last.line.startsWith(u"menu redo"))
        noteTakenBack();
    noteEditors();
    readDisk(); // with the names of new ones
}

double Desktop::secondsSinceLastRequest() const {
    return const_cast<scenarios::Scenario &>(m_scenario).desktop().runLoop->now() - m_lastRequest;
}

// What an editor had when it was saved is in the file from then on.
void Desktop::noteSaved() {
    for (const Editor &editor : std::as_const(m_editors))
        if (m_last.hasStored(editor.window))
            m_savedBodies[editor.appointment] += editor.body;
    for (auto it = m_savedBodies.begin(); m_onDisk && it != m_savedBodies.end(); ++it)
        if (!m_onDisk->contains(it.key()))
            it->clear();
}

void Desktop::readDisk() {
    const QByteArray bytes = m_scenario.fileBytes();
    if (bytes == m_bytesOnDisk && m_onDisk && m_namesRead == m_uids.size())
        return;
    m_bytesOnDisk = bytes;
    m_namesRead = m_uids.size();
    m_onDisk.reset();
    QString error;
    const auto file = mailhost::CalendarFile::open(m_scenario.calendarPath(), &error);
    if (!file)
        return;
    m_onDisk.emplace();
    for (auto it = m_uids.begin(); it != m_uids.end(); ++it)
        if (const auto found = file->find(*it))
            m_onDisk->insert(it.key(), *found);
}

// The file has gone back to what it was, and what was not touched since in an editor went with it.
void Desktop::noteTakenBack() {
    for (QStringList &words : m_savedBodies)
        words.clear();
    for (Editor &editor : m_editors)
        editor.body = editor.place = {};
}

// A delete empties the place, whatever the user wrote there.
void Desktop::noteEmptiedPlaces() {
    const bool deleted = std::any_of(m_last.answers.begin(), m_last.answers.end(), [](const auto &answer) {
        return answer.userInfo.value(u"actionId"_s) == u"3"_s;
    });
    for (Editor &editor : m_editors) {
        const auto *field = editor.window
                                ? editor.window->findChild<QLineEdit *>(mailhost::controls::locationField)
                                : nullptr;
        if (!field || !field->text().isEmpty())
            continue;
        const bool stored = m_last.hasStored(editor.window);
        if (deleted || (editor.emptiedByDelete && stored))
            editor.place.clear();
        editor.emptiedByDelete = deleted || (editor.emptiedByDelete && !stored);
    }
}

void Desktop::noteEditors() {
    QSet<const mailhost::EditorWindow *> open;
    for (mailhost::EditorWindowController *controller : mailhost::EditorWindowController::open()) {
        mailhost::EditorWindow *window = controller->editorWindow();
        open.insert(window);
        const bool known = std::any_of(m_editors.begin(), m_editors.end(),
                                       [window](const Editor &editor) { return editor.window == window; });
        if (known)
            continue;
        QString name = m_uids.key(window->viewController()->content()->UUID());
        if (name.isEmpty()) {
            name = u"new%1"_s.arg(++m_newOnes);
            m_uids.insert(name, window->viewController()->content()->UUID());
        }
        m_editors.append({window, name, rt::identifier(window), {}, {}, false});
        if (m_last.line == u"new video" || m_last.line == u"new audio")
            m_wanted.insert(name);
        m_closedWindowIDs.remove(rt::identifier(window)); // the address has come again
    }
    m_editors.removeIf([this, &open](const Editor &editor) {
        if (editor.window && open.contains(editor.window))
            return false;
        m_closedWindowIDs.insert(editor.windowID);
        return true;
    });
}

} // namespace simulation
