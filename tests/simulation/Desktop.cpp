#include "tests/simulation/Desktop.h"

#include "platform/runtime/Runtime.h"
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/meetingKeys.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/meetingclient/People.h"
#include "tests/support/DiskFaults.h"

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

// The host's implementations, which are behind the plug-in's hooks.
const QString implementation = u"vl_ERCalendarEventEditorViewController_"_s;
const QMap<QString, HostOperation> watchedOperations{
    {implementation + u"saveArg:"_s, HostOperation::Save},
    {implementation + u"saveAndCloseWindow:"_s, HostOperation::SaveAndClose},
    {implementation + u"saveAndCloseWindowAndReturnError:andReturnError:"_s, HostOperation::SaveAndClose},
    {implementation + u"sendMeetingPostValidate"_s, HostOperation::Send}};

QList<HostRun> hostRuns; // since the last step

rt::Selector watched(const QString &command) {
    return rt::Selector(u"watched_"_s + command);
}

rt::Value noteRun(rt::Object *self, rt::Selector command, rt::Args arguments) {
    if (const auto *controller = dynamic_cast<mailhost::EditorViewController *>(self))
        hostRuns.append({watchedOperations[command.name()],
                         qobject_cast<mailhost::EditorWindow *>(controller->view()->window())});
    return rt::sendArgs(self, watched(command.name()), arguments);
}

// The plug-in must be loaded. A second call does nothing.
void watchHost() {
    rt::Class *cls = rt::classNamed(u"ERCalendarEventEditorViewController"_s);
    for (const QString &command : watchedOperations.keys())
        if (rt::addMethod(cls, watched(command), &noteRun, "v@:"))
            EXPECT_TRUE(rt::exchangeImplementations(rt::instanceMethod(cls, rt::Selector(command)),
                                                    rt::instanceMethod(cls, watched(command))));
}

QString keyIn(const QByteArray &json) {
    return QJsonDocument::fromJson(json).object().value(u"meetingKey").toString();
}

Message requestOf(const QString &action, const QString &content) {
    Message message{false, meetingclient::operationOf(action.toUInt(), content), {}};
    if (message.operation == Operation::Get || message.operation == Operation::Delete)
        message.meeting = content.mid(2);
    else if (message.operation == Operation::Update)
        message.meeting = keyIn(content.mid(content.indexOf(u'{')).toUtf8());
    return message;
}

Message answerOf(const QString &action, const QString &content) {
    static const QList<Operation> answered{Operation::Schedule, Operation::Update,  Operation::Delete,
                                           Operation::Get,      Operation::Profile, Operation::Accounts};
    const QStringList fields = content.split(u';');
    const bool isError = fields[0] == u"0";
    const auto operation = Operation(action.toInt());
    const bool isDamaged = content.isEmpty() || (isError && !content.startsWith(u"0;Error")) ||
                           !answered.contains(operation) ||
                           (!isError && operation == Operation::Get &&
                            keyIn(QByteArray::fromBase64(fields.value(13).toLatin1())) != fields[0]);
    if (isDamaged)
        return {true, {}, {}};
    if (isError || operation == Operation::Profile || operation == Operation::Accounts)
        return {true, operation, {}};
    return {true, operation, fields[0]};
}

} // namespace

bool isReachable(const QWidget *widget) {
    if (!widget || !widget->isVisible() || !widget->isEnabled())
        return false;
    const QWindow *own = widget->window()->windowHandle();
    return std::ranges::none_of(QGuiApplication::topLevelWindows(), [own](const QWindow *dialog) {
        if (!dialog->isVisible() || !dialog->isModal() || dialog == own || dialog->isAncestorOf(own))
            return false;
        return dialog->modality() == Qt::ApplicationModal ? QGuiApplication::modalWindow() != own
                                                          : own->isAncestorOf(dialog);
    });
}

bool isAlert(const QMessageBox *box) {
    const QPushButton *button = box ? box->defaultButton() : nullptr;
    return box && box->objectName().isEmpty() && (!button || button->objectName().isEmpty());
}

QString bodyOf(const Editor &editor) {
    return editor.window->findChild<QTextEdit *>(mailhost::controls::bodyEditor)->toPlainText();
}

QString locationOf(const Editor &editor) {
    return editor.window->findChild<QLineEdit *>(mailhost::controls::locationField)->text();
}

int Step::timesSent(Operation operation) const {
    return int(std::ranges::count_if(messages, [operation](const Message &message) {
        return !message.isAnswer && message.operation == operation;
    }));
}

Desktop::Desktop(const QString &hostVersion)
    : m_scenario(hostVersion, calendar())
    , m_uids{{u"plain"_s, Scenario::plain},
             {u"invited"_s, Scenario::invited},
             {u"other"_s, Scenario::other},
             {u"series"_s, series}}
    , m_savedBodies{{u"plain"_s, {u"Agenda"_s}}} {
    m_scenario.client().setAccounts(meetingclient::accountsNamed(u"two"_s));
    watchHost();
    hostRuns.clear();
}

Editor *Desktop::editorOf(const QString &appointment) {
    const auto found = std::ranges::find(m_editors, appointment, &Editor::appointment);
    return found == m_editors.end() ? nullptr : &*found;
}

QString Desktop::keyInFile(const QString &appointment) const {
    return m_onDisk ? scenarios::meetingKeyIn(m_onDisk->value(appointment)) : QString();
}

bool Desktop::perform(const QString &line) {
    m_step = {};
    m_step.line = line;
    m_step.diskFull = m_diskFull;
    m_scenario.forget();
    for (const Editor &editor : std::as_const(m_editors))
        m_step.wasDirty[editor.window] = editor.window && editor.window->viewController()->isDirty();
    {
        std::optional<FullDisk> full;
        if (m_diskFull)
            full.emplace();
        if (!carryOut(*this, line))
            return false;
        m_scenario.wait(secondsOfAStep);
    }
    for (const auto &posted : m_scenario.desktop().bus->posted()) {
        const auto interpret = posted.name == kIPCNotifyVelaClientToOutlookPlugin ? &answerOf : &requestOf;
        m_step.messages.append(
            interpret(posted.userInfo.value(VL_IPC_ACTION_ID), posted.userInfo.value(VL_IPC_CONTENT)));
    }
    m_step.runs = std::exchange(hostRuns, {});
    noteStored();
    noteEditors();
    readDisk();
    return true;
}

// What an editor had when it was stored is in the file from then on, until it is taken back.
void Desktop::noteStored() {
    for (Editor &editor : m_editors) {
        if (!m_step.diskFull && std::ranges::count(m_step.runs, editor.window.data(), &HostRun::editor) > 0)
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

void Desktop::noteEditors() {
    QList<Editor> open;
    for (const mailhost::EditorWindowController *controller : mailhost::EditorWindowController::open()) {
        const QString uid = controller->editorWindow()->viewController()->content()->UUID();
        if (m_uids.key(uid).isEmpty())
            m_uids.insert(u"new%1"_s.arg(++m_newOnes), uid);
        const Editor *known = editorOf(m_uids.key(uid));
        const bool isSame = known && known->window == controller->editorWindow();
        open.append(isSame ? *known : Editor{controller->editorWindow(), m_uids.key(uid)});
    }
    m_editors = open;
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

} // namespace simulation
