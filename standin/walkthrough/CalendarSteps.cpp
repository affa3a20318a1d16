// Changes a meeting on the calendar without an open editor: drags, resizes, renames, deletes and cancels it.
// Also changes one day of a series, which the client must not notice.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/grid/EventTileView.h"
#include "standin/walkthrough/Parts.h"

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

constexpr int hour = 3600;     // seconds
constexpr int edge = 2;        // points from a tile's edge in which a drag resizes
constexpr int daysAround = 28; // searched for a series

// The distance on the screen for these seconds, derived from the tile's length.
QPoint distanceOf(const mailhost::CalendarGrid *grid, int seconds) {
    const mailhost::Occurrence shown = *grid->selected();
    return {0, int(qRound(double(grid->selectedTile()->height()) * seconds /
                          double(shown.start.secsTo(shown.end))))};
}

bool clientHas(const QJsonObject &meeting, const mailhost::Appointment &wanted) {
    return meeting.value(u"startTime"_s).toInteger() == wanted.start.value.toSecsSinceEpoch() &&
           meeting.value(u"duration"_s).toString().toInt() * 60 ==
               wanted.start.value.secsTo(wanted.end.value) &&
           meeting.value(u"subject"_s).toString() == wanted.summary;
}

// Waits until the file has the change, and until one update was sent and answered, so that its answer cannot
// meet the next change.
void expectChanged(Session &walk, const mailhost::Appointment &wanted, const QString &how) {
    const bool answered = waitFor([&] { return looksLike(walk.plain(), wanted); }) && waitFor([&] {
                              return walk.sent(requests::update) > 0 && walk.answered(updateAnswer) > 0;
                          });
    settle();
    walk.step(answered && waitFor([&] { return clientHas(walk.meetingOf(wanted.uid), wanted); }) &&
                  walk.shows(wanted.uid) && walk.sent(requests::update) == 1,
              how + u": file, client and grid agree"_s);
}

void changeMeeting(Session &walk) {
    const QString uid = walk.uid().plain;
    walk.step(walk.open(uid) && walk.giveMeeting(uid),
              u"the appointment gets a meeting again, and its editor is closed"_s);
    mailhost::Appointment wanted = walk.plain();

    walk.mark();
    const mailhost::CalendarGrid *grid = walk.select(uid);
    QWidget *tile = grid->selectedTile();
    // Upwards, because the tile may be at the window's lower edge.
    drag(tile, tile->rect().center(), distanceOf(grid, -hour));
    for (QDateTime *time : {&wanted.start.value, &wanted.end.value})
        *time = time->addSecs(-hour);
    expectChanged(walk, wanted, u"dragged by an hour"_s);
    walk.picture(walk.mainWindow(), u"calendar-moved"_s);

    walk.mark();
    grid = walk.select(uid);
    tile = grid->selectedTile();
    drag(tile, {tile->width() / 2, tile->height() - edge}, distanceOf(grid, hour / 2));
    wanted.end.value = wanted.end.value.addSecs(hour / 2);
    expectChanged(walk, wanted, u"its lower edge dragged by half an hour"_s);

    walk.mark();
    walk.pressOn(uid, Qt::Key_F2);
    walk.picture(walk.mainWindow(), u"calendar-renaming"_s);
    wanted.summary = u"Renamed on the calendar"_s;
    type(walk.mainWindow(), wanted.summary);
    press(walk.mainWindow(), Qt::Key_Return);
    expectChanged(walk, wanted, u"renamed in its tile"_s);
}

// A series of the user with two normal days and a changed one.
struct Series {
    QString uid;
    QStringList days;
    QString exception;
};

Series findSeries(Session &walk) {
    const QDateTime now = QDateTime::currentDateTime();
    const mailhost::CalendarSession &calendar = *walk.host().session();
    QMap<QString, Series> all;
    for (const mailhost::Occurrence &day :
         calendar.file().occurrences(now.addDays(-daysAround), now.addDays(daysAround))) {
        if (day.instanceId.isEmpty() || day.allDay)
            continue;
        Series &series = all[day.uid];
        series.uid = day.uid;
        if (day.isException)
            series.exception = day.instanceId;
        else
            series.days.append(day.instanceId);
    }
    for (const Series &series : std::as_const(all))
        if (!series.exception.isEmpty() && series.days.size() > 1 &&
            calendar.isOwner(walk.inFile(series.uid)) && walk.meetingKey(series.uid).isEmpty())
            return series;
    return {};
}

void changeDays(Session &walk) {
    const Series series = findSeries(walk);
    const QString &uid = series.uid;
    if (uid.isEmpty())
        return walk.comment(u"no series of the user's own with a changed day"_s);
    walk.pressOn(uid, Qt::CTRL | Qt::SHIFT | Qt::Key_O, series.exception);
    walk.step(walk.waitForStrip(buttons::add) && walk.giveMeeting(uid),
              u"opened as a series, it gets a meeting"_s);
    const QJsonObject meeting = walk.meetingOf(uid);
    walk.mark();
    const QDateTime moved = walk.inFile(uid, series.exception).start.value.addSecs(hour / 2);
    walk.pressOn(uid, Qt::CTRL | Qt::Key_Down, series.exception);
    const bool movedException =
        waitFor([&] { return walk.inFile(uid, series.exception).start.value == moved; });
    walk.pressOn(uid, Qt::CTRL | Qt::Key_Down, series.days.first());
    const bool movedDay =
        waitFor([&] { return !walk.inFile(uid, series.days.first()).recurrenceId.isEmpty(); });
    walk.pressOn(uid, Qt::Key_Delete, series.days.last());
    click(shown(controls::deleteConfirmButton));
    const bool deleted = waitFor([&] { return walk.reveal(uid, series.days.last()) == nullptr; });
    settle();
    walk.reveal(uid, series.days.first());
    walk.picture(walk.mainWindow(), u"calendar-series"_s);
    walk.step(
        movedException && movedDay && deleted && walk.sent(requests::meeting) == 0 &&
            walk.meetingOf(uid) == meeting,
        u"a day moved, the changed day moved and a day deleted: the file has it, the client is told nothing"_s);
}

// Returns whether file, client and grid no longer have the appointment.
bool removeByKeys(Session &walk, const QString &uid, QKeyCombination keys, const QString &picture) {
    const QString key = walk.meetingKey(uid);
    walk.pressOn(uid, keys);
    walk.picture(walk.mainWindow(), picture);
    click(shown(controls::deleteConfirmButton));
    return waitFor([&] { return walk.inFile(uid).uid.isEmpty(); }) &&
           waitFor([&] { return walk.clientMeeting(key).isEmpty(); }) && !key.isEmpty() && walk.shows(uid);
}

} // namespace

void changeOnCalendar(Session &walk) {
    changeMeeting(walk);
    changeDays(walk);
}

void deleteOnCalendar(Session &walk) {
    walk.step(removeByKeys(walk, walk.uid().plain, Qt::Key_Delete, u"calendar-deleting"_s),
              u"deleted, it is gone from file, client and grid"_s);
    if (walk.uid().meeting.isEmpty())
        return walk.comment(u"no meeting with attendees: none is cancelled"_s);
    const qsizetype mails = walk.mailsInOutbox();
    const bool gone = removeByKeys(walk, walk.uid().meeting, Qt::CTRL | Qt::SHIFT | Qt::Key_Delete,
                                   u"calendar-cancelling"_s);
    walk.picture(walk.mainWindow(), u"calendar-after-deletions"_s);
    walk.step(gone && walk.mailsInOutbox() == mails + 1,
              u"cancelled, it is gone everywhere and the attendees are told"_s);
}

} // namespace walkthrough
