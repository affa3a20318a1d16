#include "tests/simulation/Invariants.h"

#include "standin/meetingclient/People.h"

#include <QWindow>

namespace simulation {

namespace {

constexpr int secondsPerMinute = 60;
constexpr double requestTimeOut = 30.0;

QString nameOf(HostOperation operation) {
    static const QStringList names{u"save"_s, u"save and close"_s, u"send"_s};
    return names[int(operation)];
}

// Whether the step can have ended the work in an editor that nobody has asked to save: with an answer, or at
// the settings when nothing was to be sent. The last save in that editor is then run once more.
bool hasEndedWork(const Step &step) {
    return step.line.startsWith(u"sheet") || step.line.startsWith(u"strip") ||
           std::ranges::count(step.messages, true, &Message::isAnswer) > 0;
}

// The exact text of one appointment in the file.
QByteArray componentOf(const QByteArray &calendar, const QString &uid) {
    const qsizetype at = calendar.indexOf("UID:" + uid.toUtf8());
    return at < 0 ? QByteArray() : calendar.mid(at, calendar.indexOf("END:VEVENT", at) - at);
}

QString firstMissing(const QStringList &words, const QString &text) {
    for (const QString &word : words)
        if (!text.contains(word))
            return word;
    return {};
}

} // namespace

QString Invariants::whatIsWrong() {
    ++m_step;
    m_now = m_desktop.scenario().desktop().runLoop->now();
    noteRequests();
    noteAlerts();
    noteLine();
    noteChanges();
    // The first two must see every step.
    QString first = ownersStay();
    const QString second = operationsRunOnce();
    if (first.isNull())
        first = second;
    for (const auto check :
         {&Invariants::editorsStayOpen, &Invariants::dialogsHaveTheirWindow, &Invariants::editorsKeepTheirOwn,
          &Invariants::nothingIsSentTwice, &Invariants::fileIsWhole, &Invariants::appointmentsAreRight})
        if (first.isNull())
            first = (this->*check)();
    return first;
}

Invariants::SharedValues Invariants::valuesOf(const mailhost::Appointment &appointment) {
    return {appointment.summary, QString::number(appointment.start.value.toSecsSinceEpoch()),
            QString::number(appointment.start.value.secsTo(appointment.end.value) / secondsPerMinute),
            QVariant(!appointment.recurrenceRule.isEmpty()).toString()};
}

Invariants::SharedValues Invariants::valuesOf(const QJsonObject &meeting) {
    SharedValues values;
    for (const char *member : {"subject", "startTime", "duration", "recurrence"})
        values.append(meeting.value(QLatin1String(member)).toVariant().toString());
    return values;
}

bool Invariants::isPersonal(const QString &key) const {
    const auto &people = meetingclient::people();
    return key == m_desktop.scenario().client().profile().value(u"roomMeetingId").toString() ||
           std::ranges::count(people, key, &meetingclient::Person::room) > 0;
}

// An answer belongs to a request of the same step, else to the oldest request.
void Invariants::noteRequests() {
    for (const Message &message : std::as_const(m_desktop.step().messages)) {
        if (!message.operation)
            continue;
        if (!message.isAnswer) {
            m_open.append({message, m_step, m_now});
            continue;
        }
        qsizetype answered = -1;
        for (qsizetype i = 0; i < m_open.size(); ++i) {
            const Message &asked = m_open[i].message;
            const bool fits =
                asked.operation == message.operation &&
                (asked.meeting.isNull() || message.meeting.isNull() || asked.meeting == message.meeting);
            if (fits && (answered < 0 || m_open[i].step == m_step))
                answered = i;
        }
        if (answered >= 0)
            m_open.removeAt(answered);
    }
}

void Invariants::noteAlerts() {
    for (const QWidget *alert : QApplication::topLevelWidgets()) {
        if (!alert->isVisible() || !qobject_cast<const QMessageBox *>(alert))
            continue;
        int *told = &m_toldSomewhere;
        for (const Editor &editor : m_desktop.editors())
            if (editor.window->windowHandle()->isAncestorOf(alert->windowHandle()))
                told = &m_histories[editor.appointment].told;
        *told = m_step;
    }
}

void Invariants::noteLine() {
    const QString &line = m_desktop.step().line;
    const QStringList words = line.split(u' ');
    const QString &verb = words[0];
    const QString appointment = words.value(verb == u"menu" ? 2 : 1);
    if (verb == u"rename" || verb == u"subject")
        noteSubject(appointment, words.value(2));
    if (line == u"new video" || line == u"new audio")
        for (const Editor &editor : m_desktop.editors())
            if (!m_desktop.step().wasDirty.contains(editor.window))
                m_histories[editor.appointment].isWanted = true;
    if (verb == u"audio" || (verb == u"strip" && words[2] == u"add"))
        m_histories[appointment].isWanted = true;
    const bool isRemoved = verb == u"delete" || verb == u"forget" || line.startsWith(u"menu delete") ||
                           line.startsWith(u"menu cancel") || (verb == u"strip" && words[2] == u"remove");
    if (!isRemoved)
        return;
    m_removed.insert(m_desktop.keyInFile(appointment));
    for (const QString &key : m_owners.keys(appointment))
        m_removed.insert(key);
}

void Invariants::noteSubject(const QString &appointment, const QString &subject) {
    if (!subject.isEmpty())
        m_histories[appointment].subjects.insert(subject);
}

void Invariants::noteChanges() {
    const Appointments file = m_desktop.onDisk().value_or(Appointments());
    for (auto it = file.begin(); it != file.end(); ++it) {
        noteSubject(it.key(), it->summary);
        History &history = m_histories[it.key()];
        const auto meeting = m_desktop.scenario().client().meeting(scenarios::meetingKeyIn(*it));
        const SharedValues inFile = valuesOf(*it);
        const SharedValues atClient = meeting ? valuesOf(*meeting) : SharedValues();
        if (history.inFile != inFile || history.atClient != atClient)
            history.changed = m_step;
        history.inFile = inFile;
        history.atClient = atClient;
    }
}

bool Invariants::isExplainedSince(const QString &appointment, int step) const {
    const bool isOpen = std::ranges::any_of(m_open, [&](const OpenRequest &open) {
        const QString &meeting = open.message.meeting;
        const QString owner = m_owners.value(meeting); // nobody knows whose a meeting without a subject is
        const bool isAbout =
            owner.isNull() || owner == appointment || meeting == m_desktop.keyInFile(appointment);
        const bool mayBeAnswered = open.step >= step || m_now - open.sentAt < requestTimeOut;
        return mayBeAnswered && isAbout && open.message.operation != Operation::StartMeeting &&
               open.message.operation != Operation::Accounts;
    });
    return isOpen || m_histories.value(appointment).told >= step || m_toldSomewhere >= step;
}

// A meeting never takes the subject of another appointment, nor an appointment the record of another one's.
QString Invariants::ownersStay() {
    const QJsonObject meetings = m_desktop.scenario().client().meetings();
    for (auto it = meetings.begin(); it != meetings.end(); ++it) {
        const QString subject = it->toObject().value(u"subject").toString();
        const QString owner = m_owners.value(it.key());
        if (subject.isEmpty() || isPersonal(it.key()) || m_histories.value(owner).subjects.contains(subject))
            continue;
        for (auto other = m_histories.begin(); other != m_histories.end(); ++other) {
            if (!other->subjects.contains(subject))
                continue;
            if (!owner.isNull())
                return u"the meeting of %1 has taken the subject of %2"_s.arg(owner, other.key());
            m_owners.insert(it.key(), other.key());
        }
    }
    for (const QString &appointment : m_desktop.appointments()) {
        const QString key = m_desktop.keyInFile(appointment);
        if (!meetings.contains(key) || isPersonal(key))
            continue;
        if (!m_owners.contains(key))
            m_owners.insert(key, appointment);
        if (m_owners[key] != appointment)
            return u"%1 has the record of the meeting of %2"_s.arg(appointment, m_owners[key]);
    }
    return {};
}

// Each operation that was asked for runs exactly once, unless it is refused or its editor closes. With a
// second press in the same editor the first one is forgotten.
QString Invariants::operationsRunOnce() {
    const Step &step = m_desktop.step();
    QSet<const mailhost::EditorWindow *> open;
    for (const Editor &editor : m_desktop.editors()) {
        open.insert(editor.window);
        if (step.pressed && editor.window == step.pressed->editor)
            m_waiting[editor.window] = {step.pressed->operation, editor.appointment, m_step};
    }
    QString wrong;
    QSet<const mailhost::EditorWindow *> ran;
    for (const HostRun &run : step.runs) {
        const bool isWaited =
            (m_waiting.contains(run.editor) && m_waiting[run.editor].operation == run.operation) ||
            step.pressed == run;
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

// An editor closes only if the user closes it, or with the operation that has stored and closes it.
QString Invariants::editorsStayOpen() const {
    const Step &step = m_desktop.step();
    auto gone = step.wasDirty;
    for (const Editor &editor : m_desktop.editors())
        gone.remove(editor.window);
    for (const HostRun &run : step.runs)
        if (run.operation != HostOperation::Save &&
            (!step.diskFull || !step.wasDirty.value(run.editor, true)))
            gone.remove(run.editor);
    return gone.isEmpty() || step.userCloses ? QString() : u"an editor closed by itself"_s;
}

QString Invariants::dialogsHaveTheirWindow() const {
    for (const QWindow *window : QGuiApplication::topLevelWindows())
        if (window->isVisible() && window->transientParent() && !window->transientParent()->isVisible())
            return u"a dialog of a closed window is on the screen: "_s + window->objectName();
    return {};
}

QString Invariants::otherMeetingIn(const QString &text, const QString &where,
                                   const QString &appointment) const {
    static const QRegularExpression link(u"/j/([0-9]+)"_s);
    for (const QRegularExpressionMatch &found : link.globalMatch(text))
        if (const QString owner = m_owners.value(found.captured(1), appointment); owner != appointment)
            return u"the %1 of %2 has the meeting of %3"_s.arg(where, appointment, owner);
    return {};
}

// No meeting of another appointment, and all that the user has typed.
QString Invariants::editorsKeepTheirOwn() const {
    for (const Editor &editor : m_desktop.editors()) {
        const QString &name = editor.appointment;
        const vlActionAdditionView *strip = scenarios::Scenario::stripOf(editor.window);
        if (!strip)
            return u"an open editor has no strip"_s;
        const bool mayHaveOne = m_histories.value(name).isWanted || !m_desktop.keyInFile(name).isEmpty();
        if (strip->uiStatus() == StripState::MeetingAttached && !mayHaveOne)
            return u"the strip of %1 shows a meeting that it does not have"_s.arg(name);
        for (const auto &[where, text, typed] :
             {std::tuple(u"location"_s, locationOf(editor), editor.location),
              std::tuple(u"body"_s, bodyOf(editor), editor.body)}) {
            if (const QString wrong = otherMeetingIn(text, where, name); !wrong.isNull())
                return wrong;
            if (const QString word = firstMissing(typed, text); !word.isNull())
                return u"the %1 of %2 has lost %3: %4"_s.arg(where, name, word, text);
        }
    }
    return {};
}

QString Invariants::nothingIsSentTwice() const {
    for (const Operation change : {Operation::Schedule, Operation::Update, Operation::Delete})
        if (m_conditions == Conditions::Prompt && m_desktop.step().timesSent(change) > 1)
            return u"one action has changed a meeting at the client's twice"_s;
    return {};
}

QString Invariants::fileIsWhole() const {
    if (!m_desktop.onDisk())
        return u"the calendar file cannot be read"_s;
    if (componentOf(m_desktop.scenario().fileBytes(), Desktop::untouched) !=
        componentOf(m_calendarAtFirst, Desktop::untouched))
        return u"an appointment that nobody has touched is not what it was"_s;
    return {};
}

// All that the user has typed, and no meeting or audio conference of another appointment.
QString Invariants::keepsItsOwn(const QString &name, const mailhost::Appointment &appointment) const {
    static const QRegularExpression number(u"[0-9]{5}"_s);
    static const QRegularExpression url(u"https://[^ ;]+"_s);
    const QString &body = appointment.bodyHtml;
    const QString &location = appointment.location;
    if (const QString word = firstMissing(m_desktop.savedBodies().value(name), body); !word.isNull())
        return u"the file has lost %1 from the body of %2"_s.arg(word, name);
    for (const auto &[where, text] : {std::pair(u"location"_s, location), std::pair(u"body"_s, body)})
        if (const QString wrong = otherMeetingIn(text, where, name); !wrong.isNull())
            return wrong;
    const bool hasMeeting = !scenarios::meetingKeyIn(appointment).isEmpty();
    if (hasMeeting && location.count(url) > 1)
        return u"the location of %1 has several links: %2"_s.arg(name, location);
    const bool hasAny = hasMeeting || location.contains(number) || body.contains(u"MacVlBookmark");
    if (hasAny && !m_histories.value(name).isWanted)
        return u"%1 has a meeting that nobody wanted for it"_s.arg(name);
    return {};
}

// Client and calendar have the same values unless work is in progress or the user was told of the difference.
QString Invariants::meetingFollows(const QString &name, const mailhost::Appointment &appointment) const {
    const QString key = scenarios::meetingKeyIn(appointment);
    if (key.isEmpty() || isPersonal(key) || m_removed.contains(key))
        return {};
    if (!m_owners.contains(key) && m_conditions == Conditions::Faulty)
        return {}; // somebody has invented it
    const auto meeting = m_desktop.scenario().client().meeting(key);
    if (!meeting)
        return u"the meeting of %1 is gone"_s.arg(name);
    const Editor *editor = m_desktop.editorOf(name);
    const bool isAtWork = editor && editor->window->viewController()->isDirty();
    const History history = m_histories.value(name);
    if (isAtWork || isExplainedSince(name, history.changed))
        return {};
    SharedValues there = history.atClient;
    if (appointment.summary.isEmpty())
        there[0] = QString(); // the client may have a subject of its own
    if (there != history.inFile)
        return u"without a word, the meeting of %1 has other values: %2; the file has %3"_s.arg(
            name, there.join(u' '), history.inFile.join(u' '));
    if (m_conditions == Conditions::Faulty)
        return {};
    if (appointment.bodyHtml.count(u"MacVlBookmarkBegin"_s) != 1)
        return u"the body of %1 has not exactly one invitation"_s.arg(name);
    if (!appointment.location.contains(meeting->value(u"joinUrl").toString()))
        return u"the location of %1 lacks the join URL"_s.arg(name);
    return {};
}

QString Invariants::appointmentsAreRight() const {
    for (auto it = m_desktop.onDisk()->begin(); it != m_desktop.onDisk()->end(); ++it)
        for (const auto check : {&Invariants::keepsItsOwn, &Invariants::meetingFollows})
            if (const QString wrong = (this->*check)(it.key(), *it); !wrong.isNull())
                return wrong;
    return {};
}

} // namespace simulation
