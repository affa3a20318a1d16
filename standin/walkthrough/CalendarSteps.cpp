// What is done to a meeting on the calendar, with no editor open: dragged, made longer, renamed, deleted,
// cancelled; and one day of a series, of which the client is told nothing.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/EventTileView.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Road.h"

#include <QJsonObject>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

constexpr int hour = 3600;     // seconds
constexpr int edge = 2;        // points from a tile's edge that take hold of it
constexpr int daysAround = 28; // in which a series is looked for
const QString newSubject = QStringLiteral("Renamed on the calendar");

// The distance on the screen that means so many seconds, by the tile's own length.
QPoint distanceOf(const mailhost::CalendarGrid *grid, int seconds) {
    const mailhost::Occurrence shown = *grid->selected();
    return {0, int(qRound(double(grid->selectedTile()->height()) * seconds /
                          double(shown.start.secsTo(shown.end))))};
}

class CalendarWalk {
public:
    explicit CalendarWalk(Road &road)
        : m_road(road)
        , m_walk(road.walk())
        , m_uid(road.plainUid()) {}
    bool change() { return giveMeeting() && move() && resize() && rename() && followSeries(); }
    bool remove() { return deletePlain() && cancelMeeting(); }

private:
    bool giveMeeting();
    bool move();
    bool resize();
    bool rename();
    bool followSeries();
    bool changeDays(const QString &uid, const QString &day, const QString &otherDay,
                    const QString &exception);
    bool deletePlain();
    bool cancelMeeting();
    // What client and file say of the appointment, which is shown as the file has it.
    bool agree() const;

    Road &m_road;
    Walk &m_walk;
    QString m_uid;
};

// And nothing is on its way any more: the next change would meet this one's answer.
bool CalendarWalk::agree() const {
    const bool answered = Walk::waitFor([this] {
        return m_walk.sentSinceMark(meetingAction, updatePrefix) > 0 &&
               m_walk.answeredSinceMark(updateAnswer) > 0;
    });
    Walk::settle();
    return answered && Walk::waitFor([this] {
               const QJsonObject meeting = m_road.meetingOf(m_uid);
               const mailhost::Appointment stored = m_road.inFile(m_uid);
               return meeting.value(QStringLiteral("startTime")).toInteger() ==
                          stored.start.value.toSecsSinceEpoch() &&
                      meeting.value(QStringLiteral("duration")).toString().toInt() * 60 ==
                          stored.start.value.secsTo(stored.end.value) &&
                      meeting.value(QStringLiteral("subject")).toString() == stored.summary;
           });
}

bool CalendarWalk::giveMeeting() {
    return m_walk.step(m_road.giveMeeting(m_uid),
                       QStringLiteral("the appointment gets a meeting again, and its editor is closed"));
}

bool CalendarWalk::move() {
    m_walk.mark();
    const QDateTime before = m_road.inFile(m_uid).start.value;
    const mailhost::CalendarGrid *grid = m_road.reveal(m_uid);
    if (!grid)
        return m_walk.step(false, QStringLiteral("the grid shows the appointment"));
    mailhost::EventTileView *tile = grid->selectedTile();
    drag(tile, tile->rect().center(), distanceOf(grid, hour));
    const bool moved =
        Walk::waitFor([&] { return m_road.inFile(m_uid).start.value == before.addSecs(hour); });
    const bool good = m_walk.step(moved && agree() && m_road.shows(m_uid) &&
                                      m_walk.sentSinceMark(meetingAction, updatePrefix) == 1,
                                  QStringLiteral("dragged by an hour: file, client and grid agree"));
    m_walk.picture(m_road.mainWindow(), QStringLiteral("calendar-moved"));
    return good;
}

bool CalendarWalk::resize() {
    m_walk.mark();
    const QDateTime before = m_road.inFile(m_uid).end.value;
    const mailhost::CalendarGrid *grid = m_road.reveal(m_uid);
    mailhost::EventTileView *tile = grid->selectedTile();
    drag(tile, {tile->width() / 2, tile->height() - edge}, distanceOf(grid, hour / 2));
    const bool resized =
        Walk::waitFor([&] { return m_road.inFile(m_uid).end.value == before.addSecs(hour / 2); });
    return m_walk.step(resized && agree() && m_road.shows(m_uid) &&
                           m_walk.sentSinceMark(meetingAction, updatePrefix) == 1,
                       QStringLiteral("its lower edge dragged by half an hour: file, client and grid agree"));
}

bool CalendarWalk::rename() {
    m_walk.mark();
    if (!m_road.reveal(m_uid))
        return false;
    m_road.pressInMain(Qt::Key_F2);
    m_walk.picture(m_road.mainWindow(), QStringLiteral("calendar-renaming"));
    type(m_road.mainWindow(), newSubject);
    m_road.pressInMain(Qt::Key_Return);
    const bool renamed = Walk::waitFor([&] { return m_road.inFile(m_uid).summary == newSubject; });
    return m_walk.step(renamed && agree() && m_road.shows(m_uid) &&
                           m_walk.sentSinceMark(meetingAction, updatePrefix) == 1,
                       QStringLiteral("renamed in its tile: file, client and grid agree"));
}

// A series of one's own with two usual days and a changed one, where the calendar has one.
bool CalendarWalk::followSeries() {
    const QDateTime now = QDateTime::currentDateTime();
    const mailhost::CalendarSession &session = *m_road.host().session();
    QMap<QString, QStringList> days;
    QMap<QString, QString> exceptions;
    const auto around = session.file().occurrences(now.addDays(-daysAround), now.addDays(daysAround));
    for (const mailhost::Occurrence &occurrence : around) {
        if (occurrence.instanceId.isEmpty() || occurrence.allDay)
            continue;
        if (occurrence.isException)
            exceptions.insert(occurrence.uid, occurrence.instanceId);
        else
            days[occurrence.uid].append(occurrence.instanceId);
    }
    for (auto it = exceptions.cbegin(); it != exceptions.cend(); ++it)
        if (days.value(it.key()).size() > 1 && session.isOwner(m_road.inFile(it.key())) &&
            m_road.meetingKey(it.key()).isEmpty())
            return changeDays(it.key(), days[it.key()].first(), days[it.key()].last(), it.value());
    m_walk.comment(QStringLiteral("no series of one's own with a changed day: none is walked with"));
    return true;
}

bool CalendarWalk::changeDays(const QString &uid, const QString &day, const QString &otherDay,
                              const QString &exception) {
    if (!m_road.reveal(uid, exception))
        return m_walk.step(false, QStringLiteral("the grid shows the changed day of a series"));
    m_road.pressInMain(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    const bool opened = Walk::waitFor([this] { return m_road.stripButton(addButton()) != nullptr; });
    if (!m_walk.step(opened && m_road.giveMeetingToOpen(uid),
                     QStringLiteral("opened as a series, it gets a meeting")))
        return false;
    const QJsonObject meeting = m_road.meetingOf(uid);
    m_walk.mark();
    const QDateTime before = m_road.inFile(uid, exception).start.value;
    m_road.reveal(uid, exception);
    m_road.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    const bool movedException =
        Walk::waitFor([&] { return m_road.inFile(uid, exception).start.value == before.addSecs(hour / 2); });
    m_road.reveal(uid, day);
    m_road.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    const bool movedDay = Walk::waitFor([&] { return !m_road.inFile(uid, day).recurrenceId.isEmpty(); });
    const bool found = m_road.reveal(uid, otherDay);
    m_road.pressInMain(Qt::Key_Delete);
    click(shown(controls::deleteConfirmButton));
    const bool deleted = Walk::waitFor([&] { return m_road.reveal(uid, otherDay) == nullptr; });
    Walk::settle();
    m_road.reveal(uid, day);
    m_walk.picture(m_road.mainWindow(), QStringLiteral("calendar-series"));
    return m_walk.step(movedException && movedDay && found && deleted &&
                           m_walk.sentSinceMark(meetingAction) == 0 && m_road.meetingOf(uid) == meeting,
                       QStringLiteral("a day moved, the changed day moved and a day deleted: the file has "
                                      "it, the client is told nothing"));
}

bool CalendarWalk::deletePlain() {
    const QString key = m_road.meetingKey(m_uid);
    m_road.reveal(m_uid);
    m_road.pressInMain(Qt::Key_Delete);
    m_walk.picture(m_road.mainWindow(), QStringLiteral("calendar-deleting"));
    click(shown(controls::deleteConfirmButton));
    const bool gone = Walk::waitFor([&] { return !m_road.isInFile(m_uid); });
    const bool clientToo = Walk::waitFor([&] { return m_road.client().meeting(key).isEmpty(); });
    return m_walk.step(gone && clientToo && !key.isEmpty() && m_road.shows(m_uid),
                       QStringLiteral("deleted, it is gone from file, client and grid"));
}

bool CalendarWalk::cancelMeeting() {
    const QString uid = m_road.meetingUid();
    if (uid.isEmpty()) {
        m_walk.comment(QStringLiteral("no meeting with attendees: none is cancelled"));
        return true;
    }
    const QString key = m_road.meetingKey(uid);
    const qsizetype messages = m_road.sentMessages().size();
    m_road.reveal(uid);
    m_road.pressInMain(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    click(shown(controls::deleteConfirmButton));
    const bool gone = Walk::waitFor([&] { return !m_road.isInFile(uid); });
    const bool clientToo = Walk::waitFor([&] { return m_road.client().meeting(key).isEmpty(); });
    m_walk.picture(m_road.mainWindow(), QStringLiteral("calendar-after-deletions"));
    return m_walk.step(gone && clientToo && !key.isEmpty() && m_road.shows(uid) &&
                           m_road.sentMessages().size() == messages + 1,
                       QStringLiteral("cancelled, it is gone everywhere and the attendees are told"));
}

} // namespace

bool walkTheCalendar(Road &road) {
    return CalendarWalk(road).change();
}

bool walkTheDeletions(Road &road) {
    return CalendarWalk(road).remove();
}

} // namespace walkthrough
