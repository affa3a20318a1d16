#include "tests/simulation/Ledger.h"

#include "standin/meetingclient/People.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageBox>
#include <QRegularExpression>

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
bool hasEndedWork(const Happened &step) {
    return step.line.startsWith(u"sheet") || step.line.startsWith(u"strip") || !step.answers.isEmpty();
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

QString keyInRecord(const mailhost::Appointment &appointment) {
    return QJsonDocument::fromJson(appointment.ucCapabilities.toUtf8())
        .object()
        .value(u"meetingKey")
        .toString();
}

QString Ledger::keyInFile(const QString &appointment) const {
    const auto &file = m_desktop.onDisk();
    return file && file->contains(appointment) ? keyInRecord(file->value(appointment)) : QString();
}

bool Ledger::isPersonal(const QString &key) const {
    const QList<meetingclient::Person> &people = meetingclient::people();
    return key == m_desktop.scenario().client().profile().value(u"roomMeetingId").toString() ||
           std::any_of(people.begin(), people.end(),
                       [&key](const auto &person) { return person.room == key; });
}

QString Ledger::note() {
    ++m_step;
    noteRequests();
    noteAlerts();
    noteRemovals();
    noteSubjects();
    const QString wrong = noteOwners();
    noteChanges();
    const QString alsoWrong = noteOperations();
    return wrong.isNull() ? alsoWrong : wrong;
}

// An answer is for a request of the same step, else for the one that has waited longest.
void Ledger::noteRequests() {
    m_now = m_desktop.scenario().desktop().runLoop->now();
    for (const auto &posted : m_desktop.last().posted) {
        const bool isAnswer = posted.name.startsWith(u"VelaVideo");
        if (const auto request = requestOf(posted.userInfo); request && !isAnswer)
            m_open.append({*request, meetingOf(posted.userInfo), m_step, m_now});
        const std::optional<Answer> answer = isAnswer ? trueAnswer(posted.userInfo) : std::nullopt;
        qsizetype answered = -1;
        for (qsizetype i = 0; answer && i < m_open.size(); ++i) {
            const OpenRequest &open = m_open[i];
            const bool fits =
                open.request == answer->to &&
                (open.meeting.isNull() || answer->meeting.isNull() || open.meeting == answer->meeting);
            if (fits && (answered < 0 || open.step == m_step))
                answered = i;
        }
        if (answered >= 0)
            m_open.removeAt(answered);
    }
}

// Those that are shown, each in the window that it belongs to.
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

void Ledger::noteRemovals() {
    static const QRegularExpression removal(
        u"^(?|(?:delete|forget|menu delete|menu cancel) (.+)|strip (.+) remove)$"_s);
    const QString appointment = removal.match(m_desktop.last().line).captured(1);
    if (appointment.isEmpty())
        return;
    m_removed.insert(keyInFile(appointment));
    const QStringList keys = m_owners.keys(appointment);
    m_removed += QSet<QString>(keys.begin(), keys.end());
}

void Ledger::noteSubjects() {
    const auto note = [this](const QString &appointment, const QString &subject) {
        if (!subject.isEmpty())
            m_subjects[appointment].insert(subject.left(clientsSubjectLength));
    };
    const QStringList words = m_desktop.last().line.split(u' ');
    if (words[0] == u"rename" || words[0] == u"subject")
        note(words[1], words.value(2));
    if (!m_desktop.onDisk())
        return;
    for (auto it = m_desktop.onDisk()->begin(); it != m_desktop.onDisk()->end(); ++it)
        note(it.key(), it->summary);
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
        const QString key = keyInFile(appointment);
        if (!meetings.contains(key) || isPersonal(key))
            continue;
        if (!m_owners.contains(key))
            m_owners.insert(key, appointment);
        if (ownerOf(key) != appointment)
            return u"%1 has the record of the meeting of %2"_s.arg(appointment, ownerOf(key));
    }
    return {};
}

void Ledger::noteChanges() {
    if (!m_desktop.onDisk())
        return;
    for (auto it = m_desktop.onDisk()->begin(); it != m_desktop.onDisk()->end(); ++it) {
        const auto meeting = m_desktop.scenario().client().meeting(keyInRecord(*it));
        const Sides now{sharedValuesOf(*it), meeting ? sharedValuesOf(*meeting) : SharedValues()};
        if (m_sides.contains(it.key()) && m_sides[it.key()] == now)
            continue;
        m_sides[it.key()] = now;
        m_changed[it.key()] = m_step;
    }
}

bool Ledger::isExplained(const QString &appointment) const {
    return isExplainedSince(appointment, m_changed.value(appointment));
}

bool Ledger::isExplainedSince(const QString &appointment, int step) const {
    const bool isOpen = std::any_of(m_open.begin(), m_open.end(), [&](const OpenRequest &open) {
        const bool isAbout = open.meeting.isNull() || ownerOf(open.meeting) == appointment ||
                             open.meeting == keyInFile(appointment) || isPersonal(open.meeting);
        const bool mayBeAnswered = open.step >= step || m_now - open.sentAt < requestTimeOut;
        return mayBeAnswered && isAbout && open.request != Request::Start &&
               open.request != Request::Accounts;
    });
    return isOpen || m_told.value(appointment) >= step || m_told.value(QString()) >= step;
}

// Each operation that was asked for runs exactly once, unless it is refused or its editor closes. With a
// second press in the same editor the first one is forgotten.
QString Ledger::noteOperations() {
    const Happened &step = m_desktop.last();
    QString wrong;
    if (step.pressed)
        for (const Editor &editor : m_desktop.editors())
            if (editor.window == step.pressedIn)
                m_waiting[step.pressedIn] = {*step.pressed, editor.appointment, m_step};
    QSet<const mailhost::EditorWindow *> ran;
    for (const HostRun &run : step.runs) {
        const bool isWaited =
            (m_waiting.contains(run.editor) && m_waiting[run.editor].operation == run.operation) ||
            (step.pressedIn == run.editor && step.pressed == run.operation);
        const bool isRepeatedSave = run.operation == HostOperation::Save && hasEndedWork(step);
        if ((!isWaited || ran.contains(run.editor)) && !isRepeatedSave)
            wrong =
                u"the host's %1 ran, and nobody had asked for it, or only once"_s.arg(nameOf(run.operation));
        ran.insert(run.editor);
    }
    for (auto it = m_waiting.begin(); it != m_waiting.end();) {
        const auto &open = m_desktop.editors();
        const bool isOpen =
            std::any_of(open.begin(), open.end(), [&](const Editor &e) { return e.window == it.key(); });
        // The plug-in never runs a held save of a meeting with attendees, nor sends one without.
        const bool isRun = (it->operation == HostOperation::Send) == (it->appointment == u"invited");
        if (ran.contains(it.key()) || !isOpen) {
            it = m_waiting.erase(it);
            continue;
        }
        if (isRun && !isExplainedSince(it->appointment, it->step))
            wrong = u"the %1 of %2 was lost"_s.arg(nameOf(it->operation), it->appointment);
        ++it;
    }
    return wrong;
}

} // namespace simulation
