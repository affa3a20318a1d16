#include "tests/simulation/Desktop.h"

#include "standin/mailhost/windows/ControlNames.h"
#include "tests/support/FullDisk.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QTextEdit>
#include <QWindow>

namespace simulation {

using scenarios::Scenario;

namespace {

constexpr double secondsOfAStep = 0.2; // no user is faster
const QString series = u"series@scenario"_s;

scenarios::OpenedCalendar calendar() {
    return {scenarios::usualCalendar()
                .event(Desktop::untouched, "Some\\, lunch",
                       "DTSTART:20261124T120000Z\nDTEND:20261124T130000Z\nX-ODD ;x=\"1\":kept \n"
                       "LOCATION:A long line that another program has fold\n ed here\n")
                .event(series, "Stand-up",
                       "DTSTART:20261123T080000Z\nDTEND:20261123T083000Z\nRRULE:FREQ=DAILY;COUNT=5\n")
                .text(),
            QDate(2026, 11, 24),
            {{u"Ada Example"_s, u"ada@parlo.example"_s}, {u"Ada Elsewhere"_s, u"ada@other.example"_s}}};
}

QJsonObject audioAccount(int number, const QString &phone) {
    const QJsonObject free{{u"country"_s, u"US"_s}, {u"number"_s, phone}};
    return {{u"meetingNumber"_s, number},
            {u"tollFreeNumbers"_s, QJsonArray{free}},
            {u"invitation"_s, u"Dial in: "_s + phone}};
}

bool isInside(const QWidget *window, const QWidget *of) {
    for (; window; window = windowBelow(window))
        if (window == of)
            return true;
    return false;
}

bool isBlocked(const QWidget *window, const QWidget *dialog) {
    if (!dialog->isVisible() || !dialog->isModal() || isInside(window, dialog))
        return false;
    if (dialog->windowModality() == Qt::ApplicationModal)
        return QApplication::activeModalWidget() != window;
    return isInside(dialog, window);
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
    const auto windows = QApplication::topLevelWidgets();
    return widget && widget->isVisible() && widget->isEnabled() &&
           std::none_of(windows.begin(), windows.end(),
                        [widget](const QWidget *window) { return isBlocked(widget->window(), window); });
}

QString bodyOf(const Editor &editor) {
    return editor.window->findChild<QTextEdit *>(mailhost::controls::bodyEditor)->toPlainText();
}

QString locationOf(const Editor &editor) {
    return editor.window->findChild<QLineEdit *>(mailhost::controls::locationField)->text();
}

QString keyInRecord(const mailhost::Appointment &appointment) {
    return QJsonDocument::fromJson(appointment.ucCapabilities.toUtf8())
        .object()
        .value(u"meetingKey")
        .toString();
}

bool Step::hasStored(const mailhost::EditorWindow *editor) const {
    return !diskFull && std::any_of(runs.begin(), runs.end(),
                                    [editor](const HostRun &run) { return run.editor == editor; });
}

int Step::timesSent(Request request) const {
    return int(std::count_if(messages.begin(), messages.end(), [request](const Message &message) {
        return !message.isAnswer && message.request == request;
    }));
}

bool Step::hasAnswers() const {
    return std::any_of(messages.begin(), messages.end(), [](const Message &m) { return m.isAnswer; });
}

Desktop::Desktop(const QString &hostVersion)
    : m_scenario(hostVersion, calendar())
    , m_uids{{u"plain"_s, Scenario::plain},
             {u"invited"_s, Scenario::invited},
             {u"other"_s, Scenario::other},
             {u"series"_s, series}}
    , m_savedBodies{{u"plain"_s, {u"Agenda"_s}}} {
    m_scenario.client().setAccounts(
        {audioAccount(4155551, u"+1 800 5550100"_s), audioAccount(4155552, u"+1 800 5550101"_s)});
    watchHost();
    (void)takeHostRuns();
}

Editor *Desktop::editorOf(const QString &appointment) {
    const auto found = std::find_if(m_editors.begin(), m_editors.end(),
                                    [&](const Editor &editor) { return editor.appointment == appointment; });
    return found == m_editors.end() ? nullptr : &*found;
}

QString Desktop::keyInFile(const QString &appointment) const {
    return m_onDisk ? keyInRecord(m_onDisk->value(appointment)) : QString();
}

bool Desktop::perform(const QString &line) {
    static const QList<Command> commands = usersCommands() + clientsCommands();
    const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    const auto command = std::find_if(commands.begin(), commands.end(), [&words](const Command &one) {
        return words.value(0) == QLatin1String(one.word) && words.size() > one.arguments;
    });
    if (command == commands.end())
        return false;
    m_step = {};
    m_step.line = line;
    m_step.diskFull = m_diskFull;
    m_scenario.forget();
    for (const Editor &editor : std::as_const(m_editors)) {
        m_step.openBefore.insert(editor.window.data());
        const auto *view = editor.window ? editor.window->viewController() : nullptr;
        if (view && !view->isDirty())
            m_step.nothingToStore.insert(editor.window.data());
    }
    {
        std::optional<FullDisk> full;
        if (m_diskFull)
            full.emplace();
        if (!command->run(*this, words.mid(1)))
            return false;
        m_scenario.wait(secondsOfAStep);
    }
    afterStep();
    return true;
}

void Desktop::afterStep() {
    for (const auto &posted : m_scenario.desktop().bus->posted())
        m_step.messages.append(messageOf(posted));
    m_step.runs = takeHostRuns();
    noteStored();
    noteEditors();
    readDisk();
}

// What an editor had when it was stored is in the file from then on, until it is taken back.
void Desktop::noteStored() {
    for (Editor &editor : m_editors) {
        if (m_step.hasStored(editor.window))
            m_savedBodies[editor.appointment] += editor.body;
        if (editor.hasRemovedMeeting && editor.window && locationOf(editor).isEmpty())
            editor.location.clear();
    }
    if (m_step.line != u"menu undo" && m_step.line != u"menu redo")
        return;
    m_savedBodies.clear();
    for (Editor &editor : m_editors) // what was not touched since goes with it
        editor.body = editor.location = {};
}

void Desktop::readDisk() {
    m_onDisk.reset();
    QString error;
    const auto file = mailhost::CalendarFile::open(m_scenario.calendarPath(), &error);
    if (!file)
        return;
    m_onDisk.emplace();
    for (auto it = m_uids.begin(); it != m_uids.end(); ++it)
        if (const auto found = file->find(*it))
            m_onDisk->insert(it.key(), *found);
        else
            m_savedBodies.remove(it.key());
}

void Desktop::noteEditors() {
    QList<mailhost::EditorWindow *> open;
    for (mailhost::EditorWindowController *controller : Scenario::openEditors())
        open.append(controller->editorWindow());
    m_editors.removeIf(
        [&open](const Editor &editor) { return !editor.window || !open.contains(editor.window); });
    for (const Editor &editor : std::as_const(m_editors))
        open.removeOne(editor.window);
    for (mailhost::EditorWindow *window : std::as_const(open)) {
        const QString uid = window->viewController()->content()->UUID();
        QString name = m_uids.key(uid);
        if (name.isEmpty()) {
            name = u"new%1"_s.arg(++m_newOnes);
            m_uids.insert(name, uid);
        }
        m_editors.append({window, name, {}, {}, false});
    }
}

} // namespace simulation
