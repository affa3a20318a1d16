#include "tests/simulation/Ledger.h"

#include "standin/meetingclient/People.h"

#include <QApplication>
#include <QJsonObject>
#include <QMessageBox>

namespace simulation {

namespace {

constexpr int clientsSubjectLength = 128; // UTF-16 units
constexpr int secondsPerMinute = 60;
constexpr double requestTimeOut = 30.0;

QString nameOf(HostOperation operation) {
    return operation == HostOperation::Save   ? u"save"_s
           : operation == HostOperation::Send ? u"send"_s
                                              : u"save and close"_s;
}

// Whether the step can have ended the work in an editor that nobody has asked to save: with an answer, or at
// the settings when nothing was to be sent. The last save in that editor is then run once more.
bool hasEndedWork(const Step &step) {
    return step.line.startsWith(u"sheet") || step.line.startsWith(u"strip") || step.hasAnswers();
}

} // namespace

SharedValues sharedValuesOf(const mailhost::Appointment &appointment) {
    return {appointment.summary.left(clientsSubjectLength), appointment.start.value.toSecsSinceEpoch(),
            appointment.start.value.secsTo(appointment.end.value) / secondsPerMinute,
            !appointment.recurrenceRule.isEmpty()};
}

SharedValues sharedValuesOf(const QJsonObject &meeting) {
    return {meeting.value(u"subject").toString(), meeting.value(u"startTime").toInteger(),
            meeting.value(u"duration").toVariant().toLongLong(), meeting.value(u"recurrence").toBool()};
}

bool Ledger::isPersonal(const QString &key) const {
    const auto &people = meetingclient::people();
    return key == m_desktop.scenario().client().profile().value(u"roomMeetingId").toString() ||
           std::any_of(people.begin(), people.end(), [&key](const auto &user) { return user.room == key; });
}

QString Ledger::note() {
    ++m_step;
    m_now = m_desktop.scenario().desktop().runLoop->now();
    noteRequests();
    noteAlerts();
    noteLine();
    noteChanges();
    const QString wrong = noteOwners();
    const QString alsoWrong = noteOperations();
    return wrong.isNull() ? alsoWrong : wrong;
}

void Ledger::noteLine() {
    const QString &line = m_desktop.step().line;
    const QStringList words = line.split(u' ');
    const QString &verb = words[0];
    const QString appointment = words.value(verb == u"menu" ? 2 : 1);
    if (verb == u"rename" || verb == u"subject")
        noteSubject(appointment, words.value(2));
    if (line == u"new video" || line == u"new audio")
        for (const Editor &editor : m_desktop.editors())
            if (!m_desktop.step().openBefore.contains(editor.window))
                m_wanted.insert(editor.appointment);
    if (verb == u"audio" || (verb == u"strip" && words[2] == u"add"))
        m_wanted.insert(appointment);
    const bool isRemoved = verb == u"delete" || verb == u"forget" || line.startsWith(u"menu delete") ||
                           line.startsWith(u"menu cancel") || (verb == u"strip" && words[2] == u"remove");
    if (!isRemoved)
        return;
    m_removed.insert(m_desktop.keyInFile(appointment));
    for (const QString &key : m_owners.keys(appointment))
        m_removed.insert(key);
}

// An answer belongs to a request of the same step, else to the oldest request.
void Ledger::noteRequests() {
    for (const Message &message : std::as_const(m_desktop.step().messages)) {
        if (!message.isAnswer && message.request)
            m_open.append({message, m_step, m_now});
        if (!message.isAnswer || !message.request)
            continue;
        qsizetype answered = -1;
        for (qsizetype i = 0; i < m_open.size(); ++i) {
            const Message &asked = m_open[i].message;
            const bool fits =
                asked.request == message.request &&
                (asked.meeting.isNull() || message.meeting.isNull() || asked.meeting == message.meeting);
            if (fits && (answered < 0 || m_open[i].step == m_step))
                answered = i;
        }
        if (answered >= 0)
            m_open.removeAt(answered);
    }
}

// Records the shown alerts with their windows.
void Ledger::noteAlerts() {
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || !qobject_cast<const QMessageBox *>(window))
            continue;
        QString where;
        for (const QWidget *below = windowBelow(window); below; below = windowBelow(below))
            for (const Editor &editor : m_desktop.editors())
                if (editor.window == below)
                    where = editor.appointment;
        m_told[where] = m_step;
    }
}

void Ledger::noteSubject(const QString &appointment, const QString &subject) {
    if (!subject.isEmpty())
        m_subjects[appointment].insert(subject.left(clientsSubjectLength));
}

void Ledger::noteChanges() {
    const Appointments file = m_desktop.onDisk().value_or(Appointments());
    for (auto it = file.begin(); it != file.end(); ++it) {
        noteSubject(it.key(), it->summary);
        const auto meeting = m_desktop.scenario().client().meeting(keyInRecord(*it));
        const std::pair now{sharedValuesOf(*it), meeting ? sharedValuesOf(*meeting) : SharedValues()};
        if (m_values.contains(it.key()) && m_values[it.key()] == now)
            continue;
        m_values[it.key()] = now;
        m_changed[it.key()] = m_step;
    }
}

// A meeting never takes the subject of another appointment, nor an appointment the record of another one's.
QString Ledger::noteOwners() {
    const QJsonObject meetings = m_desktop.scenario().client().meetings();
    for (auto it = meetings.begin(); it != meetings.end(); ++it) {
        const QString subject = it->toObject().value(u"subject").toString();
        const QString owner = ownerOf(it.key());
        if (subject.isEmpty() || isPersonal(it.key()) || m_subjects.value(owner).contains(subject))
            continue;
        for (auto names = m_subjects.begin(); names != m_subjects.end(); ++names) {
            if (!names->contains(subject))
                continue;
            if (!owner.isNull())
                return u"the meeting of %1 has taken the subject of %2"_s.arg(owner, names.key());
            m_owners.insert(it.key(), names.key());
        }
    }
    for (const QString &appointment : m_desktop.appointments()) {
        const QString key = m_desktop.keyInFile(appointment);
        if (!meetings.contains(key) || isPersonal(key))
            continue;
        if (!m_owners.contains(key))
            m_owners.insert(key, appointment);
        if (ownerOf(key) != appointment)
            return u"%1 has the record of the meeting of %2"_s.arg(appointment, ownerOf(key));
    }
    return {};
}

bool Ledger::isExplained(const QString &appointment) const {
    return isExplainedSince(appointment, m_changed.value(appointment));
}

bool Ledger::isExplainedSince(const QString &appointment, int step) const {
    const bool isOpen = std::any_of(m_open.begin(), m_open.end(), [&](const OpenRequest &open) {
        const QString &meeting = open.message.meeting;
        const QString owner = ownerOf(meeting); // nobody knows whose a meeting without a subject is
        const bool isAbout =
            owner.isNull() || owner == appointment || meeting == m_desktop.keyInFile(appointment);
        const bool mayBeAnswered = open.step >= step || m_now - open.sentAt < requestTimeOut;
        return mayBeAnswered && isAbout && open.message.request != Request::Start &&
               open.message.request != Request::Accounts;
    });
    return isOpen || m_told.value(appointment) >= step || m_told.value(QString()) >= step;
}

// Each operation that was asked for runs exactly once, unless it is refused or its editor closes. With a
// second press in the same editor the first one is forgotten.
QString Ledger::noteOperations() {
    const Step &step = m_desktop.step();
    QSet<const mailhost::EditorWindow *> open;
    for (const Editor &editor : m_desktop.editors()) {
        open.insert(editor.window);
        if (step.pressed && editor.window == step.pressedIn)
            m_waiting[step.pressedIn] = {*step.pressed, editor.appointment, m_step};
    }
    QString wrong;
    QSet<const mailhost::EditorWindow *> ran;
    for (const HostRun &run : step.runs) {
        const bool isWaited =
            (m_waiting.contains(run.editor) && m_waiting[run.editor].operation == run.operation) ||
            (step.pressedIn == run.editor && step.pressed == run.operation);
        const bool isRepeatedSave = run.operation == HostOperation::Save && hasEndedWork(step);
        if ((!isWaited || ran.contains(run.editor)) && !isRepeatedSave)
            wrong = u"the host's %1 ran, and was not asked for, or only once"_s.arg(nameOf(run.operation));
        ran.insert(run.editor);
    }
    m_waiting.removeIf(
        [&](const auto &press) { return ran.contains(press.key()) || !open.contains(press.key()); });
    for (const Press &press : std::as_const(m_waiting)) {
        // The plug-in never runs a held save of a meeting with attendees, nor sends one without.
        const bool isRun = (press.operation == HostOperation::Send) == (press.appointment == u"invited");
        if (isRun && !isExplainedSince(press.appointment, press.step))
            wrong = u"the %1 of %2 was lost"_s.arg(nameOf(press.operation), press.appointment);
    }
    return wrong;
}

} // namespace simulation
