// Texts, timestamps and time zones.
#include "plugin/util/TimeUtils.h"
#include "tests/support/ProcessZone.h"

#include <gtest/gtest.h>
#include <limits>

TEST(Time, ATimestampIsTheInstantOfTheTextInTheProcessesZone) {
    struct Case {
        const char *zone, *text, *timestamp;
    };
    const Case cases[] = {
        {"UTC", "1970-01-01 00:00:00", "0"},
        {"UTC", "2016-02-29 23:59:59", "1456790399"},
        {"UTC", "1969-12-31 23:59:58", "-2"},
        {"America/New_York", "2016-07-01 09:00:00", "1467378000"},
        {"Asia/Kolkata", "2016-07-01 09:00:00", "1467343800"},
        {"UTC", "2040-01-01 00:00:00", "2208988800"},
        // Skipped by the change to daylight saving: 02:30 is 03:30, an hour later on the clock.
        {"America/New_York", "2016-03-13 02:30:00", "1457854200"},
    };
    for (const Case &c : cases) {
        const ProcessZone zone(c.zone);
        EXPECT_EQ(TimeUtils::stringToTimestamp(c.text), c.timestamp) << c.zone << ' ' << c.text;
    }
}

TEST(Time, TextOfAnotherFormIsNoDate) {
    for (const char *text : {"", "word", "2016-07-01", "2016-07-01 9:00:00", "2016-07-01T09:00:00",
                             "2016-13-01 09:00:00", "2015-02-29 09:00:00", "2016-07-01 24:00:00",
                             "2016-07-01 09:00:00 ", " 2016-07-01 09:00:00", "2016-07-01 09:00"}) {
        EXPECT_FALSE(TimeUtils::stringToDate(text).isValid()) << text;
        EXPECT_EQ(TimeUtils::stringToTimestamp(text), "0") << text;
        EXPECT_TRUE(TimeUtils::localToGMT(text, QTimeZone::utc()).isNull()) << text;
    }
}

TEST(Time, TimestampsAreInstantsAsFarAsThereAreAny) {
    EXPECT_EQ(TimeUtils::dateToTimestamp(QDateTime::fromMSecsSinceEpoch(-1999, Qt::UTC)), -1);
    EXPECT_EQ(TimeUtils::dateToTimestamp(QDateTime()), 0);
    EXPECT_EQ(TimeUtils::dateToUTCString(TimeUtils::timestampToDate(1456790399)), "2016-02-29 23:59:59");
    for (const qint64 seconds : {std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()})
        EXPECT_TRUE(TimeUtils::dateToUTCString(TimeUtils::timestampToDate(seconds)).isNull());
}

TEST(Time, LocalTextOfAZoneBecomesUtcText) {
    EXPECT_EQ(TimeUtils::localToGMT("2016-07-01 09:00:00", QTimeZone("America/New_York")),
              "2016-07-01 13:00:00");
    EXPECT_EQ(TimeUtils::localToGMT("2016-01-01 01:00:00", QTimeZone("Asia/Kolkata")), "2015-12-31 19:30:00");
    EXPECT_EQ(TimeUtils::localToGMT("2016-03-27 02:30:00", QTimeZone("Europe/Berlin")),
              "2016-03-27 01:30:00");
    const ProcessZone zone("Asia/Tokyo");
    EXPECT_EQ(TimeUtils::localToGMT("2016-07-01 09:00:00", QTimeZone()), "2016-07-01 00:00:00");
}
