// What is done to a meeting on the calendar, with no editor open: dragged, made longer, renamed, deleted,
// cancelled; and one day of a series, of which the client is told nothing.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/grid/EventTileView.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Parts.h"

#include <QJsonObject>

namespace walkthrough {

namespace controls = mailhost::controls;

namespace {

constexpr int hour = 3600;     // seconds
constexpr int edge = 2;        // points from a tile's edge that take hold of it
constexpr int daysAround = 28; // in which a series is looked for
const QString newSubject = u"Renamed on the calendar"_s;

// The distance on the screen that means so many seconds, by the tile's own length.
QPoint distanceOf(const mailhost::CalendarGrid *grid, int seconds) {
    const mailhost::Occurrence shown = *grid->selected();
    return {0, int(qRound(double(grid->selectedTile()->height()) * seconds /
                          double(shown.start.secsTo(shown.end))))};
}

class CalendarWalk {
public:
    explicit CalendarWalk(Session &session)
        : m_session(session)
        , m_report(session.report())
        , m_uid(session.plainUid()) {}
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

    Session &m_session;
    Report &m_report;
    QString m_uid;
};

// And nothing is on its way any more: the next change would meet this one's answer.
bool CalendarWalk::agree() const {
    const bool answered = Report::waitFor([this] {
        return m_report.sentSinceMark(meetingAction, updatePrefix) > 0 &&
               m_report.answeredSinceMark(updateAnswer) > 0;
    });
    Report::settle();
    return answered && Report::waitFor([this] {
               const QJsonObject meeting = m_session.meetingOf(m_uid);
               const mailhost::Appointment stored = m_session.inFile(m_uid);
               return meeting.value(u"startTime"_s).toInteger() == stored.start.value.toSecsSinceEpoch() &&
                      meeting.value(u"duration"_s).toString().toInt() * 60 ==
                          stored.start.value.secsTo(stored.end.value) &&
                      meeting.value(u"subject"_s).toString() == stored.summary;
           });
}

bool CalendarWalk::giveMeeting() {
    return m_report.step(m_session.giveMeeting(m_uid),
                         u"the appointment gets a meeting again, and its editor is closed"_s);
}

bool CalendarWalk::move() {
    m_report.mark();
    const QDateTime before = m_session.inFile(m_uid).start.value;
    const mailhost::CalendarGrid *grid = m_session.reveal(m_uid);
    if (!grid)
        return m_report.step(false, u"the grid shows the appointment"_s);
    mailhost::EventTileView *tile = grid->selectedTile();
    // Upwards: the tile may stand at the window's lower edge.
    drag(tile, tile->rect().center(), distanceOf(grid, -hour));
    const bool moved =
        Report::waitFor([&] { return m_session.inFile(m_uid).start.value == before.addSecs(-hour); });
    const bool good = m_report.step(moved && agree() && m_session.shows(m_uid) &&
                                        m_report.sentSinceMark(meetingAction, updatePrefix) == 1,
                                    u"dragged by an hour: file, client and grid agree"_s);
    m_report.picture(m_session.mainWindow(), u"calendar-moved"_s);
    return good;
}

bool CalendarWalk::resize() {
    m_report.mark();
    const QDateTime before = m_session.inFile(m_uid).end.value;
    const mailhost::CalendarGrid *grid = m_session.reveal(m_uid);
    mailhost::EventTileView *tile = grid->selectedTile();
    drag(tile, {tile->width() / 2, tile->height() - edge}, distanceOf(grid, hour / 2));
    const bool resized =
        Report::waitFor([&] { return m_session.inFile(m_uid).end.value == before.addSecs(hour / 2); });
    return m_report.step(resized && agree() && m_session.shows(m_uid) &&
                             m_report.sentSinceMark(meetingAction, updatePrefix) == 1,
                         u"its lower edge dragged by half an hour: file, client and grid agree"_s);
}

bool CalendarWalk::rename() {
    m_report.mark();
    if (!m_session.reveal(m_uid))
        return false;
    m_session.pressInMain(Qt::Key_F2);
    m_report.picture(m_session.mainWindow(), u"calendar-renaming"_s);
    type(m_session.mainWindow(), newSubject);
    m_session.pressInMain(Qt::Key_Return);
    const bool renamed = Report::waitFor([&] { return m_session.inFile(m_uid).summary == newSubject; });
    return m_report.step(renamed && agree() && m_session.shows(m_uid) &&
                             m_report.sentSinceMark(meetingAction, updatePrefix) == 1,
                         u"renamed in its tile: file, client and grid agree"_s);
}

// A series of one's own with two usual days and a changed one, where the calendar has one.
bool CalendarWalk::followSeries() {
    const QDateTime now = QDateTime::currentDateTime();
    const mailhost::CalendarSession &session = *m_session.host().session();
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
        if (days.value(it.key()).size() > 1 && session.isOwner(m_session.inFile(it.key())) &&
            m_session.meetingKey(it.key()).isEmpty())
            return changeDays(it.key(), days[it.key()].first(), days[it.key()].last(), it.value());
    m_report.comment(u"no series of one's own with a changed day: none is walked with"_s);
    return true;
}

bool CalendarWalk::changeDays(const QString &uid, const QString &day, const QString &otherDay,
                              const QString &exception) {
    if (!m_session.reveal(uid, exception))
        return m_report.step(false, u"the grid shows the changed day of a series"_s);
    m_session.pressInMain(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    const bool opened = Report::waitFor([this] { return m_session.stripButton(addButton()) != nullptr; });
    if (!m_report.step(opened && m_session.giveMeetingToOpen(uid),
                       u"opened as a series, it gets a meeting"_s))
        return false;
    const QJsonObject meeting = m_session.meetingOf(uid);
    m_report.mark();
    const QDateTime before = m_session.inFile(uid, exception).start.value;
    m_session.reveal(uid, exception);
    m_session.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    const bool movedException = Report::waitFor(
        [&] { return m_session.inFile(uid, exception).start.value == before.addSecs(hour / 2); });
    m_session.reveal(uid, day);
    m_session.pressInMain(Qt::Key_Down, Qt::ControlModifier);
    const bool movedDay = Report::waitFor([&] { return !m_session.inFile(uid, day).recurrenceId.isEmpty(); });
    const bool found = m_session.reveal(uid, otherDay);
    m_session.pressInMain(Qt::Key_Delete);
    click(shown(controls::deleteConfirmButton));
    const bool deleted = Report::waitFor([&] { return m_session.reveal(uid, otherDay) == nullptr; });
    Report::settle();
    m_session.reveal(uid, day);
    m_report.picture(m_session.mainWindow(), u"calendar-series"_s);
    return m_report.step(movedException && movedDay && found && deleted &&
                             m_report.sentSinceMark(meetingAction) == 0 &&
                             m_session.meetingOf(uid) == meeting,
                         u"a day moved, the changed day moved and a day deleted: the file has "
                         "it, the client is told nothing"_s);
}

bool CalendarWalk::deletePlain() {
    const QString key = m_session.meetingKey(m_uid);
    m_session.reveal(m_uid);
    m_session.pressInMain(Qt::Key_Delete);
    m_report.picture(m_session.mainWindow(), u"calendar-deleting"_s);
    click(shown(controls::deleteConfirmButton));
    const bool gone = Report::waitFor([&] { return !m_session.isInFile(m_uid); });
    const bool clientToo = Report::waitFor([&] { return m_session.client().meeting(key).isEmpty(); });
    return m_report.step(gone && clientToo && !key.isEmpty() && m_session.shows(m_uid),
                         u"deleted, it is gone from file, client and grid"_s);
}

bool CalendarWalk::cancelMeeting() {
    const QString uid = m_session.meetingUid();
    if (uid.isEmpty()) {
        m_report.comment(u"no meeting with attendees: none is cancelled"_s);
        return true;
    }
    const QString key = m_session.meetingKey(uid);
    const qsizetype messages = m_session.sentMessages().size();
    m_session.reveal(uid);
    m_session.pressInMain(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    click(shown(controls::deleteConfirmButton));
    const bool gone = Report::waitFor([&] { return !m_session.isInFile(uid); });
    const bool clientToo = Report::waitFor([&] { return m_session.client().meeting(key).isEmpty(); });
    m_report.picture(m_session.mainWindow(), u"calendar-after-deletions"_s);
    return m_report.step(gone && clientToo && !key.isEmpty() && m_session.shows(uid) &&
                             m_session.sentMessages().size() == messages + 1,
                         u"cancelled, it is gone everywhere and the attendees are told"_s);
}

} // namespace

bool runCalendar(Session &session) {
    return CalendarWalk(session).change();
}

bool runDeletions(Session &session) {
    return CalendarWalk(session).remove();
}

} // namespace walkthrough
