// The engine against the reference on all small scenes: every actor in every frame is absent or in
// one of some positions, and every combination is run, each from a state that nothing is left in.
// Families of models, which are matched all together:
//
//     lists      primitive states of two variables, every list of up to three out of 17 constraints
//     singles    primitive states of one variable, every list of up to three out of 11 constraints
//     pairs      composites of one and two components, 192
//     triples    composites of three components, 432
//     chains     composites of composites
//     visits     persons and zones, and a state that changes its mind
//
// SmallCases run by default; LongCases take much longer and are skipped unless asked for:
//
//     SCENARIOMATCH_EXHAUSTIVE=1 reference_tests --gtest_filter="*LongCases*"
//
// A failure tells the scene and the first model that fails on it alone.

#include "tests/reference/Effort.h"
#include "tests/reference/SmallFamilies.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <ostream>

namespace scenariomatch
{

namespace
{

using Code = std::uint64_t;

// Far enough ahead that nothing is left of the scene before.
constexpr double kFarAhead = 100000.0;

// How many actors there are, for how many frames, in how many of the family's positions, and the
// seconds that may pass before a frame.
struct Extent
{
    int actors;
    int frames;
    int positions;
    std::vector<double> steps = {1.0};

    Code count() const;
    std::vector<SceneFrame> scene(const SmallFamily& family, Code code) const;
};

Code Extent::count() const
{
    Code result = 1;
    for (int i = 0; i < frames; ++i) {
        for (int actor = 0; actor < actors; ++actor) {
            result *= static_cast<Code>(positions) + 1;
        }
        result *= steps.size();
    }
    return result;
}

// A scene's code has one digit per frame and actor, 0 for absent, and one for the time.
std::vector<SceneFrame> Extent::scene(const SmallFamily& family, Code code) const
{
    const auto take = [&code](std::size_t choices) {
        const std::size_t digit = code % choices;
        code /= choices;
        return digit;
    };
    std::vector<SceneFrame> scene;
    double seconds = 0.0;
    for (int i = 0; i < frames; ++i) {
        seconds += steps[take(steps.size())];
        SceneFrame& frame = scene.emplace_back();
        frame.number = i + 1;
        frame.seconds = seconds;
        for (int host = 0; host < actors; ++host) {
            const std::size_t state = take(static_cast<std::size_t>(positions) + 1);
            if (state != 0) {
                frame.actors.push_back(
                    {.host = host,
                     .type = family.actors[static_cast<std::size_t>(host)],
                     .attributes = family.places[state - 1]});
            }
        }
    }
    return scene;
}

// A duel that runs one scene after the other.
class SmallDuel
{
public:
    explicit SmallDuel(const SmallFamily& family)
        : m_duel(family.all())
    {
        m_duel.configure(family.settings);
        for (const SceneObject& zone : family.zones) {
            m_duel.enterConstant(zone);
        }
    }

    // What differs. Looks at everything in each frame, or in the last alone.
    std::string run(std::vector<SceneFrame> scene, bool looksAlways)
    {
        m_start.seconds += kFarAhead;
        ++m_start.number;
        if (!m_duel.step(m_start)) {
            return "the empty frame takes too long";
        }
        for (SceneFrame& frame : scene) {
            const bool looks = looksAlways || &frame == &scene.back();
            frame.number += m_start.number;
            frame.seconds += m_start.seconds;
            if (!m_duel.step(frame)) {
                return "a frame takes too long";
            }
            const std::string found =
                m_duel.difference(looks ? Duel::Look::Everywhere : Duel::Look::AtResults);
            if (!found.empty()) {
                return frame.text() + found;
            }
        }
        m_start.number += static_cast<int>(scene.size());
        return "";
    }

private:
    Duel m_duel;
    SceneFrame m_start;
};

std::string firstThatFailsAlone(const SmallFamily& family, const std::vector<SceneFrame>& scene)
{
    for (std::size_t i = 0; i < family.models.size(); ++i) {
        const SmallFamily one = family.part(i, family.models.size());
        const std::string found = SmallDuel(one).run(scene, true);
        if (!found.empty()) {
            return "alone fails\n" + one.models.front().declaration + found;
        }
    }
    return "no model fails alone\n";
}

// Every `stride`-th scene of the extent, beginning with the `first`.
void runScenes(const SmallFamily& family, const Extent& extent, Code first, Code stride)
{
    SmallDuel duel(family);
    for (Code code = first; code < extent.count(); code += stride) {
        const std::vector<SceneFrame> scene = extent.scene(family, code);
        const std::string found = duel.run(scene, code % 2 == 0);
        if (found.empty()) {
            continue;
        }
        std::string told;
        for (const SceneFrame& frame : scene) {
            told += frame.text();
        }
        FAIL() << "scene " << code << "\n" << told << found << firstThatFailsAlone(family, scene);
    }
}

// Every scene, or every eleventh where the build is slow. The models are matched a few hundred at a
// time, because the reference walks over all that has been recognised.
void runAll(const SmallFamily& family, const Extent& extent)
{
    constexpr std::size_t kModels = 150;
    const std::size_t parts = (family.models.size() + kModels - 1) / kModels;
    for (std::size_t i = 0; i < parts && !::testing::Test::HasFatalFailure(); ++i) {
        const Code first = kEveryCase == 1 ? 0 : i;
        runScenes(family.part(i, parts), extent, first, kEveryCase == 1 ? 1 : 11);
    }
}

constexpr const char* kTwoPersons = "(p : Person)(q : Person)";
constexpr const char* kSubtype = "(p : Person)(q : Child)";
constexpr const char* kZone = "(q : Zone)(p : Person)";
constexpr const char* kMixed = "(q : Any)(p : Thing)";
constexpr const char* kTwice = "(p : Twice)(q : Twice)";

SmallFamily withPlaces(SmallFamily family, const std::vector<Attributes>& places)
{
    family.places = places;
    return family;
}

SmallFamily withSettings(SmallFamily family, const Duel::Settings& settings)
{
    family.settings = settings;
    return family;
}

constexpr Duel::Settings kShortTime{
    .prolongation = 0.0, .timeSearch = 1.0, .bayesianRatio = 0.8, .historySize = 1};
constexpr Duel::Settings kNoProlongation{
    .prolongation = -1.0, .timeSearch = 600.0, .bayesianRatio = 1.0, .historySize = 3};
constexpr Duel::Settings kLongTime{
    .prolongation = 600.0, .timeSearch = 600.0, .bayesianRatio = 2.0, .historySize = 3};

struct SmallCase
{
    const char* name;
    std::function<SmallFamily()> family;
    Extent extent;
};

// What runs by default.
const std::vector<SmallCase>& smallCases()
{
    const std::vector<double> clock{-1.0, 0.0, 1.0, 3.0};
    static const std::vector<SmallCase> cases{
        {"ThreeConstraints", [] { return constraintLists(kTwoPersons, 3); }, {3, 1, 4}},
        {"TwoConstraintsInTwoFrames", [] { return constraintLists(kTwoPersons, 2); }, {2, 2, 4}},
        {"TwoConstraintsAtOddPlaces",
         [] { return withPlaces(constraintLists(kTwoPersons, 2), oddPlaces()); },
         {3, 1, 4}},
        {"OddPlacesInTwoFrames",
         [] { return withPlaces(constraintLists(kTwoPersons, 1), oddPlaces()); },
         {2, 2, 4}},
        {"TwoConstraintsOnASubtype", [] { return constraintLists(kSubtype, 2); }, {3, 1, 4}},
        {"TwoConstraintsOnZones", [] { return constraintLists(kZone, 2); }, {3, 1, 4}},
        {"TwoConstraintsOnMixedTypes", [] { return constraintLists(kMixed, 2); }, {3, 1, 4}},
        {"TwoConstraintsOnATypeTwice", [] { return constraintLists(kTwice, 2); }, {3, 1, 4}},
        {"OneConstraintInTwoFrames", [] { return constraintLists(kMixed, 1); }, {3, 2, 2}},
        {"OnePersonForFiveFrames", [] { return singleLists(2); }, {1, 5, 4}},
        {"Pairs", pairs, {2, 3, 2}},
        {"PairsOfThreePersons", pairs, {3, 2, 2}},
        {"PairsInShortTime", [] { return withSettings(pairs(), kShortTime); }, {2, 3, 2}},
        {"PairsWithoutProlongation",
         [] { return withSettings(pairs(), kNoProlongation); },
         {2, 3, 2}},
        {"PairsInLongTime", [] { return withSettings(pairs(), kLongTime); }, {1, 5, 3}},
        {"Triples", triples, {2, 2, 2}},
        {"TriplesOfThreePersons", triples, {3, 2, 1}},
        {"TriplesOfOnePerson", triples, {1, 5, 2}},
        {"TriplesInLongTime", [] { return withSettings(triples(), kLongTime); }, {2, 3, 1}},
        {"Chains", chains, {2, 4, 2}},
        {"ChainsOfThreePersons", chains, {3, 5, 1}},
        {"ChainsWithoutProlongation",
         [] { return withSettings(chains(), kNoProlongation); },
         {2, 3, 3}},
        {"Visits", visits, {2, 3, 4}},
        {"VisitsOfThreePersons", visits, {3, 4, 1}},
        {"VisitsOnAnyClock", visits, {1, 4, 1, clock}},
        {"VisitsInShortTimeOnAnyClock",
         [] { return withSettings(visits(), kShortTime); },
         {1, 4, 1, clock}},
        {"ChainsOnAnyClock", chains, {2, 3, 1, clock}}};
    return cases;
}

// What runs on demand.
const std::vector<SmallCase>& longCases()
{
    static const std::vector<SmallCase> cases{
        {"ThreeConstraintsAtOddPlaces",
         [] { return withPlaces(constraintLists(kTwoPersons, 3), oddPlaces()); },
         {3, 1, 4}},
        {"ThreeConstraintsOnASubtype", [] { return constraintLists(kSubtype, 3); }, {3, 1, 4}},
        {"ThreeConstraintsOnZones", [] { return constraintLists(kZone, 3); }, {3, 1, 4}},
        {"ThreeConstraintsOnMixedTypes", [] { return constraintLists(kMixed, 3); }, {3, 1, 4}},
        {"ThreeConstraintsOnATypeTwice", [] { return constraintLists(kTwice, 3); }, {3, 1, 4}},
        {"ThreeConstraintsInTwoFrames", [] { return constraintLists(kTwoPersons, 3); }, {2, 2, 4}},
        {"TwoConstraintsOfThreePersons", [] { return constraintLists(kTwoPersons, 2); }, {3, 2, 4}},
        {"TwoConstraintsInThreeFrames", [] { return constraintLists(kSubtype, 2); }, {2, 3, 4}},
        {"OneConstraintInThreeFrames", [] { return constraintLists(kTwoPersons, 1); }, {3, 3, 4}},
        {"OneConstraintInFourFrames", [] { return constraintLists(kSubtype, 1); }, {2, 4, 4}},
        {"OneConstraintInFiveFrames", [] { return constraintLists(kMixed, 1); }, {3, 5, 1}},
        {"ThreeOfOnePersonForFiveFrames", [] { return singleLists(3); }, {1, 5, 4}},
        {"OneOfThreePersonsForTwoFrames", [] { return singleLists(1); }, {3, 2, 4}},
        {"PairsInFourFrames", pairs, {2, 4, 2}},
        {"PairsInFiveFrames", pairs, {2, 5, 1}},
        {"PairsOfThreePersonsInThreeFrames", pairs, {3, 3, 2}},
        {"PairsAnywhere", pairs, {2, 3, 4}},
        {"TriplesInThreeFrames", triples, {2, 3, 2}},
        {"TriplesInFiveFrames", triples, {2, 5, 1}},
        {"TriplesOfThreePersonsInThreeFrames", triples, {3, 3, 1}},
        {"ChainsInFiveFrames", chains, {2, 5, 2}},
        {"ChainsOfThreePersonsInFourFrames", chains, {3, 4, 2}},
        {"ChainsAnywhere", chains, {2, 4, 4}},
        {"VisitsInFourFrames", visits, {2, 4, 4}},
        {"VisitsOfThreePersonsInThreeFrames", visits, {3, 3, 3}},
        {"VisitsOfThreePersonsInFiveFrames", visits, {3, 5, 1}}};
    return cases;
}

std::string nameOf(const ::testing::TestParamInfo<SmallCase>& info)
{
    return info.param.name;
}

std::ostream& operator<<(std::ostream& out, const SmallCase& small)
{
    return out << small.name;
}

class SmallCases : public ::testing::TestWithParam<SmallCase>
{
};

class LongCases : public ::testing::TestWithParam<SmallCase>
{
};

} // namespace

TEST_P(SmallCases, EngineAgrees)
{
    runAll(GetParam().family(), GetParam().extent);
}

TEST_P(LongCases, EngineAgrees)
{
    if (!isExhaustive()) {
        GTEST_SKIP() << "runs with SCENARIOMATCH_EXHAUSTIVE=1";
    }
    runAll(GetParam().family(), GetParam().extent);
}

INSTANTIATE_TEST_SUITE_P(Reference, SmallCases, ::testing::ValuesIn(smallCases()), nameOf);
INSTANTIATE_TEST_SUITE_P(Reference, LongCases, ::testing::ValuesIn(longCases()), nameOf);

} // namespace scenariomatch
