#include "tests/faults/Desktop.h"

#include "platform/runtime/Runtime.h"
#include "platform/toolkit/Windows.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "standin/mailhost/windows/ControlNames.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QTextEdit>
#include <QWindow>

namespace faults {

namespace {

const QString requestChannel = QStringLiteral("VelaOutlookPluginToVelaVideoClient_PRL");
const QString answerChannel = QStringLiteral("VelaVideoClientToVelaOutlookPlugin_PRL");

const QStringList mainWindowVerbs{QStringLiteral("move"), QStringLiteral("resize"), QStringLiteral("rename"),
                                  QStringLiteral("menu"), QStringLiteral("question")};
constexpr double secondsOfAStep = 0.2; // nobody is faster

roads::OpenedCalendar calendar() {
    return {"BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Somebody//Else//EN\r\nX-UNKNOWN;X-P=1:kept\r\n"
            "BEGIN:VEVENT\r\nUID:plain@desk\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261124T090000Z\r\n"
            "DTEND:20261124T093000Z\r\nSUMMARY:Quarterly review\r\nLOCATION:Room 7\r\nX-KEEP:plain\r\n"
            "DESCRIPTION:Agenda first.\r\n"
            "X-ALT-DESC;FMTTYPE=text/html:<html><body><p>Agenda <b>first</b>.</p></body></html>\r\n"
            "END:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:untouched@desk\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261124T120000Z\r\n"
            "DTEND:20261124T130000Z\r\nSUMMARY;LANGUAGE=en:Some\\, lunch\r\nX-ODD ;x=\"1\":kept \r\n"
            "LOCATION:A long line that another program has fold\r\n ed here\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:invited@desk\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261125T130000Z\r\n"
            "DTEND:20261125T140000Z\r\nSUMMARY:Planning\r\nX-KEEP:invited\r\n"
            "ORGANIZER;CN=Ada Example:mailto:ada@parlo.example\r\n"
            "ATTENDEE;CN=Ben Example;ROLE=REQ-PARTICIPANT:mailto:ben@parlo.example\r\n"
            "ATTENDEE;CN=Blue room;CUTYPE=ROOM:mailto:blue@parlo.example\r\n"
            "ATTENDEE;CN=Red room;CUTYPE=ROOM:mailto:red@parlo.example\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:other@desk\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261126T100000Z\r\n"
            "DTEND:20261126T110000Z\r\nSUMMARY:Another one\r\nX-KEEP:other\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:series@desk\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261123T080000Z\r\n"
            "DTEND:20261123T083000Z\r\nSUMMARY:Stand-up\r\nRRULE:FREQ=DAILY;COUNT=5\r\nX-KEEP:series\r\n"
            "END:VEVENT\r\nEND:VCALENDAR\r\n",
            QDate(2026, 11, 24),
            {{QStringLiteral("Ada Example"), QStringLiteral("ada@parlo.example")},
             {QStringLiteral("Ada Elsewhere"), QStringLiteral("ada@other.example")}}};
}

QJsonArray audioAccounts() {
    const auto account = [](int number, const QString &phone) {
        const QJsonObject free{{QStringLiteral("country"), QStringLiteral("US")},
                               {QStringLiteral("number"), phone}};
        return QJsonObject{{QStringLiteral("meetingNumber"), number},
                           {QStringLiteral("tollFreeNumbers"), QJsonArray{free}},
                           {QStringLiteral("invitation"), QStringLiteral("Dial in: ") + phone}};
    };
    return {account(4155551, QStringLiteral("+1 800 5550100")),
            account(4155552, QStringLiteral("+1 800 5550101"))};
}

QStringList &warningsOfDay() {
    static auto *list = new QStringList;
    return *list;
}

QtMessageHandler &handlerBefore() {
    static QtMessageHandler handler = nullptr;
    return handler;
}

// The day's own: a warning belongs to the step in which it came.
void keepWarning(QtMsgType type, const QMessageLogContext &, const QString &text) {
    // The bus cannot carry every corrupt answer, and says so.
    const bool harmless = type == QtDebugMsg || type == QtInfoMsg || text.contains(u"propagateSizeHints") ||
                          text.contains(u"it contains a NUL character");
    if (!harmless)
        warningsOfDay().append(text);
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
    : m_desk(hostVersion, calendar())
    , m_uids{{QStringLiteral("plain"), roads::Desk::plain},
             {QStringLiteral("invited"), roads::Desk::invited},
             {QStringLiteral("other"), roads::Desk::other},
             {QStringLiteral("series"), QStringLiteral("series@desk")}}
    , m_calendarAtFirst(m_desk.fileBytes()) {
    m_desk.client().setAccounts(audioAccounts());
    watchHost();
    (void)takeHostRuns();
    warningsOfDay().clear();
    handlerBefore() = qInstallMessageHandler(keepWarning);
    for (const QString &name : m_uids.keys())
        m_savedBodies.insert(name, {});
    m_savedBodies[QStringLiteral("plain")].append(QStringLiteral("Agenda"));
}

Desktop::~Desktop() {
    qInstallMessageHandler(handlerBefore());
}

const QStringList &Desktop::warnings() const {
    return warningsOfDay();
}

QString Desktop::uidOf(const QString &appointment) const {
    return m_uids.value(appointment);
}

QStringList Desktop::appointments() const {
    return m_uids.keys();
}

mailhost::MainWindow *Desktop::mainWindow() const {
    return const_cast<roads::Desk &>(m_desk).host().mainWindowController()->mainWindow();
}

mailhost::EditorWindow *Desktop::editorOf(const QString &appointment) const {
    for (const Writing &writing : m_writings)
        if (writing.appointment == appointment)
            return writing.window;
    return nullptr;
}

Writing *Desktop::writingOf(const QString &appointment) {
    for (Writing &writing : m_writings)
        if (writing.appointment == appointment)
            return &writing;
    return nullptr;
}

bool Desktop::perform(const QString &line) {
    const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    static const QList<Verb> verbs = personsVerbs() + clientsVerbs();
    for (const Verb &verb : verbs) {
        if (words.value(0) != QLatin1String(verb.word) || words.size() <= verb.arguments)
            continue;
        beforeStep(line);
        if (!(this->*verb.run)(words.mid(1)))
            return false;
        m_desk.wait(secondsOfAStep);
        afterStep();
        return true;
    }
    return false;
}

void Desktop::beforeStep(const QString &line) {
    m_last = {};
    m_last.line = line;
    m_desk.forget();
    for (const Writing &writing : std::as_const(m_writings))
        m_last.openBefore.insert(writing.window.data());
}

void Desktop::press(HostOperation operation, mailhost::EditorWindow *editor) {
    m_last.presses.append({operation, editor});
    m_pressedEver.append({operation, editor});
}

void Desktop::afterStep() {
    for (const auto &posted : m_desk.desktop().bus->posted()) {
        if (posted.name == requestChannel)
            m_last.requests.append(posted);
        if (posted.name == answerChannel)
            m_last.answers.append(posted);
    }
    if (!m_last.requests.isEmpty())
        m_lastRequest = m_desk.desktop().runLoop->now();
    m_last.runs = takeHostRuns();
    m_ranEver += m_last.runs;
    readDisk();
    noteSaved();
    noteEmptiedPlaces();
    if (m_last.line.startsWith(u"menu undo") || m_last.line.startsWith(u"menu redo"))
        noteTakenBack();
    noteWritings();
    noteMixed();
    noteKeys();
    readDisk(); // with the names of new ones
}

double Desktop::secondsSinceLastRequest() const {
    return const_cast<roads::Desk &>(m_desk).desktop().runLoop->now() - m_lastRequest;
}

int Desktop::timesPressed(HostOperation operation, const mailhost::EditorWindow *editor) const {
    return int(std::count_if(m_pressedEver.begin(), m_pressedEver.end(), [&](const Happened::Press &press) {
        return press.operation == operation && press.editor == editor;
    }));
}

int Desktop::timesRun(HostOperation operation, const mailhost::EditorWindow *editor) const {
    return int(std::count_if(m_ranEver.begin(), m_ranEver.end(), [&](const HostRun &run) {
        return run.operation == operation && run.editor == editor;
    }));
}

// What an editor had when it was saved is in the file from then on.
void Desktop::noteSaved() {
    for (const HostRun &run : std::as_const(m_last.runs)) {
        if (!run.editor || run.operation == HostOperation::SaveRecord)
            continue;
        for (const Writing &writing : std::as_const(m_writings))
            if (writing.window == run.editor)
                m_savedBodies[writing.appointment] += writing.body;
    }
    for (auto it = m_savedBodies.begin(); m_onDisk && it != m_savedBodies.end(); ++it) {
        if (m_onDisk->contains(it.key()))
            continue;
        it->clear();
        m_deletedOnce.insert(it.key());
    }
}

void Desktop::readDisk() {
    const QByteArray bytes = m_desk.fileBytes();
    if (bytes == m_bytesOnDisk && m_onDisk && m_namesRead == m_uids.size())
        return;
    m_bytesOnDisk = bytes;
    m_namesRead = m_uids.size();
    m_onDisk.reset();
    QString error;
    const auto file = mailhost::CalendarFile::open(m_desk.calendarPath(), &error);
    if (!file)
        return;
    m_onDisk.emplace();
    for (auto it = m_uids.begin(); it != m_uids.end(); ++it)
        if (const auto found = file->find(*it))
            m_onDisk->insert(it.key(), *found);
}

// The file has gone back to what it was, and what was not touched since in an editor went with it.
void Desktop::noteTakenBack() {
    for (auto it = m_savedBodies.begin(); it != m_savedBodies.end(); ++it)
        it->removeIf([&](const QString &word) { return !m_bytesOnDisk.contains(word.toUtf8()); });
    for (Writing &writing : m_writings) {
        if (!writing.window)
            continue;
        const QString body =
            writing.window->findChild<QTextEdit *>(mailhost::controls::bodyEditor)->toPlainText();
        writing.body.removeIf([&body](const QString &word) { return !body.contains(word); });
        const QString place =
            writing.window->findChild<QLineEdit *>(mailhost::controls::locationField)->text();
        writing.place.removeIf([&place](const QString &word) { return !place.contains(word); });
    }
}

// A delete empties the place, whatever the person wrote there.
void Desktop::noteEmptiedPlaces() {
    const bool deleted = std::any_of(m_last.answers.begin(), m_last.answers.end(), [](const auto &answer) {
        return answer.userInfo.value(QStringLiteral("actionId")) == QStringLiteral("3");
    });
    for (Writing &writing : m_writings) {
        const auto *field = writing.window
                                ? writing.window->findChild<QLineEdit *>(mailhost::controls::locationField)
                                : nullptr;
        if (!field || !field->text().isEmpty())
            continue;
        const bool stored =
            std::any_of(m_last.runs.begin(), m_last.runs.end(), [&writing](const HostRun &run) {
                return run.editor == writing.window && run.operation != HostOperation::SaveRecord;
            });
        if (deleted || (writing.emptiedByDelete && stored))
            writing.place.clear();
        writing.emptiedByDelete = deleted || (writing.emptiedByDelete && !stored);
    }
}

void Desktop::noteWritings() {
    QSet<const mailhost::EditorWindow *> open;
    for (mailhost::EditorWindowController *controller : mailhost::EditorWindowController::open()) {
        mailhost::EditorWindow *window = controller->editorWindow();
        open.insert(window);
        const bool known = std::any_of(m_writings.begin(), m_writings.end(),
                                       [window](const Writing &writing) { return writing.window == window; });
        if (known)
            continue;
        QString name = m_uids.key(window->viewController()->content()->UUID());
        if (name.isEmpty()) {
            name = QStringLiteral("new%1").arg(++m_newOnes);
            m_uids.insert(name, window->viewController()->content()->UUID());
        }
        m_writings.append({window, name, rt::identifier(window), {}, {}, false});
        if (m_last.line == u"new video" || m_last.line == u"new audio")
            m_wanted.insert(name);
        m_closedWindowIDs.remove(rt::identifier(window)); // the address has come again
    }
    m_writings.removeIf([this, &open](const Writing &writing) {
        if (writing.window && open.contains(writing.window))
            return false;
        m_closedWindowIDs.insert(writing.windowID);
        return true;
    });
}

void Desktop::noteMixed() {
    const bool onTheCalendar = mainWindowVerbs.contains(m_last.line.section(u' ', 0, 0));
    if (m_writings.size() + (onTheCalendar ? 1 : 0) < 2)
        return;
    for (const Writing &writing : std::as_const(m_writings))
        m_mixed.insert(writing.appointment);
}

void Desktop::noteKeys() {
    const QStringList keys = m_desk.client().meetings().keys();
    m_keysEver += QSet<QString>(keys.begin(), keys.end());
    for (const auto &answer : std::as_const(m_last.answers)) {
        const QStringList fields = answer.userInfo.value(QStringLiteral("content")).split(u';');
        m_keysEver.insert(fields.value(0));
        const QByteArray json = QByteArray::fromBase64(fields.value(13).toLatin1());
        m_keysEver.insert(QJsonDocument::fromJson(json).object().value(u"meetingKey").toString());
    }
}

} // namespace faults
