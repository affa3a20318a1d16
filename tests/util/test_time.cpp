// Texts, timestamps and time zones.
#include "plugin/util/TimeUtils.h"
#include "tests/support/ProcessZone.h"

#include <gtest/gtest.h>
#include <limits>

TEST(Time, ATimestampIsTheInstantOfTheTextInTheProcessesZone) {
    const std::tuple<const char *, const char *, const char *> cases[] = {
        {"UTC", "2016-02-29 23:59:59", "1456790399"},
        {"UTC", "1969-12-31 23:59:58", "-2"},
        {"America/New_York", "2016-07-01 09:00:00", "1467378000"},
        {"UTC", "2040-01-01 00:00:00", "2208988800"},
        // The change to daylight saving skips 02:30, which counts as 03:30.
        {"America/New_York", "2016-03-13 02:30:00", "1457854200"},
    };
    for (const auto &[name, text, timestamp] : cases) {
        const ProcessZone zone(name);
        EXPECT_EQ(TimeUtils::stringToTimestamp(text), timestamp) << name << ' ' << text;
    }
    EXPECT_EQ(TimeUtils::dateToTimestamp(QDateTime::fromMSecsSinceEpoch(-1999, Qt::UTC)), -1);
    EXPECT_EQ(TimeUtils::dateToTimestamp(QDateTime()), 0);
    for (const qint64 seconds : {std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()})
        EXPECT_TRUE(TimeUtils::dateToUTCString(TimeUtils::timestampToDate(seconds)).isNull());
}

TEST(Time, TextOfAnotherFormIsNoDate) {
    for (const char *text :
         {"", "word", "2016-07-01", "2016-07-01 9:00:00", "2016-07-01T09:00:00", "2016-13-01 09:00:00",
          "2015-02-29 09:00:00", "2016-07-01 24:00:00", "2016-07-01 09:00:00 ", " 2016-07-01 09:00:00"}) {
        EXPECT_FALSE(TimeUtils::stringToDate(text).isValid()) << text;
        EXPECT_EQ(TimeUtils::stringToTimestamp(text), "0") << text;
        EXPECT_TRUE(TimeUtils::localToGMT(text, QTimeZone::utc()).isNull()) << text;
    }
}

TEST(Time, LocalTextOfAZoneBecomesUtcText) {
    const ProcessZone zone("Asia/Tokyo");
    for (const auto &[name, local, utc] :
         {std::tuple{"America/New_York", "2016-07-01 09:00:00", "2016-07-01 13:00:00"},
          {"Asia/Kolkata", "2016-01-01 01:00:00", "2015-12-31 19:30:00"},
          {"Europe/Berlin", "2016-03-27 02:30:00", "2016-03-27 01:30:00"},
          {"no zone", "2016-07-01 09:00:00", "2016-07-01 00:00:00"}}) // the zone of the process
        EXPECT_EQ(TimeUtils::localToGMT(local, QTimeZone(name)), utc) << name;
}
