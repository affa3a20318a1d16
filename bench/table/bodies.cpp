// The invitation in a body, against one search through the body's bytes that finds nothing.
#include "bench/table/Mail.h"
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "plugin/host/body/vlBodyHelper.h"

#include <cstring>
#include <utility>

namespace bench {

namespace {

const QString invitation =
    u"Ada Example is inviting you to a meeting.\r\n\r\nTopic: Quarterly review\r\nTime: Nov 24, 2026 "
    "9:00\r\n\r\n"
    "Join: https://meetings.parlo.example/j/123456789?pwd=abcdef\r\n\r\nMeeting ID: 123 456 789\r\n"
    "One tap mobile: +15550100,,123456789#\r\nFind your local number: "
    "https://meetings.parlo.example/u/abc\r\n"_s;

const vlBodyHelper &helper() {
    return vlBodyHelper::sharedInstance();
}

// What the user wrote, and among it, in the middle, what the case is about.
QString bodyWith(qsizetype bytes, const QString &part) {
    QString body = mailOf(bytes);
    return body.insert(body.indexOf(u"<p class"_s, body.size() / 2), part);
}

QString block() {
    return helper().insertVlBodyBookMark(invitation, false);
}

QString unquoted() {
    return block()
        .replace(kvl_BeginBookmark, kvl_BeginBookmarkEx)
        .replace(kvl_EndBookmark, kvl_EndBookmarkEx);
}

void searchOnce(const QString &body) {
    static const QString needle = u"<a name=\"MacVlBookmarkNone\"></a>"_s;
    keep(memmem(body.utf16(), std::size_t(body.size()) * sizeof(QChar), needle.utf16(),
                std::size_t(needle.size()) * sizeof(QChar)));
}

QString replaced(QString body) {
    return helper().updateVlBodyWithSrcBody(std::move(body), invitation, false, QString());
}

QString removed(QString body) {
    return helper().removeVlBodyForDelete(std::move(body));
}

struct Case {
    const char *what;
    QString part;
    QString (*operation)(QString body);
};

// Asking for processor time takes too long itself for what is done in microseconds, and that is hardly ever
// interrupted.
Clock clockFor(const QString &body) {
    return body.size() < 100'000 ? Clock::Wall : Clock::Processor;
}

// A body that nobody else holds goes in, and the result is the caller's. Copies are made, and results freed,
// outside the time.
double secondsOf(const Case &work, const QString &body) {
    QString copy(body.constData(), body.size());
    const Clock clock = clockFor(body);
    const double start = secondsNow(clock);
    const QString result = work.operation(std::move(copy));
    const double seconds = secondsNow(clock) - start;
    keep(result);
    return seconds;
}

double secondsOfSearch(const QString &body) {
    const Clock clock = clockFor(body);
    const double start = secondsNow(clock);
    searchOnce(body);
    return secondsNow(clock) - start;
}

void compare(const Case &work, qsizetype bytes) {
    const QString body = bodyWith(bytes, work.part);
    const int rounds = int(qBound(qsizetype(25), 100'000'000 / bytes, qsizetype(2001)));
    const Comparison times =
        inTurns({[&] { return secondsOf(work, body); }, [&] { return secondsOfSearch(body); }}, rounds);
    addRatio(u"%1, %2"_s.arg(QLatin1String(work.what), sizeText(double(bytes))), times.seconds[0],
             u"one memmem"_s, times.seconds[1], times.ratios[1], 6);
}

void compareSizes(const Case &work) {
    constexpr qsizetype smaller = 1'000'000, larger = 20'000'000;
    const QString small = bodyWith(smaller, work.part);
    const QString large = bodyWith(larger, work.part);
    const Comparison times = inTurns(
        {[&] { return secondsOf(work, large) / larger; }, [&] { return secondsOf(work, small) / smaller; }},
        25);
    addLinear(u"the same, each KB of 20 MB"_s, times.seconds[0] * 1e3, u"of 1 MB"_s, times.seconds[1] * 1e3,
              times.ratios[1]);
}

} // namespace

void bodies() {
    const Case cases[] = {
        {"replacing a block, bookmarks quoted", block(), replaced},
        {"replacing a block, bookmarks unquoted", unquoted(), replaced},
        {"replacing a block, bookmarks doubled", block() + u"<p>between</p>"_s + block(), replaced},
        {"replacing a block, its end is missing", block().remove(kvl_EndBookmark), replaced},
        {"removing a block, bookmarks quoted", block(), removed},
        {"removing a block, bookmarks unquoted", unquoted(), removed},
        {"removing a block, bookmarks doubled", block() + u"<p>between</p>"_s + block(), removed},
        {"inserting a block", QString(), replaced},
    };
    for (const Case &work : cases) {
        for (const qsizetype bytes : {10'000, 1'000'000, 20'000'000})
            compare(work, bytes);
        compareSizes(work);
    }
}

} // namespace bench
