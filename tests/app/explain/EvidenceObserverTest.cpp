#include "app/explain/EvidenceObserver.h"

#include "app/explain/Summary.h"
#include "tests/app/explain/ExplainWorld.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

// Person 1 is in zone A from frame 1 to 6; then is a stay of at least 0.1 s.
World stay()
{
    World world;
    world.frames = 12;
    world.zones = {{"A", 0, 0, 4, 4}};
    for (int frame = 0; frame < world.frames; ++frame) {
        world.tracks[1][frame] = {frame >= 1 && frame <= 6 ? 1 : 9, 2};
    }
    world.models = {
        {"PrimitiveState",
         "Inside",
         std::nullopt,
         "(p : Person)(z : Zone)",
         "",
         {{"p->Position in z->Vertices", std::nullopt, ""}}},
        {"CompositeEvent",
         "Stays",
         0.5,
         "(p : Person)(z : Zone)",
         "(c1 : PrimitiveState Inside(p, z))",
         {{"duration(c1->Interval) >= ", 0.1, ""}}}};
    return world;
}

} // namespace

TEST(EvidenceObserver, TellsWhatConstraintsSawWhenTheEventWasRecognisedFirst)
{
    const auto evidence = runWorld(stay(), std::nullopt, 1).evidence;
    ASSERT_NE(evidence, nullptr);
    EXPECT_EQ(evidence->model, "Stays");
    EXPECT_EQ(objectsText(evidence->objects), "p=1 z=A");
    EXPECT_EQ(evidence->recognised.frame, 4);
    EXPECT_EQ(evidence->end.frame, 6);
    EXPECT_EQ(evidence->threshold, 0.5);
    ASSERT_EQ(evidence->findings.size(), 1U);
    EXPECT_EQ(
        findingText(evidence->findings[0]),
        "duration(c1->Interval) >= 0.1: 0.12, needed >= 0.1, 0.02 s to spare");
}

TEST(EvidenceObserver, GoesDownToPrimitiveStates)
{
    const auto evidence = runWorld(stay(), std::nullopt, 1).evidence;
    ASSERT_EQ(evidence->parts.size(), 1U);
    const EvidencePart& part = evidence->parts[0];
    EXPECT_EQ(part.variable, "c1");
    EXPECT_EQ(part.until.frame, 4);
    EXPECT_EQ(part.evidence->model, "Inside");
    EXPECT_EQ(part.evidence->begin.frame, 1);
    EXPECT_EQ(part.evidence->findings.at(0).margin, 1.0);
}

TEST(EvidenceObserver, HasNothingOfEventsThatAreNot)
{
    EXPECT_EQ(runWorld(stay(), std::nullopt, 7).evidence, nullptr);
}

} // namespace scenariomatch
