#include "tests/simulation/Invariants.h"

#include "platform/runtime/Runtime.h"
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "standin/mailhost/windows/ControlNames.h"

#include <QApplication>
#include <QDialog>
#include <QJsonObject>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTextEdit>

namespace simulation {

namespace {

namespace controls = mailhost::controls;
constexpr double requestTimeOut = 30.0;

// Everything that the file says about one appointment, to the letter.
QByteArray componentOf(const QByteArray &calendar, const QString &uid) {
    const qsizetype at = calendar.indexOf("UID:" + uid.toUtf8());
    if (at < 0)
        return {};
    return calendar.mid(at, calendar.indexOf("END:VEVENT", at) - at);
}

QString bodyOf(const Editor &editor) {
    return editor.window->findChild<QTextEdit *>(controls::bodyEditor)->toPlainText();
}

QString placeOf(const Editor &editor) {
    return editor.window->findChild<QLineEdit *>(controls::locationField)->text();
}

// The first meeting that a text leads to and that is another appointment's; an empty text without one.
QString otherOwner(const Ledger &ledger, const QString &appointment, const QString &text) {
    static const QRegularExpression link(u"/j/([0-9]+)"_s);
    for (const QRegularExpressionMatch &found : link.globalMatch(text))
        if (const QString owner = ledger.ownerOf(found.captured(1)); !owner.isNull() && owner != appointment)
            return owner;
    return {};
}

} // namespace

// An editor goes only when the user lets it go, or with the operation that closes it and has stored it.
QString Invariants::editorsStayOpen() {
    const Happened &step = m_desktop.last();
    QSet<const mailhost::EditorWindow *> gone = step.openBefore;
    for (const Editor &editor : m_desktop.editors())
        gone.remove(editor.window);
    for (const mailhost::EditorWindow *editor : gone) {
        const bool closing = std::any_of(step.runs.begin(), step.runs.end(), [editor](const HostRun &run) {
            return run.editor == editor && run.operation != HostOperation::Save;
        });
        const bool isStored = !step.diskFull || step.nothingToStore.contains(editor);
        if (!step.userCloses && (!closing || !isStored))
            return u"an editor closed by itself"_s;
    }
    return {};
}

QString Invariants::nothingOfAClosedEditor() {
    const auto &monitor = vlActionAdditionViewMonitor::sharedInstance();
    for (const QString &windowID : m_desktop.closedWindowIDs()) {
        if (monitor.getVlActionAdditionViewByApptWindowID(windowID) ||
            monitor.getVlActionAdditionViewByWindowIdentify(windowID))
            return u"the strip of a closed editor is reachable"_s;
        if (SchSettingWndCtrlMgr::sharedInstance().hasSchSettingWindow(windowID))
            return u"the settings sheet of a closed editor is reachable"_s;
    }
    for (const QWidget *window : QApplication::topLevelWidgets())
        if (const QWidget *below = windowBelow(window);
            qobject_cast<const QDialog *>(window) && window->isVisible() && below && !below->isVisible())
            return u"a dialog of a closed window is on the screen: "_s + window->objectName();
    return {};
}

QString Invariants::stripsShowTheirOwn() {
    const auto &file = m_desktop.onDisk();
    for (const Editor &editor : m_desktop.editors()) {
        const vlActionAdditionView *strip = scenarios::Scenario::stripOf(editor.window);
        if (!strip)
            return u"an open editor has no strip"_s;
        const bool mayHaveOne = m_desktop.wanted().contains(editor.appointment) ||
                                (file && !keyInRecord(file->value(editor.appointment)).isEmpty());
        if (strip->uiStatus() == StripState::MeetingAttached && !mayHaveOne)
            return u"the strip of %1 shows a meeting that it does not have"_s.arg(editor.appointment);
        if (const QString owner = otherOwner(m_ledger, editor.appointment, placeOf(editor)); !owner.isEmpty())
            return u"the editor of %1 has the join link of %2"_s.arg(editor.appointment, owner);
        if (const QString owner = otherOwner(m_ledger, editor.appointment, bodyOf(editor)); !owner.isEmpty())
            return u"the editor of %1 has the invitation of %2"_s.arg(editor.appointment, owner);
    }
    return {};
}

QString Invariants::wordsInEditors() {
    for (const Editor &editor : m_desktop.editors()) {
        for (const QString &word : editor.body)
            if (!bodyOf(editor).contains(word))
                return u"the body of %1 has lost %2: %3"_s.arg(editor.appointment, word, bodyOf(editor));
        for (const QString &word : editor.place)
            if (!placeOf(editor).contains(word))
                return u"the location of %1 has lost %2: %3"_s.arg(editor.appointment, word, placeOf(editor));
    }
    return {};
}

QString Invariants::keysArrive() {
    return m_desktop.last().keysLost ? u"keys that were typed have not reached their field"_s : QString();
}

QString Invariants::requestsHaveACause() {
    const auto sentTwice = [this](Request request) { return timesSent(m_desktop.last(), request) > 1; };
    if (m_conditions == Conditions::Calm &&
        (sentTwice(Request::Schedule) || sentTwice(Request::Update) || sentTwice(Request::Delete)))
        return u"one action has changed a meeting at the client's twice"_s;
    return unaskedRequest(m_desktop.last());
}

QString Invariants::progressEnds() {
    if (scenarios::Scenario::progressIsUp() && m_desktop.secondsSinceLastRequest() > requestTimeOut)
        return u"the progress window is up with nothing to wait for"_s;
    return {};
}

QString Invariants::nothingIsLogged() {
    const QStringList &warnings = m_desktop.warnings();
    return warnings.isEmpty() ? QString() : u"unexpected warning: "_s + warnings.first();
}

QString Invariants::fileIsWhole(const Appointments &) {
    if (componentOf(m_desktop.bytesOnDisk(), Desktop::untouched) !=
        componentOf(m_desktop.calendarAtFirst(), Desktop::untouched))
        return u"an appointment that nobody has touched is not what it was"_s;
    return {};
}

QString Invariants::wordsInTheFile(const Appointments &file) {
    for (auto it = m_desktop.savedBodies().begin(); it != m_desktop.savedBodies().end(); ++it)
        for (const QString &word : *it)
            if (file.contains(it.key()) && !file[it.key()].bodyHtml.contains(word))
                return u"the file has lost %1 from the body of %2"_s.arg(word, it.key());
    return {};
}

// Another editor's meeting, or account, is not written into an appointment that none was wanted for.
QString Invariants::onlyWhatWasWanted(const Appointments &file) {
    static const QRegularExpression number(u"[0-9]{5}"_s);
    for (auto it = file.begin(); it != file.end(); ++it) {
        if (m_desktop.wanted().contains(it.key()))
            continue;
        if (!keyInRecord(*it).isEmpty())
            return u"%1 has a meeting that nobody wanted for it"_s.arg(it.key());
        if (it->location.contains(number))
            return u"the location of %1 is not its own: %2"_s.arg(it.key(), it->location);
        if (it->bodyHtml.contains(u"MacVlBookmark"))
            return u"the body of %1 has an invitation that nobody wanted"_s.arg(it.key());
    }
    return {};
}

QString Invariants::linksAreTheirOwn(const Appointments &file) {
    static const QRegularExpression url(u"https://[^ ;]+"_s);
    for (auto it = file.begin(); it != file.end(); ++it) {
        if (const QString owner = otherOwner(m_ledger, it.key(), it->location); !owner.isEmpty())
            return u"%1 has the join link of %2"_s.arg(it.key(), owner);
        if (const QString owner = otherOwner(m_ledger, it.key(), it->bodyHtml); !owner.isEmpty())
            return u"%1 has the invitation of %2"_s.arg(it.key(), owner);
        if (!keyInRecord(*it).isEmpty() && it->location.count(url) > 1)
            return u"the location of %1 has several links: %2"_s.arg(it.key(), it->location);
    }
    return {};
}

// What the client has is what the calendar has, as far as nobody is at work on it; or the user knows.
QString Invariants::meetingsFollow(const Appointments &file) {
    for (auto it = file.begin(); it != file.end(); ++it) {
        const QString key = keyInRecord(*it);
        const auto &editors = m_desktop.editors();
        const bool isAtWork = std::any_of(editors.begin(), editors.end(), [&it](const Editor &editor) {
            return editor.appointment == it.key() && editor.window->viewController()->isDirty();
        });
        if (key.isEmpty() || m_ledger.isPersonal(key) || m_ledger.wasRemoved(key))
            continue;
        if (m_ledger.ownerOf(key).isNull() && m_conditions == Conditions::Stormy)
            continue; // somebody has invented it
        const auto meeting = m_desktop.scenario().client().meeting(key);
        if (!meeting)
            return u"the meeting of %1 is gone"_s.arg(it.key());
        if (isAtWork || m_ledger.isExplained(it.key()))
            continue;
        const SharedValues here = sharedValuesOf(*it);
        const SharedValues there = sharedValuesOf(*meeting);
        if (there.subject != here.subject && !here.subject.isEmpty())
            return u"without a word, the meeting of %1 has another subject: %2, not %3"_s.arg(
                it.key(), there.subject, here.subject);
        if (there.start != here.start)
            return u"without a word, the meeting of %1 starts at another time"_s.arg(it.key());
        if (there.minutes != here.minutes || there.recurring != here.recurring)
            return u"without a word, the meeting of %1 has another duration or recurrence"_s.arg(it.key());
        if (m_conditions == Conditions::Stormy)
            continue;
        if (it->bodyHtml.count(u"MacVlBookmarkBegin"_s) != 1)
            return u"the body of %1 has not exactly one invitation"_s.arg(it.key());
        if (!it->location.contains(meeting->value(u"joinUrl").toString()))
            return u"the location of %1 lacks the join URL"_s.arg(it.key());
    }
    return {};
}

QString Invariants::whatIsWrong() {
    const QString inTheLedger = m_ledger.note();
    if (const QString warning = nothingIsLogged(); !warning.isNull() || !inTheLedger.isNull())
        return warning.isNull() ? inTheLedger : warning;
    using I = Invariants;
    for (const auto check : {&I::editorsStayOpen, &I::nothingOfAClosedEditor, &I::stripsShowTheirOwn,
                             &I::wordsInEditors, &I::keysArrive, &I::requestsHaveACause, &I::progressEnds})
        if (const QString wrong = (this->*check)(); !wrong.isNull())
            return wrong;
    if (!m_desktop.onDisk())
        return u"the calendar file cannot be read"_s;
    for (const auto check : {&I::fileIsWhole, &I::wordsInTheFile, &I::onlyWhatWasWanted, &I::linksAreTheirOwn,
                             &I::meetingsFollow})
        if (const QString wrong = (this->*check)(*m_desktop.onDisk()); !wrong.isNull())
            return wrong;
    return {};
}

} // namespace simulation
