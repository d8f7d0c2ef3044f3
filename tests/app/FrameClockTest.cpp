#include "app/FrameClock.h"

#include "app/FrameTimer.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

std::string reprinted(const std::string& text)
{
    const std::optional<TrackClock> clock = parseClock(text);
    return clock ? printClock(*clock) : "none";
}

} // namespace

TEST(FrameClock, ReadsDateAndTimeWithFractionAndZone)
{
    EXPECT_EQ(reprinted("2026-05-04T10:00:48.160"), "2026-05-04T10:00:48.160");
    EXPECT_EQ(reprinted("2026-05-04 10:00:48"), "2026-05-04T10:00:48.000");
    EXPECT_EQ(reprinted("2026-05-04T10:00:48.5"), "2026-05-04T10:00:48.500");
    EXPECT_EQ(reprinted("2026-05-04T10:00:48.1239999"), "2026-05-04T10:00:48.123");
    EXPECT_EQ(reprinted("2024-02-29T00:00:00Z"), "2024-02-29T00:00:00.000");
}

TEST(FrameClock, ReadsAZoneAndDoesNotApplyIt)
{
    EXPECT_EQ(reprinted("2026-05-04T10:00:48.160Z"), "2026-05-04T10:00:48.160");
    EXPECT_EQ(reprinted("2026-05-04T10:00:48+02:00"), "2026-05-04T10:00:48.000");
    EXPECT_EQ(reprinted("2026-05-04T10:00:48-0930"), "2026-05-04T10:00:48.000");
    EXPECT_EQ(reprinted("2026-05-04T10:00:48+05"), "2026-05-04T10:00:48.000");
}

TEST(FrameClock, RefusesWhatIsNoDateAndTime)
{
    for (const char* text :
         {"",
          "2026-05-04",
          "2026-05-04T10:00",
          "2026-13-04T10:00:00",
          "2026-00-04T10:00:00",
          "2026-02-29T10:00:00",
          "1900-02-29T10:00:00",
          "2026-05-04T24:00:00",
          "2026-05-04T10:60:00",
          "2026-05-04T10:00:60",
          "2026-05-04T10:00:00.",
          "2026-05-04T10:00:00X",
          "2026-05-04T10:00:00Z ",
          "2026-05-04T10:00:00+24:00",
          "2026-05-04T10:00:00+1",
          "1969-12-31T23:59:59",
          "-026-05-04T10:00:00",
          "2026-5-4T10:00:00"}) {
        EXPECT_EQ(reprinted(text), "none") << text;
    }
}

TEST(FrameClock, CountsMillisecondsThereAndBack)
{
    EXPECT_EQ(clockToMilliseconds({1970, 1, 1, 0, 0, 0, 0}), 0);
    EXPECT_EQ(clockToMilliseconds({2000, 1, 1, 0, 0, 0, 0}), 946'684'800'000);
    EXPECT_EQ(clockToMilliseconds({2000, 3, 1, 0, 0, 0, 1}), 951'868'800'001);
    EXPECT_EQ(printClock(millisecondsToClock(-1)), "1969-12-31T23:59:59.999");
    for (std::int64_t time = 0; time < 3'000'000'000'000; time += 12'345'678'901) {
        EXPECT_EQ(clockToMilliseconds(millisecondsToClock(time)), time);
    }
}

TEST(FrameTimer, RoundsFrameTimesToTheMillisecond)
{
    FrameTimer timer({}, 30.0);
    EXPECT_EQ(
        printClock(millisecondsToClock(timer.milliseconds(1).value())), "2000-01-01T00:00:00.000");
    EXPECT_EQ(
        printClock(millisecondsToClock(timer.milliseconds(2).value())), "2000-01-01T00:00:00.033");
    EXPECT_EQ(
        printClock(millisecondsToClock(timer.milliseconds(3).value())), "2000-01-01T00:00:00.067");
    EXPECT_EQ(
        printClock(millisecondsToClock(timer.milliseconds(31).value())), "2000-01-01T00:00:01.000");
}

TEST(FrameTimer, HasNoTimeWithoutARateOrAfterTheYear9999)
{
    EXPECT_FALSE(FrameTimer({}, std::nullopt).milliseconds(1));
    FrameTimer slow({}, 0.001);
    EXPECT_TRUE(slow.milliseconds(0));
    EXPECT_FALSE(slow.milliseconds(2'147'483'647));
}

} // namespace scenariomatch
