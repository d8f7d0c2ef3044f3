#include "app/EventFileWatch.h"

#include "ProgramRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace scenariomatch
{

namespace
{

const std::string kFrame = " <RHVideoFrame frameID=\"1\">\n </RHVideoFrame>\n";

void append(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::app) << text;
}

} // namespace

TEST(EventFileWatch, FindsNothingWhereEveryFrameArrives)
{
    const std::string file = temporary("events.xml");
    append(file, "head\n");
    EventFileWatch watch(file);
    append(file, kFrame);
    watch.addFrame(1);
    append(file, kFrame);
    watch.addFrame(2);
    append(file, "</Tarvos>\n");
    EXPECT_EQ(watch.lost(), 0U);
    EXPECT_EQ(watch.judgeEnd(), "");
}

TEST(EventFileWatch, CountsFramesThatDoNotArriveOrBreakOff)
{
    const std::string file = temporary("events.xml");
    append(file, "head\n");
    EventFileWatch watch(file);
    append(file, kFrame);
    watch.addFrame(11);
    watch.addFrame(12);
    append(file, kFrame.substr(0, 20));
    watch.addFrame(13);
    append(file, kFrame);
    watch.addFrame(14);
    EXPECT_EQ(watch.lost(), 2U);
    const std::string lost = "2 of 4 frames could not be written, the first is frame 12";
    EXPECT_EQ(
        watch.judgeEnd(),
        lost + "; nor could its end: `scenariomatch repair " + file + "` adds it");
    append(file, "</Tarvos>\n");
    EXPECT_EQ(watch.judgeEnd(), lost);
}

TEST(EventFileWatch, GoesOnWhereTheFileVanishesAndComesBack)
{
    std::filesystem::create_directory(temporary("folder"));
    const std::string file = temporary("folder") + "/events.xml";
    append(file, "head\n");
    EventFileWatch watch(file);
    std::filesystem::remove_all(temporary("folder"));
    watch.addFrame(1);
    std::filesystem::create_directory(temporary("folder"));
    append(file, kFrame);
    watch.addFrame(2);
    EXPECT_EQ(watch.lost(), 1U);
    std::filesystem::remove_all(temporary("folder"));
    EXPECT_EQ(watch.judgeEnd(), "1 of 2 frames could not be written, the first is frame 1");
}

TEST(EventFileWatch, SaysThatTheEndAloneIsMissing)
{
    const std::string file = temporary("events.xml");
    append(file, "head\n");
    const EventFileWatch watch(file);
    EXPECT_EQ(
        watch.judgeEnd(),
        "its end could not be written: `scenariomatch repair " + file + "` adds it");
    std::filesystem::remove(file);
    EXPECT_EQ(watch.judgeEnd(), "its end could not be written");
}

TEST(EventFileWatch, AsksDevices)
{
    EventFileWatch full("/dev/full");
    full.addFrame(5);
    EXPECT_EQ(full.judgeEnd(), "1 of 1 frames could not be written, the first is frame 5");
    EventFileWatch taking("/dev/null");
    taking.addFrame(5);
    EXPECT_EQ(taking.judgeEnd(), "");
}

} // namespace scenariomatch
