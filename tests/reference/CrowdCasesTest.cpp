// The engine against the reference where there are many objects: more neighbours than are worth
// remembering, more pairs of persons and zones than are shared, more types than are kept.

#include "tests/reference/Duel.h"
#include "tests/reference/Random.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

using Kind = SceneValue::Kind;

// Of the pairs that are near, few are equal, so that little is recognised.
const ModelSet kNear{
    "PrimitiveState(Near, PhysicalObjects((p : Person)(q : Person))"
    " Constraints((apart_m(p->X, q->X) <=_m 1)(p->P near_p q->P)(left_p(p->P, q->P))))\n"
    "PrimitiveState(Nearer, PhysicalObjects((p : Person)(q : Person))"
    " Constraints((within_m(q->X, p->X, 0.9))(left_i(p->P, q->P))(p->P near_i q->P)))\n"
    "PrimitiveState(Reach, PhysicalObjects((q : Person)(p : Child))"
    " Constraints((maybe_p(p->P) and_m far_m(p->X, q->X) <_m 3)(close_e(p->P, q->P))))\n",
    {"Near", "Nearer", "Reach"}};

const ModelSet kZones{
    "PrimitiveState(In, PhysicalObjects((p : Person)(z : Zone))"
    " Constraints((inside_p(p->X, z->Y))(p->P left_p 3)))\n"
    "PrimitiveState(InToo, PhysicalObjects((q : Zone)(p : Person))"
    " Constraints((inside_p(p->X, q->Y))(value_p(2) >_p apart_p(p->X, q->X))(p->P left_p 2)))\n",
    {"In", "InToo"}};

SceneObject person(Random& random, int host, double side)
{
    const double x = side * random.pick(1000) / 1000.0;
    const double y = side * random.pick(1000) / 1000.0;
    return {
        .host = host,
        .type = random.oneIn(10) ? "Child" : "Person",
        .attributes = {
            {"P", {.x = static_cast<double>(random.pick(200))}},
            {"X", {.kind = Kind::Point, .x = x, .y = y}}}};
}

void runFrames(Duel& duel, Random& random, int persons, double side)
{
    SceneFrame frame;
    for (; frame.number < 3; ++frame.number) {
        frame.seconds += 1.0;
        frame.actors.clear();
        for (int host = 0; host < persons; ++host) {
            if (!random.oneIn(20)) {
                frame.actors.push_back(person(random, host, side));
            }
        }
        ASSERT_TRUE(duel.step(frame));
        ASSERT_EQ(duel.difference(Duel::Look::Everywhere), "");
    }
}

} // namespace

TEST(CrowdCases, EngineAgreesWhereEverybodyIsNear)
{
    Random random(1);
    Duel duel(kNear);
    runFrames(duel, random, 150, 1.0);
    EXPECT_GT(duel.alive(), 0U);
}

TEST(CrowdCases, EngineAgreesWhereFewAreNear)
{
    Random random(2);
    Duel duel(kNear);
    runFrames(duel, random, 250, 40.0);
    EXPECT_GT(duel.alive(), 0U);
}

TEST(CrowdCases, EngineAgreesOnManyZones)
{
    constexpr int kZoneCount = 250;
    Random random(3);
    Duel duel(kZones);
    for (int host = 0; host < kZoneCount; ++host) {
        const auto x = static_cast<double>(random.pick(20));
        duel.enterConstant(
            {.host = host,
             .type = "Zone",
             .attributes = {
                 {"X", {.kind = Kind::Point, .x = x, .y = 1.0}},
                 {"Y", {.kind = Kind::Polygon, .x = x, .y = 1.0}}}});
    }
    runFrames(duel, random, 300, 20.0);
    EXPECT_GT(duel.alive(), 0U);
}

// A track may call its objects what it likes.
TEST(CrowdCases, EngineAgreesOnEverNewTypes)
{
    Random random(4);
    Duel duel(kNear);
    SceneFrame frame;
    for (int type = 0; frame.number < 8; ++frame.number) {
        frame.seconds += 1.0;
        frame.actors.clear();
        for (int host = 0; host < 400; ++host) {
            frame.actors.push_back(person(random, host, 5.0));
            if (host > 10) {
                frame.actors.back().type = "Type" + std::to_string(type++);
            }
        }
        ASSERT_TRUE(duel.step(frame));
        ASSERT_EQ(duel.difference(Duel::Look::Everywhere), "");
    }
}

} // namespace scenariomatch
