// The same changes with a client that does not run, refuses them or answers late.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/grid/EventTileView.h"
#include "standin/walkthrough/Parts.h"

#include <QApplication>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

constexpr int halfHour = 1800; // seconds
constexpr QKeyCombination earlier = Qt::CTRL | Qt::Key_Up;
constexpr QKeyCombination later = Qt::CTRL | Qt::Key_Down;

// Requests the change while no client runs: an alert appears, and the calendar stays unchanged.
void expectRefused(Session &walk, const QString &change, const std::function<void(QWidget *tile)> &make) {
    const mailhost::Appointment before = walk.plain();
    make(walk.select(before.uid)->selectedTile());
    const bool said = waitForButton(buttons::launch);
    walk.picture(walk.mainWindow(), u"refused-"_s + change);
    dismissModal();
    walk.step(said && walk.plain() == before && walk.shows(before.uid),
              change + u" without a client: an alert says so, and it stays as it was"_s);
}

void refuseWithoutClient(Session &walk) {
    walk.endClient();
    expectRefused(walk, u"dragged"_s, [](QWidget *tile) {
        drag(tile, tile->rect().center(), {0, tile->height()});
    });
    expectRefused(walk, u"resized"_s, [](QWidget *tile) {
        drag(tile, {tile->width() / 2, tile->height() - 2}, {0, tile->height()});
    });
    expectRefused(walk, u"renamed"_s, [&walk](QWidget *) {
        press(walk.mainWindow(), Qt::Key_F2);
        type(walk.mainWindow(), u"Something else"_s);
        press(walk.mainWindow(), Qt::Key_Return);
    });
    expectRefused(walk, u"deleted"_s, [&walk](QWidget *) {
        press(walk.mainWindow(), Qt::Key_Delete);
        click(shown(controls::deleteConfirmButton));
    });
    walk.pressOn(walk.uid().plain, later);
    waitForButton(buttons::launch);
    walk.launchClient(u"the client is launched again from the alert"_s);
}

// An alert shows the error; the host has made its change by then.
void refuseByAnswer(Session &walk) {
    const QDateTime before = walk.plain().start.value;
    walk.tell(u"once error update 0;Error 3001"_s);
    walk.pressOn(walk.uid().plain, later);
    walk.step(
        walk.isAlerted(u"client-refused"_s) && walk.plain().start.value == before.addSecs(halfHour) &&
            walk.shows(walk.uid().plain),
        u"a client that answers with an error: an alert says so, and what the host has done by then stands"_s);
}

// Clicks "Add video meeting" in the open editor; an alert says why not.
bool isAddingRefused(Session &walk, const QString &picture) {
    click(walk.stripButton(buttons::add));
    return walk.isAlerted(picture);
}

void sayEachReason(Session &walk) {
    constexpr struct {
        const char *rule;
        const char *picture;
    } answers[] = {{"once error profile 0;Error VelaClientNotSignIn", "alert-signed-out"},
                   {"once error profile 0;Error 5003", "alert-no-network"},
                   {"once corrupt profile empty", "alert-no-answer"}};
    bool good = walk.openNew(u"Not today"_s);
    for (const auto &[rule, picture] : answers) {
        walk.tell(QString::fromLatin1(rule));
        good = isAddingRefused(walk, QString::fromLatin1(picture)) && good;
    }
    const QString client = qEnvironmentVariable("PARLO_ROOT") + u"/Applications/Parlo Meetings.app"_s;
    const QString aside = client + u".aside"_s;
    good = QFile::rename(client, aside) && good;
    good = isAddingRefused(walk, u"alert-not-installed"_s) && good;
    good = QFile::rename(aside, client) && good;
    walk.step(good && walk.discardEditor(), u"signed out, without a network, without an answer, not "
                                            "installed: each has an alert of its own"_s);
}

// Moves the appointment and answers its new start; the client's answer is two and a half seconds away.
QDateTime moveWithLateAnswer(Session &walk) {
    walk.tell(u"once delay update 2500"_s);
    walk.mark();
    const QDateTime before = walk.plain().start.value;
    walk.pressOn(walk.uid().plain, earlier);
    waitFor([&] { return walk.sent(requests::update) == 1; });
    return before.addSecs(-halfHour);
}

bool arrivesLate(Session &walk, const QDateTime &expected) {
    const auto clientHasIt = [&] {
        return walk.meetingOf(walk.uid().plain).value(u"startTime"_s).toInteger() ==
               expected.toSecsSinceEpoch();
    };
    // The plug-in may handle the answer after this program has seen it.
    return waitFor([&] { return walk.answered(updateAnswer) == 1; }) && waitFor(clientHasIt) &&
           waitFor([&] { return walk.plain().start.value == expected; });
}

void answerBesideAnEditor(Session &walk) {
    // Opens the editor first, because the progress window blocks all input while the client is busy.
    click(shown(controls::newAppointmentButton));
    waitFor([] { return Session::editor() != nullptr; });
    settle();
    type(walk.editor(), u"Being written"_s);
    const QDateTime moved = moveWithLateAnswer(walk);
    waitFor([] { return QApplication::activeModalWidget() != nullptr; });
    const bool notYet = walk.answered(updateAnswer) == 0;
    walk.picture(QApplication::activeModalWidget(), u"progress"_s);
    const bool arrived = arrivesLate(walk, moved);
    settle(0.5);
    walk.step(notYet && arrived && walk.editor() &&
                  walk.editor()->viewController()->uncommittedChanges().keys() ==
                      QStringList{u"content.summary"_s},
              u"an answer that comes while another editor is open changes nothing in it"_s);
}

void answerWithoutMainWindow(Session &walk) {
    const QDateTime moved = moveWithLateAnswer(walk);
    walk.mainWindow()->close();
    const bool closed = waitFor([&] { return !walk.mainWindow(); });
    const bool notYet = walk.answered(updateAnswer) == 0;
    walk.step(closed && notYet && arrivesLate(walk, moved),
              u"an answer that comes after the main window was closed is heard"_s);
    QWidget *window = walk.host().addMainWindow()->window();
    window->show();
    // Otherwise it could take the focus from the editor later.
    waitFor([&] { return window->isActiveWindow(); });
    walk.step(waitFor([&] { return walk.shows(walk.uid().plain); }),
              u"a new main window shows what the file has"_s);
    walk.step(walk.discardEditor(), u"the other editor is closed without saving"_s);
}

} // namespace

// Cancels a meeting of an earlier day before any request has succeeded in this session.
void cancelWithoutClient(Session &walk) {
    const QString uid = walk.uid().otherMeeting;
    if (uid.isEmpty())
        return walk.comment(u"no second meeting with attendees: no cancellation is refused"_s);
    mailhost::Appointment earlierOne = walk.inFile(uid);
    earlierOne.ucCapabilities = u"{\"meetingKey\":\"of-an-earlier-day\"}"_s;
    walk.host().session()->store(earlierOne);
    walk.pressOn(uid, Qt::CTRL | Qt::SHIFT | Qt::Key_Delete);
    click(shown(controls::deleteConfirmButton));
    const bool said = waitForButton(buttons::launch);
    dismissModal();
    walk.step(said && !walk.inFile(uid).uid.isEmpty() && walk.shows(uid) && walk.mailsInOutbox() == 0,
              u"cancelled without a client: an alert says so, the meeting stays and nobody is told"_s);
}

void changeWithoutClient(Session &walk) {
    refuseWithoutClient(walk);
    refuseByAnswer(walk);
    sayEachReason(walk);
}

void changeWithLateAnswers(Session &walk) {
    answerBesideAnEditor(walk);
    answerWithoutMainWindow(walk);
}

} // namespace walkthrough
