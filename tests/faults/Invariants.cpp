#include "tests/faults/Invariants.h"

#include "platform/runtime/Runtime.h"
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/meetingclient/People.h"
#include "tests/faults/Requests.h"

#include <QApplication>
#include <QDialog>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTextEdit>

namespace faults {

namespace {

namespace controls = mailhost::controls;
constexpr double requestTimeOut = 30.0;
constexpr int clientsSubjectLength = 128;

// Everything that the file says about one appointment, to the letter.
QByteArray componentOf(const QByteArray &calendar, const QString &uid) {
    const qsizetype at = calendar.indexOf("UID:" + uid.toUtf8());
    if (at < 0)
        return {};
    return calendar.mid(at, calendar.indexOf("END:VEVENT", at) - at);
}

QJsonObject recordOf(const mailhost::Appointment &appointment) {
    return QJsonDocument::fromJson(appointment.ucCapabilities.toUtf8()).object();
}

QString keyOf(const mailhost::Appointment &appointment) {
    return recordOf(appointment).value(u"meetingKey").toString();
}

const char *nameOf(HostOperation operation) {
    switch (operation) {
    case HostOperation::Save:
        return "save";
    case HostOperation::SaveAndClose:
        return "save and close";
    case HostOperation::Send:
        return "send";
    case HostOperation::SaveRecord:
        return "store";
    case HostOperation::Delete:
        return "delete";
    }
    return "";
}

// How many workflows the step can have brought to their end: with an answer each, or at the settings sheet
// when nothing was to be sent.
int endedWorkflows(const Happened &step) {
    const int atTheSheet = step.line.startsWith(u"sheet") || step.line.startsWith(u"strip") ? 1 : 0;
    return atTheSheet + int(std::count_if(step.answers.begin(), step.answers.end(), [](const auto &answer) {
               const QString action = answer.userInfo.value(QStringLiteral("actionId"));
               return action == u"3" || action == u"4";
           }));
}

// Whether a meeting is to be read, changed or deleted: the operation that needs it is held.
bool asksForTheMeeting(const Happened &step) {
    return std::any_of(step.requests.begin(), step.requests.end(), [](const auto &request) {
        return request.userInfo.value(QStringLiteral("actionId")) == u"3";
    });
}

// A held operation is completed once, and only after an answer; one that was not held runs at once.
QString heldOperations(Desktop &desktop, Weather weather) {
    const Happened &step = desktop.last();
    QString wrong;
    for (const HostRun &run : step.runs) {
        if (!run.editor)
            continue;
        const auto isSame = [&run](const auto &other) {
            return other.operation == run.operation && other.editor == run.editor;
        };
        const auto pressed = std::count_if(step.presses.begin(), step.presses.end(), isSame);
        const auto ran = std::count_if(step.runs.begin(), step.runs.end(), isSame);
        const int ended = endedWorkflows(step);
        const bool isHeld = weather == Weather::Calm && asksForTheMeeting(step) && ended == 0;
        const qsizetype allowed = isHeld                     ? 0
                                  : weather == Weather::Calm ? std::max<qsizetype>(pressed, ended ? 1 : 0)
                                                             : pressed + ended;
        if (ran > allowed)
            wrong = QStringLiteral("the host's %1 ran %2 times, %3 can follow from the step")
                        .arg(QLatin1String(nameOf(run.operation)))
                        .arg(ran)
                        .arg(allowed);
        const bool once =
            run.operation == HostOperation::Send || run.operation == HostOperation::SaveAndClose;
        if (once &&
            desktop.timesRun(run.operation, run.editor) > desktop.timesPressed(run.operation, run.editor))
            wrong = QStringLiteral("the host's %1 ran more often than the person asked for it")
                        .arg(QLatin1String(nameOf(run.operation)));
    }
    return wrong;
}

// An editor goes only when the person lets it go, or with the operation that closes it.
QString editorsStayOpen(Desktop &desktop, Weather) {
    const Happened &step = desktop.last();
    for (const mailhost::EditorWindow *editor : step.openBefore) {
        const auto &now = desktop.writings();
        const bool open = std::any_of(now.begin(), now.end(),
                                      [editor](const Writing &writing) { return writing.window == editor; });
        const bool closing = std::any_of(step.runs.begin(), step.runs.end(), [editor](const HostRun &run) {
            return run.editor == editor && run.operation != HostOperation::Save;
        });
        if (!open && !closing && !step.personCloses)
            return QStringLiteral("an editor closed by itself");
    }
    return {};
}

QString nothingOfAClosedEditor(Desktop &desktop, Weather) {
    const auto &monitor = vlActionAdditionViewMonitor::sharedInstance();
    for (const QString &windowID : desktop.closedWindowIDs()) {
        if (monitor.getVlActionAdditionViewByApptWindowID(windowID) ||
            monitor.getVlActionAdditionViewByWindowIdentify(windowID))
            return QStringLiteral("the strip of a closed editor is reachable");
        if (SchSettingWndCtrlMgr::sharedInstance().hasSchSettingWindow(windowID))
            return QStringLiteral("the settings sheet of a closed editor is reachable");
    }
    for (const QWidget *window : QApplication::topLevelWidgets())
        if (const QWidget *below = windowBelow(window);
            qobject_cast<const QDialog *>(window) && window->isVisible() && below && !below->isVisible())
            return QStringLiteral("a dialog of a closed window is on the screen: ") + window->objectName();
    for (const Writing &writing : desktop.writings())
        if (!roads::Desk::stripOf(writing.window))
            return QStringLiteral("an open editor has no strip");
    return {};
}

QString wordsInEditors(Desktop &desktop, Weather) {
    for (const Writing &writing : desktop.writings()) {
        const QString body = writing.window->findChild<QTextEdit *>(controls::bodyEditor)->toPlainText();
        for (const QString &word : writing.body)
            if (!body.contains(word))
                return QStringLiteral("the body of %1 has lost %2: %3").arg(writing.appointment, word, body);
        const QString place = writing.window->findChild<QLineEdit *>(controls::locationField)->text();
        for (const QString &word : writing.place)
            if (!place.contains(word))
                return QStringLiteral("the location of %1 has lost %2: %3")
                    .arg(writing.appointment, word, place);
    }
    return {};
}

QString requestsHaveACause(Desktop &desktop, Weather weather) {
    const auto sentTwice = [&desktop](Request request) { return timesSent(desktop.last(), request) > 1; };
    if (weather != Weather::Stormy &&
        (sentTwice(Request::Schedule) || sentTwice(Request::Update) || sentTwice(Request::Delete)))
        return QStringLiteral("one action has changed a meeting at the client's twice");
    return unaskedRequest(desktop.last());
}

QString progressEnds(Desktop &desktop, Weather) {
    if (roads::Desk::progressIsUp() && desktop.secondsSinceLastRequest() > requestTimeOut)
        return QStringLiteral("the progress window is up with nothing to wait for");
    return {};
}

QString nothingIsLogged(Desktop &desktop, Weather) {
    return desktop.warnings().isEmpty() ? QString()
                                        : QStringLiteral("unexpected warning: ") + desktop.warnings().first();
}

using Appointments = QMap<QString, mailhost::Appointment>; // by name

QString fileIsWhole(Desktop &desktop, const Appointments &) {
    const QByteArray &now = desktop.bytesOnDisk();
    if (componentOf(now, Desktop::untouched) != componentOf(desktop.calendarAtFirst(), Desktop::untouched))
        return QStringLiteral("an appointment that nobody has touched is not what it was");
    for (const char *name : {"plain", "invited", "other", "series"}) {
        const QByteArray component = componentOf(now, desktop.uidOf(QLatin1String(name)));
        if (!component.isEmpty() && !desktop.deletedOnce().contains(QLatin1String(name)) &&
            !component.contains(QByteArray("X-KEEP:") + name))
            return QStringLiteral("a property of another program is lost from %1").arg(QLatin1String(name));
    }
    return {};
}

QString recordsNameMeetings(Desktop &desktop, const Appointments &file) {
    for (auto it = file.begin(); it != file.end(); ++it) {
        const QString key = keyOf(*it);
        if (!key.isEmpty() && !desktop.keysEver().contains(key))
            return QStringLiteral("the record of %1 names %2, which no meeting ever was").arg(it.key(), key);
    }
    return {};
}

QString wordsInTheFile(Desktop &desktop, const Appointments &file) {
    for (auto it = desktop.savedBodies().begin(); it != desktop.savedBodies().end(); ++it)
        for (const QString &word : *it)
            if (file.contains(it.key()) && !file[it.key()].bodyHtml.contains(word))
                return QStringLiteral("the file has lost %1 from the body of %2").arg(word, it.key());
    return {};
}

// The personal meeting of a user is for any appointment and follows none.
bool isOwnMeeting(Desktop &desktop, const QString &key) {
    const QList<meetingclient::Person> &people = meetingclient::people();
    const bool isRoom =
        std::any_of(people.begin(), people.end(), [&key](const auto &p) { return p.room == key; });
    return !key.isEmpty() && !isRoom &&
           key != desktop.desk().client().profile().value(u"roomMeetingId").toString();
}

QString oneMeetingForEach(Desktop &desktop, const Appointments &file) {
    QMap<QString, QString> owners;
    for (auto it = file.begin(); it != file.end(); ++it) {
        const QString key = keyOf(*it);
        if (!isOwnMeeting(desktop, key) || desktop.mixed().contains(it.key()))
            continue;
        if (owners.contains(key))
            return QStringLiteral("%1 and %2 have the same meeting").arg(it.key(), owners[key]);
        owners.insert(key, it.key());
    }
    return {};
}

// Another editor's meeting, or account, is not written into an appointment that none was wanted for.
QString onlyWhatWasWanted(Desktop &desktop, const Appointments &file) {
    for (auto it = file.begin(); it != file.end(); ++it) {
        if (desktop.wanted().contains(it.key()) || desktop.mixed().contains(it.key()))
            continue;
        if (!keyOf(*it).isEmpty())
            return QStringLiteral("%1 has a meeting that nobody wanted for it").arg(it.key());
        if (it->location.contains(u"https://") ||
            it->location.contains(QRegularExpression(QStringLiteral("[0-9]{5}"))))
            return QStringLiteral("the location of %1 is not its own: %2").arg(it.key(), it->location);
        if (it->bodyHtml.contains(u"MacVlBookmark"))
            return QStringLiteral("the body of %1 has an invitation that nobody wanted").arg(it.key());
    }
    return {};
}

// Not that of another meeting, which was written into another appointment.
QString locationsLeadToTheirMeeting(Desktop &desktop, const Appointments &file) {
    static const QRegularExpression url(QStringLiteral("https://[^ ;]+"));
    for (auto it = file.begin(); it != file.end(); ++it) {
        if (keyOf(*it).isEmpty() || desktop.mixed().contains(it.key()))
            continue;
        const QString joinUrl = recordOf(*it).value(u"joinUrl").toString();
        for (const QRegularExpressionMatch &found : url.globalMatch(it->location))
            if (found.captured() != joinUrl)
                return QStringLiteral("the location of %1 leads to another meeting: %2")
                    .arg(it.key(), it->location);
    }
    return {};
}

// What the client has is what the file has, as far as nobody is at work on it.
QString meetingsFollow(Desktop &desktop, const Appointments &file) {
    for (auto it = file.begin(); it != file.end(); ++it) {
        const QString key = keyOf(*it);
        const auto &open = desktop.writings();
        const bool atWork = std::any_of(open.begin(), open.end(), [&it](const Writing &writing) {
            return writing.appointment == it.key();
        });
        if (!isOwnMeeting(desktop, key) || atWork || desktop.removed().contains(it.key()))
            continue;
        const auto meeting = desktop.desk().client().meeting(key);
        if (!meeting)
            return QStringLiteral("the meeting of %1 is gone").arg(it.key());
        if (!it->summary.isEmpty() &&
            meeting->value(u"subject").toString() != it->summary.left(clientsSubjectLength))
            return QStringLiteral("the meeting of %1 has the subject \"%2\"")
                .arg(it.key(), meeting->value(u"subject").toString());
        if (meeting->value(u"startTime").toInteger() != it->start.value.toSecsSinceEpoch())
            return QStringLiteral("the meeting of %1 starts at another time").arg(it.key());
        if (it->bodyHtml.count(QStringLiteral("MacVlBookmarkBegin")) != 1)
            return QStringLiteral("the body of %1 has not exactly one invitation").arg(it.key());
        if (!it->location.contains(recordOf(*it).value(u"joinUrl").toString()))
            return QStringLiteral("the location of %1 lacks the join URL").arg(it.key());
    }
    return {};
}

QString inTheFile(Desktop &desktop, Weather weather) {
    if (!desktop.onDisk())
        return QStringLiteral("the calendar file cannot be read");
    const Appointments &file = *desktop.onDisk();
    for (const auto check : {&fileIsWhole, &recordsNameMeetings, &wordsInTheFile})
        if (const QString wrong = check(desktop, file); !wrong.isNull())
            return wrong;
    if (weather == Weather::Stormy)
        return {};
    for (const auto check : {&oneMeetingForEach, &onlyWhatWasWanted, &locationsLeadToTheirMeeting})
        if (const QString wrong = check(desktop, file); !wrong.isNull())
            return wrong;
    return weather == Weather::Calm ? meetingsFollow(desktop, file) : QString();
}

} // namespace

QString whatIsWrong(Desktop &desktop, Weather weather) {
    for (const auto check : {&nothingIsLogged, &heldOperations, &editorsStayOpen, &nothingOfAClosedEditor,
                             &wordsInEditors, &requestsHaveACause, &progressEnds, &inTheFile})
        if (const QString wrong = check(desktop, weather); !wrong.isNull())
            return wrong;
    return {};
}

} // namespace faults
