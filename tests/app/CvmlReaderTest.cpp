#include "app/FrameClock.h"
#include "tests/app/TrackReading.h"

namespace scenariomatch
{

namespace
{

std::string dataset(const std::string& frames)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><dataset name=\"Hall\">\n" + frames +
           "\n</dataset>\n";
}

// One frame on lines of its own, with the objects in it.
std::string frameOf(const std::string& objects, int number = 0)
{
    return "<frame number=\"" + std::to_string(number) + "\">\n<objectlist>\n" + objects +
           "\n</objectlist>\n<grouplist/>\n</frame>\n";
}

std::string talkOf(const std::string& objects)
{
    const TrackReading reading = readTracks(dataset(frameOf(objects)));
    EXPECT_EQ(reading.frames.size(), 1U);
    EXPECT_TRUE(reading.frames.empty() || reading.frames[0].actors.empty());
    return reading.talk;
}

} // namespace

TEST(CvmlReader, ReadsObjectsBagsAndGroups)
{
    const TrackReading reading = readTracksFile(SCENARIOMATCH_TEST_DATA "/app/hall.cvml.xml");
    EXPECT_EQ(reading.talk, "");
    ASSERT_EQ(reading.frames.size(), 3U);
    EXPECT_TRUE(reading.frames[0].actors.empty());
    EXPECT_EQ(printClock(reading.frames[2].clock), "2000-01-01T00:00:00.080");
    const std::vector<TrackedActor>& actors = reading.frames[1].actors;
    ASSERT_EQ(actors.size(), 4U);
    EXPECT_EQ(actors[0].id, 0);
    EXPECT_EQ(actors[0].type, "PERSON");
    EXPECT_EQ(actors[0].box.x, 80);
    EXPECT_EQ(actors[0].box.y, 181);
    EXPECT_EQ(actors[0].box.width, 21);
    EXPECT_EQ(actors[0].box.height, 40);
    EXPECT_FLOAT_EQ(actors[0].position.value().x, 90.0F);
    EXPECT_FLOAT_EQ(actors[0].position.value().y, 221.0F);
    EXPECT_FLOAT_EQ(actors[0].size.value().height, 40.0F);
    EXPECT_EQ(actors[1].id, 4);
    EXPECT_EQ(actors[1].type, "BAG");
    EXPECT_EQ(actors[2].type, "PERSON");
    EXPECT_EQ(actors[3].id, 10'000);
    EXPECT_EQ(actors[3].type, "GROUP");
    EXPECT_FLOAT_EQ(actors[3].position.value().y, 130.0F);
}

TEST(CvmlReader, TakesTheOtherNameOfTheObjectListAndAGivenRate)
{
    const TrackReading reading = readTracks(
        dataset("<frame number=\"3\"><object_list><object id=\"2\"><box xc=\"1\" yc=\"2\" w=\"2\" "
                "h=\"2\"/></object>"
                "</object_list></frame><frame number=\"4\"/>"),
        withRate(10.0));
    ASSERT_EQ(reading.frames.size(), 2U);
    EXPECT_EQ(reading.frames[0].actors.at(0).id, 2);
    EXPECT_EQ(printClock(reading.frames[1].clock), "2000-01-01T00:00:00.100");
}

TEST(CvmlReader, ReportsObjectsThatAreLeftOut)
{
    EXPECT_EQ(
        talkOf("<object id=\"1\"></object>"),
        "tracks:4:16: the object has no box\n<object id=\"1\"></object>\n               ^\n");
    EXPECT_EQ(
        talkOf("  <object id=\"x\"><box xc=\"1\" yc=\"1\" w=\"1\" h=\"1\"/></object>"),
        "tracks:4:3: \"id\" is missing or not a whole number\n"
        "  <object id=\"x\"><box xc=\"1\" yc=\"1\" w=\"1\" h=\"1\"/></object>\n  ^\n");
    EXPECT_EQ(
        talkOf("<object id=\"-1\"><box xc=\"1\" yc=\"1\" w=\"1\" h=\"1\"/></object>"),
        "tracks:4:1: the identifier is negative: the object is not tracked\n"
        "<object id=\"-1\"><box xc=\"1\" yc=\"1\" w=\"1\" h=\"1\"/></object>\n^\n");
    EXPECT_EQ(
        talkOf("<object id=\"1\">\n<box xc=\"1\" yc=\"1\" w=\"1\"/>\n</object>"),
        "tracks:5:1: the box needs the numbers xc, yc, w and h\n<box xc=\"1\" yc=\"1\" "
        "w=\"1\"/>\n^\n");
    EXPECT_EQ(
        talkOf("<object id=\"1\">\n<box xc=\"nan\" yc=\"1\" w=\"1\" h=\"1\"/>\n</object>"),
        "tracks:5:1: a number is not finite\n<box xc=\"nan\" yc=\"1\" w=\"1\" h=\"1\"/>\n^\n");
    EXPECT_EQ(
        talkOf("<object id=\"1\">\n<box xc=\"1\" yc=\"1\" w=\"-1\" h=\"1\"/>\n</object>"),
        "tracks:5:1: the box has a negative size\n<box xc=\"1\" yc=\"1\" w=\"-1\" h=\"1\"/>\n^\n");
    EXPECT_EQ(
        talkOf("<group id=\"2147483647\">\n<box xc=\"1\" yc=\"1\" w=\"1\" h=\"1\"/>\n</group>"),
        "tracks:4:1: the identifier is out of range\n<group id=\"2147483647\">\n^\n");
}

TEST(CvmlReader, CountsObjectsOfFramesThatDoNotComeToTheirEnd)
{
    const std::string box = R"(<box xc="1" yc="1" w="1" h="1"/>)";
    const std::string start = R"(<dataset><frame number="1"><objectlist><object id="1">)" + box +
                              R"(</object><object id="2">)";
    const TrackReading reading = readTracks(start + box);
    EXPECT_TRUE(reading.frames.empty());
    EXPECT_EQ(reading.summary, "tracks: 1 damaged end left out\n");
    EXPECT_EQ(reading.dropped, 2U);
    EXPECT_EQ(readTracks(start + R"(<frame number="2"></frame></dataset>)").dropped, 2U);
}

TEST(CvmlReader, KeepsTheFirstOfTwoObjectsWithOneIdentifier)
{
    const TrackReading reading = readTracks(
        dataset(frameOf("<object id=\"1\"><box xc=\"1\" yc=\"1\" w=\"1\" h=\"1\"/></object>\n"
                        "<object id=\"1\"><box xc=\"9\" yc=\"9\" w=\"1\" h=\"1\"/></object>\n"
                        "<group id=\"1\"><box xc=\"9\" yc=\"9\" w=\"1\" h=\"1\"/></group>")));
    EXPECT_EQ(reading.frames.at(0).actors.size(), 2U);
    EXPECT_FLOAT_EQ(reading.frames.at(0).actors.at(0).position.value().x, 1.0F);
    EXPECT_EQ(reading.summary, "tracks: 1 repeated identifier left out\n");
}

TEST(CvmlReader, LeavesOutFramesOutOfOrderAndWithoutNumber)
{
    const std::string object = R"(<object id="1"><box xc="1" yc="1" w="1" h="1"/></object>)";
    const TrackReading reading = readTracks(dataset(
        frameOf(object, 5) + frameOf(object, 4) + "<frame number=\"x\">" + object + "</frame>" +
        frameOf("", 6)));
    ASSERT_EQ(reading.frames.size(), 2U);
    EXPECT_EQ(reading.frames[1].number, 6);
    EXPECT_EQ(
        reading.summary, "tracks: 1 malformed line left out, 1 frame out of order left out\n");
}

TEST(CvmlReader, RefusesAnotherRoot)
{
    const TrackReading reading = readTracks("<html><frame number=\"1\"/></html>");
    ASSERT_TRUE(reading.failure);
    EXPECT_FALSE(reading.failure->isUsage);
    EXPECT_EQ(reading.failure->reason, "the root element is \"html\", not \"dataset\"");
    EXPECT_TRUE(reading.frames.empty());
}

TEST(CvmlReader, KeepsWhatStandsBeforeDamage)
{
    const TrackReading broken = readTracks(dataset(frameOf("", 0) + "<frame number=\"1\"></fr>"));
    EXPECT_EQ(broken.frames.size(), 1U);
    EXPECT_TRUE(broken.talk.starts_with("tracks:8:19: the XML is damaged: ")) << broken.talk;
    const TrackReading cut =
        readTracks("<dataset>" + frameOf("", 0) + "<frame number=\"1\"><objectli");
    EXPECT_EQ(cut.frames.size(), 1U);
    EXPECT_NE(cut.talk.find("the XML ends too early"), std::string::npos) << cut.talk;
    EXPECT_EQ(cut.summary, "tracks: 1 damaged end left out\n");
}

TEST(CvmlReader, SurvivesEveryCut)
{
    const std::string text = dataset(frameOf(
        "<object id=\"1\"><box xc=\"1\" yc=\"1\" w=\"1\" h=\"1\"/><hypothesislist><hypothesis>"
        "<role>leaving &amp; object</role></hypothesis></hypothesislist></object>"));
    for (std::size_t size = 1; size + 2 < text.size(); ++size) {
        const TrackReading reading = readTracks(text.substr(0, size));
        EXPECT_TRUE(reading.failure || reading.problems == 1) << size;
    }
}

TEST(CvmlReader, RefusesDeepNestingAndEndlessTags)
{
    std::string deep;
    for (int i = 0; i < 100'000; ++i) {
        deep += "<a>";
    }
    EXPECT_EQ(readTracks("<dataset>\n" + deep).talk.substr(0, 60).find("tracks:2:"), 0U);
    EXPECT_NE(
        readTracks("<dataset>\n" + deep).talk.find("elements are nested more than 64 deep"),
        std::string::npos);
    const TrackReading endless = readTracks("<dataset>\n<frame x=\"" + std::string(3'000'000, 'x'));
    EXPECT_NE(endless.talk.find("a tag or text is longer than 32768 bytes"), std::string::npos)
        << endless.talk.substr(0, 200);
}

TEST(CvmlReader, RefusesEntitiesThatGrow)
{
    std::string text = "<!DOCTYPE dataset [<!ENTITY a \"aaaaaaaaaaaaaaaa\">";
    for (char name = 'b'; name < 'k'; ++name) {
        text += std::string("<!ENTITY ") + name + " \"";
        for (int i = 0; i < 16; ++i) {
            text += std::string("&") + static_cast<char>(name - 1) + ";";
        }
        text += "\">";
    }
    const TrackReading reading =
        readTracks(text + "]>\n<dataset><frame number=\"1\">&j;</frame></dataset>");
    EXPECT_TRUE(reading.frames.empty());
    EXPECT_EQ(reading.summary, "tracks: 1 damaged end left out\n");
}

TEST(CvmlReader, ReadsATextOnOneLineLongerThanAPiece)
{
    std::string frames;
    for (int i = 0; i < 5000; ++i) {
        frames += "<frame number=\"" + std::to_string(i) +
                  "\"><objectlist><object id=\"1\"><box xc=\"1\" yc=\"1\" w=\"1\" "
                  "h=\"1\"/></object></objectlist></frame>";
    }
    const TrackReading reading = readTracks(dataset(frames));
    EXPECT_EQ(reading.talk, "");
    EXPECT_EQ(reading.frames.size(), 5000U);
    EXPECT_EQ(reading.frames.back().actors.size(), 1U);
}

} // namespace scenariomatch
