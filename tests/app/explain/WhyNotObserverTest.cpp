#include "app/explain/WhyNotObserver.h"

#include "app/explain/Summary.h"
#include "tests/app/explain/ExplainWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

// Three people in two frames: 1 at 0, 2 at 3, 3 at 10; then 2 at 2.5. Zone Bank is from 20 to 30.
World threePeople()
{
    World world;
    world.frames = 2;
    world.zones = {{"Bank", 20, 0, 30, 10}};
    world.tracks[1] = {{0, {0, 0}}, {1, {0, 0}}};
    world.tracks[2] = {{0, {3, 0}}, {1, {2.5, 0}}};
    world.tracks[3] = {{0, {10, 0}}, {1, {10, 0}}};
    return world;
}

World closePair()
{
    World world = threePeople();
    world.models = {
        {"PrimitiveState",
         "Close",
         std::nullopt,
         "(p : Person)(q : Person)",
         "",
         {{"distance(p->Position, q->Position) < ", 2, ""}}}};
    return world;
}

WhyNot whyNot(const World& world, WhyNotQuestion question)
{
    return *runWorld(world, question, std::nullopt).why;
}

} // namespace

TEST(WhyNotObserver, CountsCandidatesAndKeepsTheNearest)
{
    const WhyNot why = whyNot(closePair(), {"Close"});
    EXPECT_EQ(why.frames, 2U);
    EXPECT_EQ(why.candidates, 12U);
    ASSERT_EQ(why.constraints.size(), 1U);
    EXPECT_EQ(why.constraints[0].firstFalse, 12U);
    EXPECT_THAT(why.events, IsEmpty());
    ASSERT_TRUE(why.nearest);
    EXPECT_EQ(why.nearest->when.frame, 1);
    EXPECT_EQ(objectsText(why.nearest->objects), "p=1 q=2");
    EXPECT_EQ(why.nearest->findings.at(0).margin, 0.5);
    EXPECT_EQ(
        reasonOf(why),
        "Close came nearest with p=1 q=2 at 0.04 s: distance(p->Position, q->Position) < 2: 2.5, "
        "needed < 2, 0.5 too much.");
}

TEST(WhyNotObserver, LooksAtTheObjectsAskedForAlone)
{
    const WhyNot why = whyNot(closePair(), {"Close", {"3", "2"}});
    EXPECT_EQ(why.candidates, 4U);
    EXPECT_EQ(objectsText(why.nearest->objects), "p=2 q=3");
    EXPECT_EQ(why.nearest->when.frame, 0);
    EXPECT_EQ(why.nearest->findings.at(0).margin, 5.0);
}

TEST(WhyNotObserver, SaysWhichObjectsWereNotSeen)
{
    const WhyNot why = whyNot(closePair(), {"Close", {"1", "7"}});
    EXPECT_EQ(why.candidates, 0U);
    EXPECT_THAT(why.unseenObjects, ElementsAre("7"));
    EXPECT_EQ(reasonOf(why), "Object 7 was not seen.");
}

TEST(WhyNotObserver, LooksAtTheTimeAskedForAlone)
{
    const std::int64_t start = whyNot(closePair(), {"Close"}).first.milliseconds;
    WhyNotQuestion question{"Close"};
    question.window.to = start;
    const WhyNot first = whyNot(closePair(), question);
    EXPECT_EQ(first.frames, 1U);
    EXPECT_EQ(first.candidates, 6U);
    EXPECT_EQ(first.nearest->findings.at(0).margin, 1.0);
    question.window = {start + 1000, start + 2000};
    const WhyNot none = whyNot(closePair(), question);
    EXPECT_EQ(none.frames, 0U);
    EXPECT_EQ(reasonOf(none), "Close was not tried: no frame lies in the time asked for.");
}

TEST(WhyNotObserver, TellsTheEventsThatDidAppear)
{
    World world = closePair();
    world.models[0].constraints[0].limit = 2.75;
    const WhyNot why = whyNot(world, {"Close"});
    ASSERT_EQ(why.events.size(), 2U);
    EXPECT_EQ(objectsText(why.events[0].objects), "p=1 q=2");
    EXPECT_EQ(why.events[0].begin.frame, 1);
    EXPECT_EQ(reasonOf(why), "Close was recognised from 0 s to 0.04 s, 2 events.");
}

TEST(WhyNotObserver, CountsUnderTheConstraintThatIsTheFirstToBeFalse)
{
    World world = threePeople();
    world.models = {
        {"PrimitiveState",
         "Visit",
         std::nullopt,
         "(p : Person)(z : Zone)",
         "",
         {{"z->Name = ", std::nullopt, "Bank"},
          {"p->Position in z->Vertices", std::nullopt, ""},
          {"distance(p->Position, z->Position) < ", 1, ""}}}};
    world.zones.push_back({"Shop", 0, 0, 1, 1});
    const WhyNot why = whyNot(world, {"Visit"});
    EXPECT_EQ(why.candidates, 12U);
    EXPECT_EQ(why.constraints[0].firstFalse, 6U);
    EXPECT_EQ(why.constraints[1].firstFalse, 6U);
    EXPECT_EQ(why.constraints[2].firstFalse, 0U);
    EXPECT_EQ(why.constraints[1].nearest->findings.at(0).margin, 10.0);
    EXPECT_EQ(objectsText(why.constraints[1].nearest->objects), "p=3 z=Bank");
}

TEST(WhyNotObserver, TriesNoMoreCandidatesThanAllowed)
{
    WhyNotQuestion question{"Close"};
    question.mostCandidates = 6;
    const WhyNot why = whyNot(closePair(), question);
    EXPECT_EQ(why.cutFrames, 2U);
    EXPECT_LT(why.candidates, 12U);
    EXPECT_EQ(summaryOf(why).at(2), "In 2 frames there were too many candidates to try all.");
    question.mostCandidates = 100;
    EXPECT_EQ(whyNot(closePair(), question).cutFrames, 0U);
}

TEST(WhyNotObserver, SaysThatNoObjectOfATypeWasSeen)
{
    World world = closePair();
    world.models[0].objects = "(p : Person)(q : Bag)";
    const WhyNot why = whyNot(world, {"Close"});
    EXPECT_THAT(why.unseenTypes, ElementsAre("Bag"));
    EXPECT_EQ(why.candidates, 0U);
    EXPECT_EQ(reasonOf(why), "No object of type Bag was seen.");
}

TEST(WhyNotObserver, TellsHowMuchConfidenceWasMissing)
{
    World world = closePair();
    world.bayesianRatio = 2.0;
    world.models[0].threshold = 0.75;
    world.models[0].constraints[0].limit = 2.75;
    const WhyNot why = whyNot(world, {"Close"});
    ASSERT_TRUE(why.confidence);
    EXPECT_EQ(why.confidence->times, 2U);
    EXPECT_EQ(why.confidence->confidence, 0.5);
    EXPECT_EQ(
        reasonOf(why),
        "2 candidates met all constraints and were not confident enough: 0.5 at best (p=1 q=2 at "
        "0.04 s), 0.75 needed, 0.25 short.");
}

TEST(WhyNotObserver, SaysWhichComponentWasMissingAndWhy)
{
    World world = closePair();
    world.models.push_back(
        {"CompositeEvent",
         "Talk",
         std::nullopt,
         "(p : Person)(q : Person)",
         "(c1 : PrimitiveState Close(p, q))",
         {{"duration(c1->Interval) >= ", 1, ""}}});
    const WhyNot why = whyNot(world, {"Talk"});
    ASSERT_EQ(why.components.size(), 1U);
    EXPECT_EQ(why.components[0].events, 0U);
    ASSERT_NE(why.components[0].missing, nullptr);
    EXPECT_EQ(why.components[0].missing->candidates, 12U);
    EXPECT_EQ(
        reasonOf(why),
        "Talk needs c1 (Close), which was never recognised: Close came nearest with p=1 q=2 at "
        "0.04 s: distance(p->Position, q->Position) < 2: 2.5, needed < 2, 0.5 too much.");
}

TEST(WhyNotObserver, TellsHowLongASubEventLastedAtMost)
{
    World world = closePair();
    world.models[0].constraints[0].limit = 4;
    world.models.push_back(
        {"CompositeEvent",
         "Talk",
         std::nullopt,
         "(p : Person)(q : Person)",
         "(c1 : PrimitiveState Close(p, q))",
         {{"duration(c1->Interval) >= ", 1, ""}}});
    const WhyNot why = whyNot(world, {"Talk"});
    EXPECT_EQ(why.candidates, 4U);
    EXPECT_EQ(why.components[0].events, 2U);
    EXPECT_EQ(
        reasonOf(why),
        "Talk came nearest with p=1 q=2 at 0.04 s: duration(c1->Interval) >= 1: 0.04, needed >= 1, "
        "0.96 s too little.");
}

namespace
{

// Person 1 is in zone A from frame 1 to 6, person 2 in zone B from frame 3 to 8.
World twoStays()
{
    World world;
    world.frames = 12;
    world.zones = {{"A", 0, 0, 4, 4}, {"B", 20, 20, 24, 24}};
    for (int frame = 0; frame < world.frames; ++frame) {
        const bool isFirst = frame >= 1 && frame <= 6;
        const bool isSecond = frame >= 3 && frame <= 8;
        world.tracks[1][frame] = {isFirst ? 2 : 9, 2};
        world.tracks[2][frame] = {isSecond ? 22 : 29, 22};
    }
    for (const std::string zone : {"A", "B"}) {
        world.models.push_back(
            {"PrimitiveState",
             "In" + zone,
             std::nullopt,
             "(p : Person)(z : Zone)",
             "",
             {{"z->Name = ", std::nullopt, zone},
              {"p->Position in z->Vertices", std::nullopt, ""}}});
    }
    world.models.push_back(
        {"CompositeEvent",
         "Then",
         std::nullopt,
         "(p : Person)(q : Person)(a : Zone)(b : Zone)",
         "(c1 : PrimitiveState InA(p, a))(c2 : PrimitiveState InB(q, b))",
         {{"c1->Interval before c2->Interval", std::nullopt, ""}}});
    return world;
}

} // namespace

TEST(WhyNotObserver, SaysByHowMuchSubEventsOverlap)
{
    const WhyNot why = whyNot(twoStays(), {"Then"});
    EXPECT_EQ(why.candidates, 6U);
    EXPECT_EQ(
        reasonOf(why),
        "Then came nearest with a=A b=B p=1 q=2 at 0.12 s: before(c1->Interval, c2->Interval): c1 "
        "ended 0.12 s after c2 began.");
    EXPECT_TRUE(why.nearest->isHindsight);
}

TEST(WhyNotObserver, SaysHowFarSubEventsAreApart)
{
    World world = twoStays();
    world.delay(1, 10);
    const WhyNot late = whyNot(world, {"Then"});
    EXPECT_EQ(late.candidates, 0U);
    EXPECT_EQ(late.apart, "c1 began 0.12 s after c2 had ended");
    world = twoStays();
    world.delay(2, 12);
    world.lookBack = 0.2;
    EXPECT_EQ(
        whyNot(world, {"Then"}).apart,
        "c1 ended 0.36 s before c2 began, and events are looked back at for 0.2 s");
}

TEST(WhyNotObserver, SaysThatSubEventsNeverHadTheSameObjects)
{
    World world = twoStays();
    world.models[2].objects = "(p : Person)(a : Zone)(b : Zone)";
    world.models[2].components = "(c1 : PrimitiveState InA(p, a))(c2 : PrimitiveState InB(p, b))";
    const WhyNot why = whyNot(world, {"Then"});
    EXPECT_EQ(why.candidates, 0U);
    EXPECT_EQ(why.apart, "c1 and c2 never had the same p");
}

TEST(WhyNotObserver, LooksForPartsOfTheObjectsAskedFor)
{
    WhyNotQuestion question{"Then", {"2"}};
    World world = twoStays();
    world.zones[1].grow(-1.9);
    world.zones[1].left += 40;
    world.zones[1].right += 40;
    const WhyNot why = whyNot(world, question);
    ASSERT_EQ(why.components.size(), 2U);
    EXPECT_EQ(why.components[0].events, 1U);
    EXPECT_EQ(why.components[1].events, 0U);
    EXPECT_EQ(why.components[1].model, "InB");
}

// Operators that promise nothing are asked by recognition alone.
TEST(WhyNotObserver, AsksNoOperatorThatPromisesNothing)
{
    class Counting : public CSOperatorInterfaceAbstract
    {
    public:
        std::shared_ptr<CSBasicType>
        evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
        {
            ++m_calls;
            return std::make_shared<CSBool>(false);
        }

        int m_calls = 0;
    };

    Counting counting;
    counting.m_name = "odd";
    World world = closePair();
    world.operators = {&counting};
    world.models[0].constraints = {
        {"distance(p->Position, q->Position) < ", 5, ""},
        {"p->Position odd q->Position", std::nullopt, ""}};
    runWorld(world, std::nullopt, std::nullopt);
    const int alone = std::exchange(counting.m_calls, 0);
    const WhyNot why = whyNot(world, {"Close"});
    EXPECT_GT(alone, 0);
    EXPECT_EQ(counting.m_calls, alone);
    EXPECT_EQ(why.constraints[1].firstFalse, static_cast<std::uint64_t>(alone));
    EXPECT_FALSE(why.constraints[1].isPure);
    EXPECT_FALSE(why.nearest);
}

} // namespace scenariomatch
