// The same changes when the client refuses them, and when its answer comes late.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/EventTileView.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Road.h"

#include <QApplication>
#include <QFile>
#include <QJsonObject>
#include <QMessageBox>
#include <functional>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

constexpr int launchMilliseconds = 30000;
constexpr int halfHour = 1800; // seconds
const QString lateRule = QStringLiteral("once delay update 1500");
const QString failingRule = QStringLiteral("once error update 0;Error 3001");

// The change is asked for while no client runs: it is said, and nothing is changed that anyone could see.
bool staysUndone(Road &road, const QString &what, const std::function<void()> &change) {
    const QString &uid = road.plainUid();
    const mailhost::Appointment before = road.inFile(uid);
    if (!road.reveal(uid))
        return road.walk().step(false, QStringLiteral("the grid shows the appointment"));
    change();
    const bool said = Walk::waitFor([] { return shownButton(launchButton()) != nullptr; });
    road.walk().picture(road.mainWindow(), QStringLiteral("refused-") + what.section(u' ', 0, 0));
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    Walk::waitFor([] { return shownButton(launchButton()) == nullptr; });
    const mailhost::Appointment now = road.inFile(uid);
    return road.walk().step(said && now.start == before.start && now.end == before.end &&
                                now.summary == before.summary && !now.uid.isEmpty() && road.shows(uid),
                            what + QStringLiteral(" without a client: it is said, and it stays as it was"));
}

void dragTile(Road &road, bool byItsEdge) {
    const mailhost::CalendarGrid *grid = road.host().mainWindowController()->mainWindow()->calendar();
    mailhost::EventTileView *tile = grid->selectedTile();
    const QPoint hold = byItsEdge ? QPoint(tile->width() / 2, tile->height() - 2) : tile->rect().center();
    drag(tile, hold, {0, tile->height()});
}

bool refuseWithoutClient(Road &road) {
    road.client().quit();
    return staysUndone(road, QStringLiteral("dragged"), [&] { dragTile(road, false); }) &&
           staysUndone(road, QStringLiteral("resized"), [&] { dragTile(road, true); }) &&
           staysUndone(road, QStringLiteral("renamed"),
                       [&] {
                           road.pressInMain(Qt::Key_F2);
                           type(road.mainWindow(), QStringLiteral("Something else"));
                           road.pressInMain(Qt::Key_Return);
                       }) &&
           staysUndone(road, QStringLiteral("deleted"), [&] {
               road.pressInMain(Qt::Key_Delete);
               click(shown(controls::deleteConfirmButton));
           });
}

// The last alert offers to launch it.
bool launchAgain(Road &road) {
    road.reveal(road.plainUid());
    road.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    Walk::waitFor([] { return shownButton(launchButton()) != nullptr; });
    click(shownButton(launchButton()));
    const bool runs = Walk::waitFor([] { return RunningClient::isRunning(); }, launchMilliseconds);
    return road.walk().step(runs, QStringLiteral("the client is launched again from the alert"));
}

// An answer with an error is said; the host had made its change by then.
bool refuseByAnswer(Road &road) {
    const QDateTime before = road.inFile(road.plainUid()).start.value;
    RunningClient::tell(failingRule);
    Walk::settle(0.1);
    road.reveal(road.plainUid());
    road.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    // Before it the progress window may be up, which closes by itself.
    const bool said = Walk::waitFor(
        [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()) != nullptr; });
    road.walk().picture(QApplication::activeModalWidget(), QStringLiteral("client-refused"));
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    Walk::waitFor([] { return QApplication::activeModalWidget() == nullptr; });
    return road.walk().step(said && road.inFile(road.plainUid()).start.value == before.addSecs(halfHour) &&
                                road.shows(road.plainUid()),
                            QStringLiteral("a client that answers with an error: it is said, and what the "
                                           "host has done by then stands"));
}

// Clicks "Add video meeting" in the open editor and looks at the alert that it leads to.
bool isRefused(Road &road, const QString &picture) {
    click(road.stripButton(addButton()));
    const bool said = Walk::waitFor(
        [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()) != nullptr; });
    road.walk().picture(QApplication::activeModalWidget(), picture);
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    return said && Walk::waitFor([] { return QApplication::activeModalWidget() == nullptr; });
}

// Each has its own words.
bool sayEachReason(Road &road) {
    bool good = road.openNew(QStringLiteral("Not today"));
    const std::pair<const char *, const char *> answers[] = {
        {"once error profile 0;Error VelaClientNotSignIn", "alert-signed-out"},
        {"once error profile 0;Error 5003", "alert-no-network"},
        {"once corrupt profile empty", "alert-no-answer"}};
    for (const auto &[rule, picture] : answers) {
        RunningClient::tell(QString::fromLatin1(rule));
        Walk::settle(0.1);
        good = isRefused(road, QString::fromLatin1(picture)) && good;
    }
    const QString client =
        qEnvironmentVariable("PARLO_ROOT") + QStringLiteral("/Applications/Parlo Meetings.app");
    const QString aside = client + QStringLiteral(".aside");
    good = QFile::rename(client, aside) && good;
    good = isRefused(road, QStringLiteral("alert-not-installed")) && good;
    good = QFile::rename(aside, client) && good;
    return road.walk().step(
        good && road.discardEditor(),
        QStringLiteral("signed out, without a network, without an answer, not installed: each is "
                       "said in its words"));
}

// Moves the appointment; the client's answer is a second and a half away.
qint64 moveWithLateAnswer(Road &road) {
    RunningClient::tell(lateRule);
    Walk::settle(0.1);
    road.walk().mark();
    const QDateTime before = road.inFile(road.plainUid()).start.value;
    road.reveal(road.plainUid());
    road.pressInMain(Qt::Key_Up, Qt::ControlModifier);
    Walk::waitFor([&] { return road.walk().sentSinceMark(meetingAction, updatePrefix) == 1; });
    return before.addSecs(-halfHour).toSecsSinceEpoch();
}

bool arrivesLate(Road &road, qint64 expected) {
    return Walk::waitFor([&] { return road.walk().answeredSinceMark(updateAnswer) == 1; }) &&
           Walk::waitFor([&] {
               return road.meetingOf(road.plainUid()).value(QStringLiteral("startTime")).toInteger() ==
                      expected;
           }) &&
           road.inFile(road.plainUid()).start.value.toSecsSinceEpoch() == expected;
}

} // namespace

// A meeting of an earlier day, before anything has succeeded in this session.
bool walkTheFirstCancellation(Road &road) {
    const QString uid = road.otherMeetingUid();
    if (uid.isEmpty()) {
        road.walk().comment(QStringLiteral("no second meeting with attendees: no cancellation is refused"));
        return true;
    }
    mailhost::Appointment earlier = road.inFile(uid);
    earlier.ucCapabilities = QStringLiteral("{\"meetingKey\":\"of-an-earlier-day\"}");
    road.host().session()->store(earlier);
    road.reveal(uid);
    road.pressInMain(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    click(shown(controls::deleteConfirmButton));
    const bool said = Walk::waitFor([] { return shownButton(launchButton()) != nullptr; });
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    Walk::waitFor([] { return shownButton(launchButton()) == nullptr; });
    return road.walk().step(said && road.isInFile(uid) && road.shows(uid) && road.sentMessages().isEmpty(),
                            QStringLiteral("cancelled without a client: it is said, the meeting stays and "
                                           "nobody is told"));
}

bool walkTheRefusals(Road &road) {
    return refuseWithoutClient(road) && launchAgain(road) && refuseByAnswer(road) && sayEachReason(road);
}

bool walkTheLateAnswers(Road &road) {
    // While the client is waited for, its progress window takes all input: the editor is opened before.
    click(shown(controls::newAppointmentButton));
    Walk::waitFor([&] { return road.editor() != nullptr; });
    Walk::settle();
    type(road.editor(), QStringLiteral("Being written"));
    const qint64 first = moveWithLateAnswer(road);
    Walk::waitFor([] { return QApplication::activeModalWidget() != nullptr; });
    const bool notYet = road.walk().answeredSinceMark(updateAnswer) == 0;
    road.walk().picture(QApplication::activeModalWidget(), QStringLiteral("progress"));
    const bool arrived = arrivesLate(road, first);
    Walk::settle(0.5);
    const QStringList entered = road.editorController()
                                    ? QStringList(road.editorController()->uncommittedChanges().keys())
                                    : QStringList();
    if (!road.walk().step(notYet && arrived && entered == QStringList{QStringLiteral("content.summary")},
                          QStringLiteral("an answer that comes while another editor is open changes nothing "
                                         "in it")))
        return false;
    const qint64 second = moveWithLateAnswer(road);
    road.mainWindow()->close();
    const bool closed = Walk::waitFor([&] { return !road.mainWindow(); });
    const bool late = road.walk().answeredSinceMark(updateAnswer) == 0;
    const bool heard = arrivesLate(road, second);
    road.host().addMainWindow()->window()->show();
    const bool isShown = road.shows(road.plainUid());
    const bool discarded = road.discardEditor();
    return road.walk().step(
        closed && late && heard && isShown && discarded,
        QStringLiteral("an answer that comes after the main window was closed is heard; a "
                       "new window shows what the file has"));
}

} // namespace walkthrough
