// Texts, timestamps and time zones.
#include "plugin/util/TimeUtils.h"
#include "tests/support/ProcessZone.h"

#include <gtest/gtest.h>

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
          {"Europe/Berlin", "2016-03-27 02:30:00", "2016-03-27 01:30:00"}, // the clock skips it
          {"Europe/Berlin", "2016-03-27 09:00:00", "2016-03-27 07:00:00"},
          {"no zone", "2016-07-01 09:00:00", "2016-07-01 00:00:00"}}) // the zone of the process
        EXPECT_EQ(TimeUtils::localToGMT(local, QTimeZone(name)), utc) << name;
}
