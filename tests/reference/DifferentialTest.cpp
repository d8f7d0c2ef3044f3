#include "tests/reference/Duel.h"
#include "tests/reference/RandomModels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>

namespace scenariomatch
{

namespace
{

constexpr double kFarAhead = 100000.0;

struct Family
{
    std::string models;
    std::vector<std::string> used;
};

// Kinds of models that differ in what recognition does with them.
const std::vector<Family> kFamilies{
    // One variable; an event of one component; two components of different models, in order of
    // time.
    {"PrimitiveState(Low, PhysicalObjects((p : Person)) Constraints((p->P left 2)))\n"
     "PrimitiveState(High, PhysicalObjects((p : Person)) Constraints((!(p->P left 2))))\n"
     "PrimitiveEvent(IsLow, PhysicalObjects((p : Person)) Components((c : PrimitiveState "
     "Low(p))))\n"
     "CompositeEvent(Rises, PhysicalObjects((p : Person)) Components((a : PrimitiveState Low(p))"
     "(b : PrimitiveState High(p))) Constraints((a->Interval before b->Interval)))\n",
     {"Low", "High", "IsLow", "Rises"}},
    // Two variables of one type; the same sub-model twice, with arguments crossed.
    {"PrimitiveState(Close[0.4], PhysicalObjects((p : Person)(q : Person))"
     " Constraints((close(p->P, q->P))))\n"
     "CompositeEvent(Again, PhysicalObjects((p : Person)(q : Person))"
     " Components((a : PrimitiveState Close(p, q))(b : PrimitiveState Close(q, p)))"
     " Constraints((a->Interval overlap b->Interval)))\n",
     {"Close", "Again"}},
    // Two variables of two types; a composite of a composite; two parents of one model.
    {"PrimitiveState(At, PhysicalObjects((p : Person)(z : Zone)) Constraints((p->P near z->P)))\n"
     "PrimitiveState(Off, PhysicalObjects((p : Person)(z : Zone)) Constraints((!(p->P near "
     "z->P))))\n"
     "CompositeEvent(Leaves, PhysicalObjects((p : Person)(z : Zone))"
     " Components((a : PrimitiveState At(p, z))(b : PrimitiveState Off(p, z)))"
     " Constraints((a->Interval before b->Interval)))\n"
     "CompositeEvent(Returns, PhysicalObjects((p : Person)(z : Zone))"
     " Components((a : CompositeEvent Leaves(p, z))(b : PrimitiveState At(p, z)))"
     " Constraints((b->Interval after a->Interval)))\n",
     {"At", "Off", "Leaves", "Returns"}},
    // Arguments shared in part: two persons, each in a state of its own; confidences below one.
    {"PrimitiveState(Even, PhysicalObjects((p : Person)) Constraints((maybe(p->P))))\n"
     "PrimitiveState(Some, PhysicalObjects((p : Person)) Constraints((sometimes(p->P))))\n"
     "CompositeState(Both[0.2], PhysicalObjects((p : Person)(q : Person))"
     " Components((a : PrimitiveState Even(p))(b : PrimitiveState Some(q))))\n",
     {"Even", "Some", "Both"}}};

double positionOf(int state)
{
    return state == 1 ? 0.0 : 3.0;
}

// Runs a frame for each group of digits of `code`: one digit per actor, 0 for absent.
std::string
runSmallCase(Duel& duel, unsigned code, unsigned states, int actors, int frames, Duel::Frame& frame)
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
                frame.actors.push_back({host, "Person", position});
            }
        }
        duel.step(frame);
        const std::string found = duel.difference();
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

void runAllSmallCases(const Family& family, unsigned states, int actors, int frames)
{
    Duel duel(family.models, family.used);
    duel.configure(
        {.prolongation = 1.0, .timeSearch = 2.0, .bayesianRatio = 1.0, .historySize = 2});
    duel.enterConstant({7, "Zone", 0.0});
    Duel::Frame frame;
    for (unsigned code = 0; code < power(states, actors * frames); ++code) {
        // Far enough ahead that nothing is left of the case before.
        frame.seconds += kFarAhead;
        const std::string found = runSmallCase(duel, code, states, actors, frames, frame);
        ASSERT_EQ(found, "") << "case " << code << " of " << family.models;
    }
}

// Actors of one random case; they wander on the line, come and go.
class RandomActors
{
public:
    explicit RandomActors(RandomModels& random)
        : m_random(random)
        , m_absent(2 + random.pick(4))
    {
        const std::vector<std::string> types{"Person", "Person", "Person", "Child", "Bag"};
        for (int host = 0; host < 1 + random.pick(4); ++host) {
            m_actors.push_back(
                {host,
                 types[static_cast<std::size_t>(random.pick(static_cast<int>(types.size())))],
                 static_cast<double>(random.pick(5))});
        }
    }

    std::vector<Duel::Object> next()
    {
        std::vector<Duel::Object> present;
        for (Duel::Object& actor : m_actors) {
            actor.position += m_random.pick(3) - 1;
            if (m_random.oneIn(m_absent)) {
                continue;
            }
            present.push_back(actor);
            if (m_random.oneIn(20)) {
                present.back().position = std::numeric_limits<double>::quiet_NaN();
            }
            if (m_random.oneIn(20)) {
                present.back().type = "Child";
            }
        }
        return present;
    }

private:
    RandomModels& m_random;
    int m_absent;
    std::vector<Duel::Object> m_actors;
};

Duel::Settings randomSettings(RandomModels& random)
{
    const std::vector<double> prolongations{-1.0, 0.0, 1.0, 5.0};
    const std::vector<double> searches{0.0, 1.0, 2.0, 3.0, 600.0};
    const std::vector<double> ratios{1.0, 1.0, 1.0, 2.0, 0.8};
    return {
        .prolongation = prolongations[static_cast<std::size_t>(random.pick(4))],
        .timeSearch = searches[static_cast<std::size_t>(random.pick(5))],
        .bayesianRatio = ratios[static_cast<std::size_t>(random.pick(5))],
        .historySize = 1 + random.pick(3)};
}

// Now and then the clock stands still, or goes back where it may.
void passTime(Duel::Frame& frame, RandomModels& random, bool mayGoBack)
{
    constexpr double kSecond = 1000.0;
    const std::vector<double> steps{-1500.0, 0.0, 250.0, 1000.0, 1000.0, 1250.0, 2000.0, 3000.0};
    const int first = mayGoBack ? 0 : 1;
    frame.number += random.oneIn(30) ? 0 : 1;
    const int step = first + random.pick(8 - first);
    frame.milliseconds += steps[static_cast<std::size_t>(step)];
    const double whole = std::floor(frame.milliseconds / kSecond);
    frame.seconds += whole;
    frame.milliseconds -= whole * kSecond;
}

std::string runRandomCase(Duel& duel, RandomModels& random, Duel::Frame& frame)
{
    constexpr int kMaximumWork = 2000;
    const Duel::Settings settings = randomSettings(random);
    duel.configure(settings);
    frame.seconds += kFarAhead;
    RandomActors actors(random);
    const bool mayGoBack = random.oneIn(10) && settings.prolongation >= 0.0;
    for (int i = 0, frames = 2 + random.pick(random.width() > 2 ? 3 : 6); i < frames; ++i) {
        passTime(frame, random, mayGoBack);
        frame.actors = actors.next();
        duel.step(frame);
        const std::string found = duel.difference();
        if (!found.empty()) {
            return "frame " + std::to_string(i) + ": " + found;
        }
        if (duel.work() > kMaximumWork) {
            break;
        }
    }
    return "";
}

std::vector<std::vector<int>> selectionsOf(int values, int k)
{
    std::vector<int> all(static_cast<std::size_t>(values));
    std::iota(all.begin(), all.end(), 10);
    EXPECT_EQ(createPermutationList(all, k), referenceSelections(all, k));
    return referenceSelections(all, k);
}

class SmallCases : public ::testing::TestWithParam<std::size_t>
{
};

class RandomCases : public ::testing::TestWithParam<std::uint32_t>
{
};

} // namespace

TEST(ReferenceMatcher, EnumeratesAsTheEngineDoes)
{
    for (int values = 0; values <= 5; ++values) {
        for (int k = 0; k <= 6; ++k) {
            EXPECT_EQ(permutation(values, k), referencePermutations(values, k));
            const std::size_t expected = k == 0 ? 0 : permutation(values, k);
            EXPECT_EQ(selectionsOf(values, k).size(), expected);
        }
    }
    for (const std::vector<int>& sizes :
         std::vector<std::vector<int>>{{}, {0}, {3}, {2, 3}, {3, 0, 2}, {2, 2, 2, 2}}) {
        EXPECT_EQ(createPermutationList(sizes), referenceTuples(sizes));
    }
}

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

INSTANTIATE_TEST_SUITE_P(
    ReferenceMatcher, SmallCases, ::testing::Range(std::size_t{0}, kFamilies.size()));

TEST_P(RandomCases, EngineAgrees)
{
    constexpr std::uint32_t kModelSets = 200;
    constexpr int kCasesOfASet = 10;
    for (std::uint32_t set = 0; set < kModelSets; ++set) {
        const std::uint32_t seed = GetParam() * kModelSets + set;
        RandomModels random(seed);
        Duel duel(random.text(), random.used());
        for (int zone = random.pick(3); zone > 0; --zone) {
            duel.enterConstant({zone - 1, "Zone", static_cast<double>(random.pick(4))});
        }
        Duel::Frame frame;
        for (int number = 0; number < kCasesOfASet; ++number) {
            const std::string found = runRandomCase(duel, random, frame);
            ASSERT_EQ(found, "") << "seed " << seed << ", case " << number << ", models\n"
                                 << random.text();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    ReferenceMatcher, RandomCases, ::testing::Range(std::uint32_t{0}, std::uint32_t{10}));

} // namespace scenariomatch
