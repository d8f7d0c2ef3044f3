#include "plugin/EventXml.h"

#include "ProcessFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/resource.h>

namespace
{

using scenariomatch::StreamText;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Tarvos version=\"3.00\">\n";

// A person in a zone; and, made of that, an event of its own.
constexpr const char* kModels =
    "PrimitiveState(Inside, PhysicalObjects((p : Person)(z : Zone)) Alarm((Level : URGENT)))\n"
    "CompositeEvent(Visit, PhysicalObjects((p : Person)(z : Zone))"
    " Components((c : PrimitiveState Inside(p, z))) Alarm((Level : VERYURGENT)(Text : Look)))\n"
    "PrimitiveState(Seen, PhysicalObjects((p : Person)))\n";

class CommaNumbers : public std::numpunct<char>
{
protected:
    char do_decimal_point() const override { return ','; }

    char do_thousands_sep() const override { return '.'; }

    std::string do_grouping() const override { return "\3"; }
};

class EventXml : public scenariomatch::ProcessFixture
{
protected:
    bool startWriting(scenariomatch::Files files)
    {
        files.parameters +=
            "saveXML3File: \"true\"\nXML3FileName: \"" + path("events.xml") + "\"\n";
        return start(files);
    }

    // A person with a four-digit number in a zone with an awkward name, for two frames.
    void runVisit()
    {
        m_process->setParamBayesianRatio(3.0);
        ASSERT_TRUE(startWriting(
            {.models = kModels,
             .usedModels = "Inside,Visit,Seen",
             .context = zone("North &amp; &quot;West&quot;")}));
        frame(10, 0.0, {person(4321)});
        frame(11, 1.5, {person(4321)});
    }

    static std::string expected(const std::string& name)
    {
        const std::ifstream file(std::string(SCENARIOMATCH_TEST_DATA) + "/plugin/" + name);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    std::string finished()
    {
        m_process.reset();
        return readFile("events.xml");
    }

    static std::string zone(const std::string& name)
    {
        return "<Element kind='zone' name='" + name +
               "' shape='polygon'><Vertex x='0' y='0'/><Vertex x='1' y='0'/><Vertex x='0' "
               "y='1'/></Element>";
    }
};

std::string escaped(std::string_view value)
{
    StreamText text;
    scenariomatch::appendEscaped(text, value);
    return text.text();
}

} // namespace

TEST_F(EventXml, HoldsAnEmptyFrameForEveryFrameWithoutEvents)
{
    ASSERT_TRUE(startWriting({}));
    frame(1, 0.0, {});
    frame(2, 0.04, {});
    frame(3, 61.25, {});
    EXPECT_EQ(
        finished(),
        std::string(kHead) +
            " <RHVideoFrame frameID=\"1\" timeYear=\"2026\" timeMonth=\"5\" timeDay=\"4\" "
            "timeHour=\"10\""
            " timeMin=\"0\" timeSec=\"0\" timeMs=\"0\">\n"
            "  <ListMobileObjects/>\n  <ListActivities>\n  </ListActivities>\n </RHVideoFrame>\n"
            " <RHVideoFrame frameID=\"2\" timeYear=\"2026\" timeMonth=\"5\" timeDay=\"4\" "
            "timeHour=\"10\""
            " timeMin=\"0\" timeSec=\"0\" timeMs=\"40\">\n"
            "  <ListMobileObjects/>\n  <ListActivities>\n  </ListActivities>\n </RHVideoFrame>\n"
            " <RHVideoFrame frameID=\"3\" timeYear=\"2026\" timeMonth=\"5\" timeDay=\"4\" "
            "timeHour=\"10\""
            " timeMin=\"1\" timeSec=\"1\" timeMs=\"250\">\n"
            "  <ListMobileObjects/>\n  <ListActivities>\n  </ListActivities>\n </RHVideoFrame>\n"
            "</Tarvos>\n");
}

TEST_F(EventXml, HoldsTheEventsOfEveryFrame)
{
    runVisit();
    EXPECT_EQ(finished(), expected("events.xml"));
}

TEST_F(EventXml, IsTheSameInAProgramOfAnotherLocale)
{
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new CommaNumbers));
    runVisit();
    std::locale::global(before);
    EXPECT_EQ(finished(), expected("events.xml"));
}

TEST_F(EventXml, LeavesEventsBelowTheReportLevelOut)
{
    m_process->setParamXML3AlarmLevel("VERYURGENT");
    ASSERT_TRUE(startWriting(
        {.models = kModels, .usedModels = "Inside,Visit,Seen", .context = zone("Entrance")}));
    frame(10, 0.0, {person(7)});
    const std::string text = finished();
    EXPECT_THAT(text, HasSubstr("name=\"Visit\""));
    EXPECT_THAT(text, Not(HasSubstr("name=\"Seen\"")));
    EXPECT_THAT(text, Not(HasSubstr("type=\"PrimitiveState\"")));
}

TEST_F(EventXml, LeavesEventsOfEarlierFramesOut)
{
    ASSERT_TRUE(startWriting({.models = kModels, .usedModels = "Seen"}));
    frame(1, 0.0, {person(7)});
    frame(2, 1.0, {person(8)});
    EXPECT_EQ(m_process->engine()->recognisedScenarios().size(), 2U);
    const std::string text = finished();
    EXPECT_EQ(text.find("ID=\"7\""), text.rfind("ID=\"7\""));
    EXPECT_THAT(text, HasSubstr("ID=\"8\""));
}

TEST_F(EventXml, NamesObjectsByTheirKind)
{
    ASSERT_TRUE(startWriting(
        {.models =
             "PrimitiveState(All, PhysicalObjects((a : Zone)(b : Equipment)(c : Wall)(d : Scene)"
             "(e : Person)))",
         .usedModels = "All",
         .context = zone("Z") +
                    "<Element kind='object' name='E' shape='circle'><Vertex x='0' y='0'/></Element>"
                    "<Element kind='wall' name='W' shape='polygon'><Vertex x='0' y='0'/><Vertex "
                    "x='1' y='0'/></Element>"}));
    frame(1, 0.0, {person(7)});
    EXPECT_THAT(
        finished(),
        HasSubstr("     <ListActivityPhysicalObjects>\n"
                  "      <ActivityPhysicalObject type=\"STATIC_ZONE\" ID=\"0\" name=\"Z\" "
                  "dynamicObjectID=\"0\"/>\n"
                  "      <ActivityPhysicalObject type=\"STATIC_EQUIPMENT\" ID=\"1\" name=\"E\" "
                  "dynamicObjectID=\"0\"/>\n"
                  "      <ActivityPhysicalObject type=\"STATIC_WALL\" ID=\"2\" name=\"W\" "
                  "dynamicObjectID=\"0\"/>\n"
                  "      <ActivityPhysicalObject type=\"OBJECT\" ID=\"3\" name=\"Scene0\" "
                  "dynamicObjectID=\"0\"/>\n"
                  "      <ActivityPhysicalObject type=\"OBJECT\" ID=\"7\" name=\"\" "
                  "dynamicObjectID=\"0\"/>\n"
                  "     </ListActivityPhysicalObjects>\n"));
}

TEST_F(EventXml, IsTheFrameElementInMemoryToo)
{
    m_process->setParamBayesianRatio(3.0);
    ASSERT_TRUE(
        start({.models = kModels, .usedModels = "Inside,Visit,Seen", .context = zone("Entrance")}));
    EXPECT_EQ(m_process->generateEventListStorageStream(), "");
    frame(1, 0.0, {person(7)});
    const std::string text = m_process->generateEventListStorageStream();
    EXPECT_THAT(text, testing::StartsWith(" <RHVideoFrame frameID=\"1\""));
    EXPECT_THAT(text, HasSubstr("name=\"Visit\" confidence=\"0.111111\""));
    EXPECT_THAT(text, testing::EndsWith("  </ListActivities>\n </RHVideoFrame>\n"));
}

TEST_F(EventXml, IsClosedByTheDestructorEvenWhenItIsNotSaved)
{
    ASSERT_TRUE(start({.parameters = "XML3FileName: \"" + path("events.xml") + "\"\n"}));
    frame(1, 0.0, {});
    EXPECT_FALSE(std::filesystem::exists(path("events.xml")));
    EXPECT_EQ(finished(), "</Tarvos>\n");
}

TEST_F(EventXml, IsNotWrittenWithoutAName)
{
    ASSERT_TRUE(start({.parameters = "saveXML3File: \"true\"\n"}));
    frame(1, 0.0, {});
    EXPECT_EQ(m_output, "Scene ID:0");
    m_process.reset();
    EXPECT_THAT(m_log, testing::IsEmpty());
}

TEST_F(EventXml, IsWrittenNowhereWhenItCannotBeOpened)
{
    ASSERT_TRUE(start(
        {.parameters =
             "saveXML3File: \"true\"\nXML3FileName: \"" + path("no/events.xml") + "\"\n"}));
    EXPECT_THAT(m_errors, Not(HasSubstr("events.xml")));
    frame(1, 0.0, {});
    EXPECT_EQ(m_output, "Scene ID:0");
    EXPECT_EQ(finished(), "");
}

TEST_F(EventXml, TakesBackWhatDoesNotFitAndGoesOnWhenThereIsRoom)
{
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    ASSERT_TRUE(startWriting({}));
    frame(1, 0.0, {});
    const std::string whole = readFile("events.xml");
    for (std::size_t room = 0; room < 160; room += 7) {
        const rlimit little{whole.size() + room, limit.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &little), 0);
        frame(2, 1.0, {});
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        EXPECT_EQ(readFile("events.xml"), whole) << room;
    }
    frame(3, 2.0, {});
    const std::string text = finished();
    EXPECT_THAT(text, testing::StartsWith(whole + " <RHVideoFrame frameID=\"3\""));
    EXPECT_THAT(text, testing::EndsWith(" </RHVideoFrame>\n</Tarvos>\n"));
    EXPECT_THAT(m_log, testing::IsEmpty());
}

TEST_F(EventXml, GoesOnWhenItsFolderVanishesAndComesBack)
{
    std::filesystem::create_directory(path("out"));
    ASSERT_TRUE(start(
        {.parameters =
             "saveXML3File: \"true\"\nXML3FileName: \"" + path("out/events.xml") + "\"\n"}));
    frame(1, 0.0, {});
    std::filesystem::remove_all(path("out"));
    frame(2, 1.0, {});
    std::filesystem::create_directory(path("out"));
    frame(3, 2.0, {});
    m_process.reset();
    const std::string text = readFile("out/events.xml");
    EXPECT_THAT(text, testing::StartsWith(" <RHVideoFrame frameID=\"3\""));
    EXPECT_THAT(text, testing::EndsWith("</Tarvos>\n"));
    EXPECT_THAT(m_log, testing::IsEmpty());
}

TEST_F(EventXml, FollowsTheFlagFrameByFrame)
{
    ASSERT_TRUE(startWriting({}));
    m_process->setParamSaveXML3File(false);
    frame(1, 0.0, {});
    m_process->setParamSaveXML3File(true);
    frame(2, 1.0, {});
    const std::string text = finished();
    EXPECT_THAT(text, Not(HasSubstr("frameID=\"1\"")));
    EXPECT_THAT(text, HasSubstr("frameID=\"2\""));
}

TEST(EventXmlValue, EscapesFourCharactersAndNoOther)
{
    EXPECT_EQ(
        escaped("a & b < c > d \" e ' f\tg\nh\ri"),
        "a &amp; b &lt; c &gt; d &quot; e ' f\tg\nh\ri");
}

TEST(EventXmlValue, ReplacesBytesThatXmlForbids)
{
    const std::string bad = "\xEF\xBF\xBD";
    EXPECT_EQ(escaped(std::string_view("a\0b\x01z\x1F", 6)), "a" + bad + "b" + bad + "z" + bad);
    EXPECT_EQ(escaped("\x7F"), "\x7F");
    EXPECT_EQ(escaped("\xFF\x80"), bad + bad);
    EXPECT_EQ(escaped("\xC3"), bad);
    EXPECT_EQ(escaped("\xC3("), bad + "(");
    EXPECT_EQ(escaped("\xE2\x82"), bad + bad);
    EXPECT_EQ(escaped("\xC0\xAF"), bad + bad);
    EXPECT_EQ(escaped("\xE0\x80\xAF"), bad);
    EXPECT_EQ(escaped("\xED\xA0\x80"), bad);
    EXPECT_EQ(escaped("\xEF\xBF\xBE"), bad);
    EXPECT_EQ(escaped("\xF4\x90\x80\x80"), bad);
    EXPECT_EQ(escaped("\xF5\x80\x80\x80"), bad + bad + bad + bad);
}

TEST(EventXmlValue, KeepsCharactersOfAllLengths)
{
    EXPECT_EQ(
        escaped("A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(StreamText, WritesNumbersAsAStreamDoes)
{
    StreamText text;
    text << 0.1 << ' ' << 1.0 / 3.0 << ' ' << 1234567.0 << ' ' << 1e-7 << ' ' << -0.0 << ' ' << 1.5
         << ' ' << std::int64_t{-5000000000} << ' ' << 42U << ' ' << "end";
    EXPECT_EQ(text.text(), "0.1 0.333333 1.23457e+06 1e-07 -0 1.5 -5000000000 42 end");
    text.clear();
    EXPECT_EQ(text.text(), "");
}
