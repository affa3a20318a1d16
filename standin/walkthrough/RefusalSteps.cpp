// The same changes with a client that refuses them or answers late.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/grid/EventTileView.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Parts.h"

#include <QApplication>
#include <QFile>
#include <QJsonObject>
#include <QMessageBox>
#include <functional>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

constexpr int halfHour = 1800; // seconds
const QString lateRule = u"once delay update 2500"_s;
const QString failingRule = u"once error update 0;Error 3001"_s;

// Requests the change while no client runs: an alert appears, and the calendar stays unchanged.
bool staysUndone(Session &session, const QString &what, const std::function<void()> &change) {
    const mailhost::Appointment before = session.inFile(session.plainUid());
    if (!session.reveal(before.uid))
        return session.step(false, u"the grid shows the appointment"_s);
    change();
    const bool said = waitForButton(ButtonText::launch());
    session.picture(session.mainWindow(), u"refused-"_s + what.section(u' ', 0, 0));
    dismissModal();
    const mailhost::Appointment now = session.inFile(before.uid);
    return session.step(said && now.start == before.start && now.end == before.end &&
                            now.summary == before.summary && !now.uid.isEmpty() && session.shows(before.uid),
                        what + u" without a client: an alert says so, and it stays as it was"_s);
}

void dragTile(Session &session, bool byItsEdge) {
    const mailhost::CalendarGrid *grid = session.host().mainWindowController()->mainWindow()->calendar();
    mailhost::EventTileView *tile = grid->selectedTile();
    const QPoint hold = byItsEdge ? QPoint(tile->width() / 2, tile->height() - 2) : tile->rect().center();
    drag(tile, hold, {0, tile->height()});
}

bool refuseWithoutClient(Session &session) {
    session.client().quit();
    return staysUndone(session, u"dragged"_s, [&] { dragTile(session, false); }) &&
           staysUndone(session, u"resized"_s, [&] { dragTile(session, true); }) &&
           staysUndone(session, u"renamed"_s,
                       [&] {
                           session.pressInMain(Qt::Key_F2);
                           type(session.mainWindow(), u"Something else"_s);
                           session.pressInMain(Qt::Key_Return);
                       }) &&
           staysUndone(session, u"deleted"_s, [&] {
               session.pressInMain(Qt::Key_Delete);
               click(shown(controls::deleteConfirmButton));
           });
}

bool launchAgain(Session &session) {
    session.reveal(session.plainUid());
    session.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    waitForButton(ButtonText::launch());
    return session.launchFromAlert(u"the client is launched again from the alert"_s);
}

// An alert shows the error; the host has made its change by then.
bool refuseByAnswer(Session &session) {
    const QDateTime before = session.inFile(session.plainUid()).start.value;
    RunningClient::tell(failingRule);
    Report::settle(0.1);
    session.reveal(session.plainUid());
    session.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    const bool said = waitForAlert(); // not the progress window, which may come before it
    session.picture(alert(), u"client-refused"_s);
    dismissModal();
    return session.step(
        said && session.inFile(session.plainUid()).start.value == before.addSecs(halfHour) &&
            session.shows(session.plainUid()),
        u"a client that answers with an error: an alert says so, and what the host has done by then stands"_s);
}

// Clicks "Add video meeting" in the open editor and checks the alert.
bool isRefused(Session &session, const QString &picture) {
    click(session.stripButton(ButtonText::add()));
    const bool said = waitForAlert();
    session.picture(alert(), picture);
    return dismissModal() && said;
}

bool sayEachReason(Session &session) {
    bool good = session.openNew(u"Not today"_s);
    const std::pair<const char *, const char *> answers[] = {
        {"once error profile 0;Error VelaClientNotSignIn", "alert-signed-out"},
        {"once error profile 0;Error 5003", "alert-no-network"},
        {"once corrupt profile empty", "alert-no-answer"}};
    for (const auto &[rule, picture] : answers) {
        RunningClient::tell(QString::fromLatin1(rule));
        Report::settle(0.1);
        good = isRefused(session, QString::fromLatin1(picture)) && good;
    }
    const QString client = qEnvironmentVariable("PARLO_ROOT") + u"/Applications/Parlo Meetings.app"_s;
    const QString aside = client + u".aside"_s;
    good = QFile::rename(client, aside) && good;
    good = isRefused(session, u"alert-not-installed"_s) && good;
    good = QFile::rename(aside, client) && good;
    return session.step(good && session.discardEditor(),
                        u"signed out, without a network, without an answer, not "
                        u"installed: each has an alert of its own"_s);
}

// Moves the appointment and answers its new start; the client's answer is two and a half seconds away.
QDateTime moveWithLateAnswer(Session &session) {
    RunningClient::tell(lateRule);
    Report::settle(0.1);
    session.report().mark();
    const QDateTime before = session.inFile(session.plainUid()).start.value;
    session.reveal(session.plainUid());
    session.pressInMain(Qt::Key_Up, Qt::ControlModifier);
    Report::waitFor([&] { return session.sent(meetingAction, updatePrefix) == 1; });
    return before.addSecs(-halfHour);
}

bool arrivesLate(Session &session, const QDateTime &expected) {
    const auto clientHasIt = [&] {
        return session.meetingOf(session.plainUid()).value(u"startTime"_s).toInteger() ==
               expected.toSecsSinceEpoch();
    };
    // The plug-in may handle the answer after this program has seen it.
    return Report::waitFor([&] { return session.answered(updateAnswer) == 1; }) &&
           Report::waitFor(clientHasIt) &&
           Report::waitFor([&] { return session.inFile(session.plainUid()).start.value == expected; });
}

bool answerBesideAnEditor(Session &session) {
    // Opens the editor first, because the progress window blocks all input while the client is busy.
    click(shown(controls::newAppointmentButton));
    Report::waitFor([&] { return session.editor() != nullptr; });
    Report::settle();
    type(session.editor(), u"Being written"_s);
    const QDateTime moved = moveWithLateAnswer(session);
    Report::waitFor([] { return QApplication::activeModalWidget() != nullptr; });
    const bool notYet = session.answered(updateAnswer) == 0;
    session.picture(QApplication::activeModalWidget(), u"progress"_s);
    const bool arrived = arrivesLate(session, moved);
    Report::settle(0.5);
    const QStringList entered = session.editorController()
                                    ? QStringList(session.editorController()->uncommittedChanges().keys())
                                    : QStringList();
    return session.step(notYet && arrived && entered == QStringList{u"content.summary"_s},
                        u"an answer that comes while another editor is open changes nothing in it"_s);
}

bool answerWithoutMainWindow(Session &session) {
    const QDateTime moved = moveWithLateAnswer(session);
    session.mainWindow()->close();
    const bool closed = Report::waitFor([&] { return !session.mainWindow(); });
    const bool notYet = session.answered(updateAnswer) == 0;
    if (!session.step(closed && notYet && arrivesLate(session, moved),
                      u"an answer that comes after the main window was closed is heard"_s))
        return false;
    QWidget *window = session.host().addMainWindow()->window();
    window->show();
    // Otherwise it could take the focus from the editor later.
    Report::waitFor([&] { return window->isActiveWindow(); });
    const bool isShown = Report::waitFor([&] { return session.shows(session.plainUid()); });
    return session.step(isShown, u"a new main window shows what the file has"_s) &&
           session.step(session.discardEditor(), u"the other editor is closed without saving"_s);
}

} // namespace

// Cancels a meeting of an earlier day before any request has succeeded in this session.
bool cancelWithoutClient(Session &session) {
    const QString uid = session.otherMeetingUid();
    if (uid.isEmpty()) {
        session.report().comment(u"no second meeting with attendees: no cancellation is refused"_s);
        return true;
    }
    mailhost::Appointment earlier = session.inFile(uid);
    earlier.ucCapabilities = u"{\"meetingKey\":\"of-an-earlier-day\"}"_s;
    session.host().session()->store(earlier);
    session.reveal(uid);
    session.pressInMain(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    click(shown(controls::deleteConfirmButton));
    const bool said = waitForButton(ButtonText::launch());
    dismissModal();
    return session.step(
        said && session.isInFile(uid) && session.shows(uid) && session.sentMessages().isEmpty(),
        u"cancelled without a client: an alert says so, the meeting stays and nobody is told"_s);
}

Part refusalPart() {
    return {"refusals", {refuseWithoutClient, launchAgain, refuseByAnswer, sayEachReason}};
}

Part lateAnswerPart() {
    return {"late answers", {answerBesideAnEditor, answerWithoutMainWindow}};
}

} // namespace walkthrough
