#include "tests/simulation/Invariants.h"

#include "plugin/ui/strip/vlActionAdditionView.h"

#include <QApplication>
#include <QDialog>
#include <QJsonObject>
#include <QRegularExpression>

namespace simulation {

namespace {

// The data that the checks use.
struct Observed {
    Desktop &desktop;
    const Ledger &ledger;
    Conditions conditions;
    const QByteArray &calendarAtFirst;
};

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

// An editor closes only if the user closes it, or with the operation that has stored and closes it.
QString editorsStayOpen(const Observed &run) {
    const Step &step = run.desktop.step();
    QSet<const mailhost::EditorWindow *> gone = step.openBefore;
    for (const Editor &editor : run.desktop.editors())
        gone.remove(editor.window);
    for (const HostRun &run : step.runs)
        if (run.operation != HostOperation::Save &&
            (!step.diskFull || step.nothingToStore.contains(run.editor)))
            gone.remove(run.editor);
    return gone.isEmpty() || step.userCloses ? QString() : u"an editor closed by itself"_s;
}

QString dialogsHaveTheirWindow(const Observed &) {
    for (const QWidget *window : QApplication::topLevelWidgets())
        if (const QWidget *below = windowBelow(window);
            qobject_cast<const QDialog *>(window) && window->isVisible() && below && !below->isVisible())
            return u"a dialog of a closed window is on the screen: "_s + window->objectName();
    return {};
}

QString otherMeetingIn(const Observed &run, const QString &text, const QString &where,
                       const QString &appointment) {
    static const QRegularExpression link(u"/j/([0-9]+)"_s);
    for (const QRegularExpressionMatch &found : link.globalMatch(text))
        if (const QString owner = run.ledger.ownerOf(found.captured(1));
            !owner.isNull() && owner != appointment)
            return u"the %1 of %2 has the meeting of %3"_s.arg(where, appointment, owner);
    return {};
}

QString editorsShowTheirOwn(const Observed &run) {
    for (const Editor &editor : run.desktop.editors()) {
        const vlActionAdditionView *strip = scenarios::Scenario::stripOf(editor.window);
        if (!strip)
            return u"an open editor has no strip"_s;
        const bool mayHaveOne =
            run.ledger.wasWanted(editor.appointment) || !run.desktop.keyInFile(editor.appointment).isEmpty();
        if (strip->uiStatus() == StripState::MeetingAttached && !mayHaveOne)
            return u"the strip of %1 shows a meeting that it does not have"_s.arg(editor.appointment);
        for (const auto &[where, text] :
             {std::pair(u"location"_s, locationOf(editor)), {u"body"_s, bodyOf(editor)}})
            if (const QString wrong = otherMeetingIn(run, text, where, editor.appointment); !wrong.isNull())
                return wrong;
    }
    return {};
}

QString editorsKeepWhatWasTyped(const Observed &run) {
    for (const Editor &editor : run.desktop.editors()) {
        if (const QString word = firstMissing(editor.body, bodyOf(editor)); !word.isNull())
            return u"the body of %1 has lost %2: %3"_s.arg(editor.appointment, word, bodyOf(editor));
        if (const QString word = firstMissing(editor.location, locationOf(editor)); !word.isNull())
            return u"the location of %1 has lost %2: %3"_s.arg(editor.appointment, word, locationOf(editor));
    }
    return {};
}

QString nothingIsSentTwice(const Observed &run) {
    for (const Request request : {Request::Schedule, Request::Update, Request::Delete})
        if (run.conditions == Conditions::Prompt && run.desktop.step().timesSent(request) > 1)
            return u"one action has changed a meeting at the client's twice"_s;
    return {};
}

QString fileIsWhole(const Observed &run) {
    if (!run.desktop.onDisk())
        return u"the calendar file cannot be read"_s;
    if (componentOf(run.desktop.scenario().fileBytes(), Desktop::untouched) !=
        componentOf(run.calendarAtFirst, Desktop::untouched))
        return u"an appointment that nobody has touched is not what it was"_s;
    return {};
}

QString fileKeepsWhatWasTyped(const Observed &run) {
    for (auto it = run.desktop.savedBodies().begin(); it != run.desktop.savedBodies().end(); ++it)
        if (const QString word = firstMissing(*it, run.desktop.onDisk()->value(it.key()).bodyHtml);
            !word.isNull())
            return u"the file has lost %1 from the body of %2"_s.arg(word, it.key());
    return {};
}

// Another appointment's meeting, or audio conference, is not written into an appointment.
QString appointmentsKeepTheirOwn(const Observed &run) {
    static const QRegularExpression number(u"[0-9]{5}"_s);
    static const QRegularExpression url(u"https://[^ ;]+"_s);
    for (auto it = run.desktop.onDisk()->begin(); it != run.desktop.onDisk()->end(); ++it) {
        for (const auto &[where, text] : {std::pair(u"location"_s, it->location), {u"body"_s, it->bodyHtml}})
            if (const QString wrong = otherMeetingIn(run, text, where, it.key()); !wrong.isNull())
                return wrong;
        if (!keyInRecord(*it).isEmpty() && it->location.count(url) > 1)
            return u"the location of %1 has several links: %2"_s.arg(it.key(), it->location);
        const bool hasAny = !keyInRecord(*it).isEmpty() || it->location.contains(number) ||
                            it->bodyHtml.contains(u"MacVlBookmark");
        if (hasAny && !run.ledger.wasWanted(it.key()))
            return u"%1 has a meeting that nobody wanted for it"_s.arg(it.key());
    }
    return {};
}

// Client and calendar have the same values unless work is in progress or the user was told of the difference.
QString meetingFollows(const Observed &run, const QString &name, const mailhost::Appointment &appointment) {
    const QString key = keyInRecord(appointment);
    if (key.isEmpty() || run.ledger.isPersonal(key) || run.ledger.wasRemoved(key))
        return {};
    if (run.ledger.ownerOf(key).isNull() && run.conditions == Conditions::Faulty)
        return {}; // somebody has invented it
    const auto meeting = run.desktop.scenario().client().meeting(key);
    if (!meeting)
        return u"the meeting of %1 is gone"_s.arg(name);
    const Editor *editor = run.desktop.editorOf(name);
    const bool isAtWork = editor && editor->window->viewController()->isDirty();
    if (isAtWork || run.ledger.isExplained(name))
        return {};
    const SharedValues here = sharedValuesOf(appointment);
    const SharedValues there = sharedValuesOf(*meeting);
    if (there.subject != here.subject && !here.subject.isEmpty())
        return u"without a word, the meeting of %1 has another subject: %2, not %3"_s.arg(name, there.subject,
                                                                                          here.subject);
    if (there.start != here.start)
        return u"without a word, the meeting of %1 starts at another time"_s.arg(name);
    if (there.minutes != here.minutes || there.recurring != here.recurring)
        return u"without a word, the meeting of %1 has another duration or recurrence"_s.arg(name);
    if (run.conditions == Conditions::Faulty)
        return {};
    if (appointment.bodyHtml.count(u"MacVlBookmarkBegin"_s) != 1)
        return u"the body of %1 has not exactly one invitation"_s.arg(name);
    if (!appointment.location.contains(meeting->value(u"joinUrl").toString()))
        return u"the location of %1 lacks the join URL"_s.arg(name);
    return {};
}

QString meetingsFollow(const Observed &run) {
    for (auto it = run.desktop.onDisk()->begin(); it != run.desktop.onDisk()->end(); ++it)
        if (const QString wrong = meetingFollows(run, it.key(), *it); !wrong.isNull())
            return wrong;
    return {};
}

} // namespace

QString Invariants::whatIsWrong() {
    if (const QString inTheLedger = m_ledger.note(); !inTheLedger.isNull())
        return inTheLedger;
    const Observed run{m_desktop, m_ledger, m_conditions, m_calendarAtFirst};
    for (const auto check :
         {editorsStayOpen, dialogsHaveTheirWindow, editorsShowTheirOwn, editorsKeepWhatWasTyped,
          nothingIsSentTwice, fileIsWhole, fileKeepsWhatWasTyped, appointmentsKeepTheirOwn, meetingsFollow})
        if (const QString wrong = check(run); !wrong.isNull())
            return wrong;
    return {};
}

} // namespace simulation
