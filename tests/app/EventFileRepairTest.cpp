#include "app/EventFileRepair.h"

#include "ProgramRun.h"

#include <QXmlStreamReader>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;

const std::string kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Tarvos version=\"3.00\">\n";
const std::string kClose = "</Tarvos>\n";

// As a process wrote it: frames with events of all kinds, names with entities in them.
const std::string& realFile()
{
    static const std::string text = contentOf(SCENARIOMATCH_TEST_DATA "/plugin/events.xml");
    return text;
}

struct Frame
{
    std::size_t begin;
    std::size_t end;
};

std::vector<Frame> framesOf(const std::string& text)
{
    const std::string end = " </RHVideoFrame>\n";
    std::vector<Frame> frames;
    std::size_t begin = text.find(" <RHVideoFrame ");
    while (begin != std::string::npos) {
        const std::size_t after = text.find(end, begin) + end.size();
        frames.push_back({begin, after});
        begin = text.find(" <RHVideoFrame ", after);
    }
    return frames;
}

struct Repaired
{
    EventFileRepair found;
    std::string text;
    std::string talk;
};

Repaired repaired(const std::string& text, const EventFileLimits& limits = {})
{
    std::istringstream in(text);
    std::ostringstream out;
    std::ostringstream talk;
    const EventFileRepair found = repairEventFile(in, "a.xml", out, talk, limits);
    return {found, out.str(), talk.str()};
}

bool isWellFormed(const std::string& text)
{
    QXmlStreamReader reader(QByteArray::fromStdString(text));
    while (!reader.atEnd()) {
        reader.readNext();
    }
    return !reader.hasError();
}

std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (const std::string_view part : parts) {
        text += part;
    }
    return text;
}

// The whole frames among the first bytes.
std::string framesBefore(const std::string& text, std::size_t bytes)
{
    std::string frames;
    for (const Frame& frame : framesOf(text)) {
        if (frame.end <= bytes) {
            frames += text.substr(frame.begin, frame.end - frame.begin);
        }
    }
    return frames;
}

} // namespace

TEST(EventFileRepair, LeavesAWholeFileAsItIs)
{
    const Repaired result = repaired(realFile());
    EXPECT_TRUE(result.found.isWhole);
    EXPECT_EQ(result.found.frames, framesOf(realFile()).size());
    EXPECT_EQ(result.text, realFile());
    EXPECT_EQ(result.talk, "");
}

TEST(EventFileRepair, KeepsTheWholeFramesOfAFileThatIsCutAtAnyByte)
{
    ASSERT_GE(framesOf(realFile()).size(), 2U);
    for (std::size_t cut = 0; cut < realFile().size(); ++cut) {
        const Repaired result = repaired(realFile().substr(0, cut));
        ASSERT_EQ(result.found.problem, "") << cut;
        ASSERT_FALSE(result.found.isWhole) << cut;
        ASSERT_EQ(result.text, joined({kHead, framesBefore(realFile(), cut), kClose})) << cut;
        ASSERT_TRUE(isWellFormed(result.text)) << cut;
    }
}

TEST(EventFileRepair, LeavesOutAFrameThatBreaksOffBeforeOthersAtAnyByte)
{
    const std::vector<Frame> frames = framesOf(realFile());
    for (const Frame& torn : frames) {
        const std::string before = realFile().substr(0, torn.begin);
        const std::string after = realFile().substr(torn.end);
        for (std::size_t cut = torn.begin + 1; cut < torn.end; ++cut) {
            const std::string part = realFile().substr(torn.begin, cut - torn.begin);
            const Repaired result = repaired(joined({before, part, after}));
            ASSERT_EQ(result.text, joined({before, after})) << cut;
            ASSERT_EQ(result.found.torn, 1U) << cut;
            ASSERT_EQ(result.found.tornBytes, part.size()) << cut;
        }
    }
}

TEST(EventFileRepair, SaysWhatItLeavesOut)
{
    const std::string torn = " <RHVideoFrame frameID=\"3\" timeYe";
    const Repaired result = repaired(realFile().substr(0, realFile().size() - 10) + torn);
    const auto line = std::count(realFile().begin(), realFile().end(), '\n');
    EXPECT_EQ(
        result.talk,
        "a.xml:" + std::to_string(line) + ": " + std::to_string(torn.size()) +
            " bytes of a frame that breaks off are left out\n");
    EXPECT_EQ(result.found.tornBytes, torn.size());
}

TEST(EventFileRepair, CountsWhatItNoLongerSays)
{
    std::string text = kHead;
    for (int i = 0; i < 25; ++i) {
        text += " <RHVideoFrame frameID=\"3\"";
    }
    const Repaired result = repaired(text);
    EXPECT_EQ(result.found.torn, 25U);
    EXPECT_EQ(std::count(result.talk.begin(), result.talk.end(), '\n'), 21);
    EXPECT_THAT(result.talk, HasSubstr("a.xml: 5 more frames break off and are left out\n"));
}

TEST(EventFileRepair, AddsABeginningThatWasNotWritten)
{
    const std::string frames = framesBefore(realFile(), realFile().size());
    EXPECT_EQ(repaired(frames).text, realFile());
    EXPECT_EQ(repaired(kHead.substr(0, 30) + frames).text, realFile());
    // What a process with a name for the file leaves behind that was not told to write it.
    EXPECT_EQ(repaired(kClose).text, kHead + kClose);
}

TEST(EventFileRepair, KeepsFramesBehindAClosingTag)
{
    const std::string frames = framesBefore(realFile(), realFile().size());
    const Repaired result = repaired(realFile() + frames + kClose + kClose);
    EXPECT_EQ(result.text, kHead + frames + frames + kClose);
    EXPECT_FALSE(result.found.isWhole);
}

TEST(EventFileRepair, RefusesWhatIsNoEventFile)
{
    const std::string reason = "a.xml:1: this is not how an event file begins";
    EXPECT_EQ(repaired("no XML").found.problem, reason);
    EXPECT_EQ(repaired("<?xml version=\"1.0\"?>\n<html/>\n").found.problem, reason);
    EXPECT_EQ(repaired(std::string(100, '\0')).found.problem, reason);
    const std::string other = "a.xml:3: this is neither a frame nor the beginning of one";
    EXPECT_EQ(repaired(kHead + "<Other/>\n" + kClose).found.problem, other);
    EXPECT_EQ(repaired(kHead + "\n").found.problem, other);
    EXPECT_EQ(repaired(kHead + " <RHVideo x").found.problem, other);
}

TEST(EventFileRepair, RefusesAFrameThatIsDamagedInAnotherWay)
{
    const std::string start = kHead + " <RHVideoFrame frameID=\"1\">\n";
    const std::string end = " </RHVideoFrame>\n" + kClose;
    const std::string reason = "a.xml:3: the frame that begins here is damaged: ";
    for (const std::string inside : {"<a>", "</a>", "&x;", "\x01", "\xFF", R"(<a b="1" b="2"/>)"}) {
        EXPECT_THAT(repaired(joined({start, inside, end})).found.problem, HasSubstr(reason))
            << inside;
    }
    std::string deep;
    for (int i = 0; i < 100'000; ++i) {
        deep += "<a>";
    }
    EXPECT_EQ(repaired(start + deep + end).found.problem, reason + "elements nest too deeply");
}

TEST(EventFileRepair, RefusesAFrameThatIsTooLong)
{
    const std::string text = kHead + " <RHVideoFrame frameID=\"1\">\n" + std::string(300'000, ' ') +
                             " </RHVideoFrame>\n" + kClose;
    EXPECT_EQ(
        repaired(text, {.frameBytes = 100'000}).found.problem, "a.xml:3: a frame is too long");
    EXPECT_EQ(repaired(text, {.frameBytes = 400'000}).text, text);
}

TEST(EventFileRepair, GivesWellFormedXmlOrRefusesWhateverItIsGiven)
{
    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): the same bytes in every run
    std::mt19937 random(17);
    const std::string marks("<>/& \"\nR");
    std::size_t accepted = 0;
    for (int i = 0; i < 5000; ++i) {
        std::string text = realFile();
        const std::size_t begin = random() % text.size();
        const std::size_t length = random() % 400;
        if (i % 3 == 0) {
            text[begin] = marks[random() % marks.size()];
        } else if (i % 3 == 1) {
            text.erase(begin, length);
        } else {
            text.insert(random() % text.size(), text.substr(begin, length));
        }
        const Repaired result = repaired(text);
        if (result.found.problem.empty()) {
            ++accepted;
            ASSERT_TRUE(isWellFormed(result.text)) << text;
        }
    }
    EXPECT_GT(accepted, 100U);
}

} // namespace scenariomatch
