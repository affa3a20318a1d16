// Changes a meeting on the calendar without an open editor: drags, resizes, renames, deletes and cancels it.
// Also changes one day of a series, which the client must not notice.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/grid/EventTileView.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Parts.h"

#include <QJsonObject>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

constexpr int hour = 3600;     // seconds
constexpr int edge = 2;        // points from a tile's edge in which a drag resizes
constexpr int daysAround = 28; // searched for a series
const QString newSubject = u"Renamed on the calendar"_s;

// The distance on the screen for these seconds, derived from the tile's length.
QPoint distanceOf(const mailhost::CalendarGrid *grid, int seconds) {
    const mailhost::Occurrence shown = *grid->selected();
    return {0, int(qRound(double(grid->selectedTile()->height()) * seconds /
                          double(shown.start.secsTo(shown.end))))};
}

// Waits until one update was sent and answered, so that its answer cannot meet the next change; client, file
// and grid must agree.
bool agree(Session &session) {
    const bool answered = Report::waitFor(
        [&] { return session.sent(meetingAction, updatePrefix) > 0 && session.answered(updateAnswer) > 0; });
    Report::settle();
    const auto clientAgrees = [&] {
        const QJsonObject meeting = session.meetingOf(session.plainUid());
        const mailhost::Appointment stored = session.inFile(session.plainUid());
        return meeting.value(u"startTime"_s).toInteger() == stored.start.value.toSecsSinceEpoch() &&
               meeting.value(u"duration"_s).toString().toInt() * 60 ==
                   stored.start.value.secsTo(stored.end.value) &&
               meeting.value(u"subject"_s).toString() == stored.summary;
    };
    return answered && Report::waitFor(clientAgrees) && session.shows(session.plainUid()) &&
           session.sent(meetingAction, updatePrefix) == 1;
}

bool giveMeeting(Session &session) {
    return session.step(session.giveMeeting(session.plainUid()),
                        u"the appointment gets a meeting again, and its editor is closed"_s);
}

bool move(Session &session) {
    session.report().mark();
    const QDateTime before = session.inFile(session.plainUid()).start.value;
    const mailhost::CalendarGrid *grid = session.reveal(session.plainUid());
    if (!grid)
        return session.step(false, u"the grid shows the appointment"_s);
    mailhost::EventTileView *tile = grid->selectedTile();
    // Upwards, because the tile may be at the window's lower edge.
    drag(tile, tile->rect().center(), distanceOf(grid, -hour));
    const bool moved = Report::waitFor(
        [&] { return session.inFile(session.plainUid()).start.value == before.addSecs(-hour); });
    const bool good =
        session.step(moved && agree(session), u"dragged by an hour: file, client and grid agree"_s);
    session.picture(session.mainWindow(), u"calendar-moved"_s);
    return good;
}

bool resize(Session &session) {
    session.report().mark();
    const QDateTime before = session.inFile(session.plainUid()).end.value;
    const mailhost::CalendarGrid *grid = session.reveal(session.plainUid());
    mailhost::EventTileView *tile = grid->selectedTile();
    drag(tile, {tile->width() / 2, tile->height() - edge}, distanceOf(grid, hour / 2));
    const bool resized = Report::waitFor(
        [&] { return session.inFile(session.plainUid()).end.value == before.addSecs(hour / 2); });
    return session.step(resized && agree(session),
                        u"its lower edge dragged by half an hour: file, client and grid agree"_s);
}

bool rename(Session &session) {
    session.report().mark();
    if (!session.reveal(session.plainUid()))
        return false;
    session.pressInMain(Qt::Key_F2);
    session.picture(session.mainWindow(), u"calendar-renaming"_s);
    type(session.mainWindow(), newSubject);
    session.pressInMain(Qt::Key_Return);
    const bool renamed =
        Report::waitFor([&] { return session.inFile(session.plainUid()).summary == newSubject; });
    return session.step(renamed && agree(session), u"renamed in its tile: file, client and grid agree"_s);
}

bool changeDays(Session &session, const QString &uid, const QString &day, const QString &otherDay,
                const QString &exception) {
    if (!session.reveal(uid, exception))
        return session.step(false, u"the grid shows the changed day of a series"_s);
    session.pressInMain(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    const bool opened = session.waitForStrip(ButtonText::add());
    if (!session.step(opened && session.giveMeetingToOpen(uid), u"opened as a series, it gets a meeting"_s))
        return false;
    const QJsonObject meeting = session.meetingOf(uid);
    session.report().mark();
    const QDateTime before = session.inFile(uid, exception).start.value;
    session.reveal(uid, exception);
    session.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    const bool movedException = Report::waitFor(
        [&] { return session.inFile(uid, exception).start.value == before.addSecs(hour / 2); });
    session.reveal(uid, day);
    session.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    const bool movedDay = Report::waitFor([&] { return !session.inFile(uid, day).recurrenceId.isEmpty(); });
    const bool found = session.reveal(uid, otherDay);
    session.pressInMain(Qt::Key_Delete);
    click(shown(controls::deleteConfirmButton));
    const bool deleted = Report::waitFor([&] { return session.reveal(uid, otherDay) == nullptr; });
    Report::settle();
    session.reveal(uid, day);
    session.picture(session.mainWindow(), u"calendar-series"_s);
    return session.step(
        movedException && movedDay && found && deleted && session.sent(meetingAction) == 0 &&
            session.meetingOf(uid) == meeting,
        u"a day moved, the changed day moved and a day deleted: the file has it, the client is told nothing"_s);
}

// Uses a series of the user with two normal days and a changed one, if the calendar has one.
bool followSeries(Session &session) {
    const QDateTime now = QDateTime::currentDateTime();
    const mailhost::CalendarSession &calendar = *session.host().session();
    QMap<QString, QStringList> days;
    QMap<QString, QString> exceptions;
    const auto around = calendar.file().occurrences(now.addDays(-daysAround), now.addDays(daysAround));
    for (const mailhost::Occurrence &occurrence : around) {
        if (occurrence.instanceId.isEmpty() || occurrence.allDay)
            continue;
        if (occurrence.isException)
            exceptions.insert(occurrence.uid, occurrence.instanceId);
        else
            days[occurrence.uid].append(occurrence.instanceId);
    }
    for (auto it = exceptions.cbegin(); it != exceptions.cend(); ++it)
        if (days.value(it.key()).size() > 1 && calendar.isOwner(session.inFile(it.key())) &&
            session.meetingKey(it.key()).isEmpty())
            return changeDays(session, it.key(), days[it.key()].first(), days[it.key()].last(), it.value());
    session.report().comment(u"no series of the user's own with a changed day"_s);
    return true;
}

// Returns whether file, client and grid no longer have the appointment.
bool removeByKeys(Session &session, const QString &uid, Qt::KeyboardModifiers modifiers,
                  const QString &picture) {
    const QString key = session.meetingKey(uid);
    session.reveal(uid);
    session.pressInMain(Qt::Key_Delete, modifiers);
    session.picture(session.mainWindow(), picture);
    click(shown(controls::deleteConfirmButton));
    return Report::waitFor([&] { return !session.isInFile(uid); }) &&
           Report::waitFor([&] { return session.client().meeting(key).isEmpty(); }) && !key.isEmpty() &&
           session.shows(uid);
}

bool deletePlain(Session &session) {
    const bool gone = removeByKeys(session, session.plainUid(), Qt::NoModifier, u"calendar-deleting"_s);
    return session.step(gone, u"deleted, it is gone from file, client and grid"_s);
}

bool cancelMeeting(Session &session) {
    if (session.meetingUid().isEmpty()) {
        session.report().comment(u"no meeting with attendees: none is cancelled"_s);
        return true;
    }
    const qsizetype messages = session.sentMessages().size();
    const bool gone = removeByKeys(session, session.meetingUid(), Qt::ControlModifier | Qt::ShiftModifier,
                                   u"calendar-cancelling"_s);
    session.picture(session.mainWindow(), u"calendar-after-deletions"_s);
    return session.step(gone && session.sentMessages().size() == messages + 1,
                        u"cancelled, it is gone everywhere and the attendees are told"_s);
}

} // namespace

Part calendarPart() {
    return {"calendar", {giveMeeting, move, resize, rename, followSeries}};
}

Part deletionPart() {
    return {"deletions", {deletePlain, cancelMeeting}};
}

} // namespace walkthrough
