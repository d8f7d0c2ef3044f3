#include "tests/reference/Duel.h"
#include "tests/reference/Effort.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

constexpr double kFarAhead = 100000.0;

// Kinds of models that differ in what recognition does with them.
const std::vector<ModelSet> kFamilies{
    // One variable; an event of one component; two components of different models, in order of
    // time.
    {"PrimitiveState(Low, PhysicalObjects((p : Person)) Constraints((p->P left_p 2)))\n"
     "PrimitiveState(High, PhysicalObjects((p : Person)) Constraints((!(p->P left_i 2))))\n"
     "PrimitiveEvent(IsLow, PhysicalObjects((p : Person)) Components((c : PrimitiveState "
     "Low(p))))\n"
     "CompositeEvent(Rises, PhysicalObjects((p : Person)) Components((a : PrimitiveState Low(p))"
     "(b : PrimitiveState High(p))) Constraints((a->Interval before_p b->Interval)))\n",
     {"Low", "High", "IsLow", "Rises"}},
    // Two variables of one type; the same sub-model twice, with arguments crossed.
    {"PrimitiveState(Close[0.4], PhysicalObjects((p : Person)(q : Person))"
     " Constraints((close_e(p->P, q->P))))\n"
     "CompositeEvent(Again, PhysicalObjects((p : Person)(q : Person))"
     " Components((a : PrimitiveState Close(p, q))(b : PrimitiveState Close(q, p)))"
     " Constraints((a->Interval overlap_i b->Interval)))\n",
     {"Close", "Again"}},
    // Two variables of two types; a composite of a composite; two parents of one model.
    {"PrimitiveState(At, PhysicalObjects((p : Person)(z : Zone)) Constraints((p->P near_p z->P)))\n"
     "PrimitiveState(Off, PhysicalObjects((p : Person)(z : Zone)) Constraints((!(p->P near_e "
     "z->P))))\n"
     "CompositeEvent(Leaves, PhysicalObjects((p : Person)(z : Zone))"
     " Components((a : PrimitiveState At(p, z))(b : PrimitiveState Off(p, z)))"
     " Constraints((a->Interval before_i b->Interval)))\n"
     "CompositeEvent(Returns, PhysicalObjects((p : Person)(z : Zone))"
     " Components((a : CompositeEvent Leaves(p, z))(b : PrimitiveState At(p, z)))"
     " Constraints((b->Interval after_p a->Interval)))\n",
     {"At", "Off", "Leaves", "Returns"}},
    // Arguments shared in part: two persons, each in a state of its own; confidences below one.
    {"PrimitiveState(Even, PhysicalObjects((p : Person)) Constraints((maybe_p(p->P))))\n"
     "PrimitiveState(Some, PhysicalObjects((p : Person)) Constraints((sometimes_i(p->P))))\n"
     "CompositeState(Both[0.2], PhysicalObjects((p : Person)(q : Person))"
     " Components((a : PrimitiveState Even(p))(b : PrimitiveState Some(q))))\n",
     {"Even", "Some", "Both"}}};

double positionOf(int state)
{
    return state == 1 ? 0.0 : 3.0;
}

// Runs a frame for each group of digits of `code`: one digit per actor, 0 for absent.
std::string
runSmallCase(Duel& duel, unsigned code, unsigned states, int actors, int frames, SceneFrame& frame)
{
    for (int i = 0; i < frames; ++i) {
        ++frame.number;
        frame.seconds += 1.0;
        frame.actors.clear();
        for (int host = 0; host < actors; ++host) {
            const auto state = static_cast<int>(code % states);
            code /= states;
            // With two states a present actor moves on its own course.
            const double position = states == 2 ? (host + 2 * i) % 4 : positionOf(state);
            if (state != 0) {
                frame.actors.push_back(
                    {.host = host, .type = "Person", .attributes = {{"P", {.x = position}}}});
            }
        }
        duel.step(frame);
        const std::string found = duel.difference(Duel::Look::Everywhere);
        if (!found.empty()) {
            return "frame " + std::to_string(i) + ": " + found;
        }
    }
    return "";
}

unsigned power(unsigned base, int exponent)
{
    unsigned result = 1;
    for (int i = 0; i < exponent; ++i) {
        result *= base;
    }
    return result;
}

void runAllSmallCases(const ModelSet& family, unsigned states, int actors, int frames)
{
    Duel duel(family);
    duel.configure(
        {.prolongation = 1.0, .timeSearch = 2.0, .bayesianRatio = 1.0, .historySize = 2});
    duel.enterConstant({.host = 7, .type = "Zone", .attributes = {{"P", {.x = 0.0}}}});
    SceneFrame frame;
    for (unsigned code = 0; code < power(states, actors * frames); ++code) {
        // Far enough ahead that nothing is left of the case before.
        frame.seconds += kFarAhead;
        const std::string found = runSmallCase(duel, code, states, actors, frames, frame);
        ASSERT_EQ(found, "") << "case " << code << " of " << family.declarations;
    }
}

class SmallCases : public ::testing::TestWithParam<std::size_t>
{
};

} // namespace

TEST_P(SmallCases, ThreeActorsComingAndGoingInFourFrames)
{
    runAllSmallCases(kFamilies.at(GetParam()), 2, 3, 4);
}

TEST_P(SmallCases, TwoActorsAnywhereInFourFrames)
{
    runAllSmallCases(kFamilies.at(GetParam()), 3, 2, 4);
}

TEST_P(SmallCases, ThreeActorsAnywhereInTwoFrames)
{
    runAllSmallCases(kFamilies.at(GetParam()), 3, 3, 2);
}

INSTANTIATE_TEST_SUITE_P(Reference, SmallCases, ::testing::Range(std::size_t{0}, kFamilies.size()));

} // namespace scenariomatch
