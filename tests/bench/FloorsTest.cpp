#include "bench/Floors.h"

#include "app/FrameClock.h"
#include "bench/Crowd.h"
#include "bench/CrowdRecognition.h"
#include "engine/CSEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <string>
#include <vector>

// A floor that answers another question than the engine measures nothing: both must find the same,
// frame by frame.
namespace scenariomatch
{

// For the messages of the test.
static std::ostream& operator<<(std::ostream& out, const FloorEvent& event)
{
    return out << static_cast<int>(event.question) << " (" << event.people[0] << ' '
               << event.people[1] << ' ' << event.people[2] << ") since " << event.begin;
}

namespace
{

// The questions and whom their models ask for, in the order of the floors.
struct Question
{
    FloorQuestion question;
    std::vector<std::string> people;
};

const std::map<std::string, Question>& questions()
{
    static const std::map<std::string, Question> all = {
        {"near_long", {FloorQuestion::NearLong, {"p", "q"}}},
        {"near_in_A", {FloorQuestion::NearInA, {"p", "q"}}},
        {"follow", {FloorQuestion::Follow, {"p", "q"}}},
        {"A_to_B", {FloorQuestion::AToB, {"p"}}},
        {"three_near", {FloorQuestion::ThreeNear, {"p", "q", "r"}}},
    };
    return all;
}

FloorEvent eventOf(const CSScenarioInstance& instance, const Question& question)
{
    FloorEvent event{question.question, {}, 0};
    for (std::size_t i = 0; i < question.people.size(); ++i) {
        event.people.at(i) = instance.m_bindings.at(question.people[i])->m_ID;
    }
    const CSTimeStamp& start = *instance.m_start;
    event.begin = clockToMilliseconds(
        {start.m_year,
         start.m_month,
         start.m_day,
         start.m_hour,
         start.m_minute,
         start.m_second,
         start.m_millisecond});
    return event;
}

// What the engine has recognised in the current frame.
FloorEvents recognised(CSEngine& engine)
{
    FloorEvents events;
    for (const auto& instance : engine.recognisedScenarios()) {
        if (*instance->m_end != *engine.currentTime()) {
            break;
        }
        const auto found = questions().find(instance->m_scenario->m_name);
        if (found != questions().end()) {
            events.push_back(eventOf(*instance, found->second));
        }
    }
    std::sort(events.begin(), events.end());
    return events;
}

FloorEvents sorted(FloorEvents events)
{
    std::sort(events.begin(), events.end());
    return events;
}

using Counts = std::map<FloorQuestion, std::size_t>;

// How often each question was answered; stops at the first frame with a difference.
template <typename Floor>
Counts compare(const Crowd& crowd, const std::string& engineFile, Floor floor)
{
    CrowdRecognition recognition(engineFile, {crowd.zoneA(), crowd.zoneB()});
    FloorInput input;
    Counts counts;
    for (const TrackFrame& frame : crowd.frames()) {
        recognition.enter(frame);
        recognition.engine().infer();
        input.enter(frame);
        const FloorEvents expected = sorted(floor.addFrame(input.people(), input.now()));
        EXPECT_EQ(recognised(recognition.engine()), expected) << "frame " << frame.number;
        if (testing::Test::HasFailure()) {
            break;
        }
        for (const FloorEvent& event : expected) {
            ++counts[event.question];
        }
    }
    return counts;
}

// The crowd, and how many frames of it are compared; of those with three people, which are many,
// how many.
struct Extent
{
    int people;
    int frames;
    int framesOfThree;
};

// For the names of the tests.
std::ostream& operator<<(std::ostream& out, const Extent& extent)
{
    return out << extent.people << " people";
}

class FloorsTest : public testing::TestWithParam<Extent>
{
};

} // namespace

TEST_P(FloorsTest, FindWhatTheEngineFinds)
{
    const Crowd crowd(GetParam().people, GetParam().frames);
    const Counts counts = compare(
        crowd,
        crowdFile("engine.txt"),
        PermFloor(floorZone(crowd.zoneA()), floorZone(crowd.zoneB())));
    // Every question has been answered, or the comparison would say nothing about it.
    EXPECT_EQ(counts.size(), 4U);
}

TEST_P(FloorsTest, FindTheThreesThatTheEngineFinds)
{
    const Crowd crowd(GetParam().people, GetParam().framesOfThree);
    const Counts counts = compare(crowd, crowdFile("three_engine.txt"), TriFloor());
    EXPECT_EQ(counts.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Crowds,
    FloorsTest,
    testing::Values(Extent{5, 5000, 3000}, Extent{20, 4000, 2000}, Extent{50, 4000, 500}),
    [](const auto& test) { return std::to_string(test.param.people); });

} // namespace scenariomatch
