// The engine against the reference while the clock does what it likes: it jumps by seconds, hours
// and days in both directions. A failure prints its seed, the models and the scene.

#include "tests/reference/Duel.h"
#include "tests/reference/Effort.h"
#include "tests/reference/RandomModels.h"
#include "tests/reference/RandomScenes.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace scenariomatch
{

namespace
{

constexpr std::uint32_t kShards = 4;
constexpr std::uint32_t kSeedsOfAShard = 500;
constexpr int kFrames = 12;
// A scene that takes more steps than this in a frame ends there.
constexpr int kMostWork = 4000;

void runSeed(std::uint32_t seed)
{
    static const std::vector<double> kJumps{
        0.0, 0.0, 0.0, -1.0, -2.0, -5.0, 10.0, -60.0, 3600.0, -3600.0, -7200.0, 86400.0, -86400.0};
    Random random(seed);
    const RandomModels models(random);
    Duel duel(models.models());
    duel.limitWork(kMostWork);
    RandomScene scene(random, models.components() > 2 || models.variables() > 2 ? 2 : 4);
    duel.configure(scene.settings());
    std::string told = scene.settings().text();
    for (const SceneObject& zone : scene.zones()) {
        duel.enterConstant(zone);
    }
    SceneFrame frame;
    frame.seconds = 1.0e6;
    for (int i = 0; i < kFrames; ++i) {
        scene.next(frame);
        frame.seconds += random.of(kJumps);
        if (!duel.step(frame)) {
            return;
        }
        told += frame.text();
        const std::string found =
            duel.difference(i + 1 == kFrames ? Duel::Look::Everywhere : Duel::Look::AtResults);
        ASSERT_TRUE(found.empty()) << found << "seed " << seed << ", models\n"
                                   << models.models().declarations << told;
    }
}

class ClockCases : public ::testing::TestWithParam<std::uint32_t>
{
};

} // namespace

TEST_P(ClockCases, EngineAgreesWhateverTheClockDoes)
{
    for (std::uint32_t i = 0; i < kSeedsOfAShard && !HasFatalFailure(); i += kEveryCase) {
        runSeed(GetParam() * kSeedsOfAShard + i);
    }
}

INSTANTIATE_TEST_SUITE_P(Reference, ClockCases, ::testing::Range(std::uint32_t{0}, kShards));

} // namespace scenariomatch
