// The engine against the reference on random models and scenes: 14,000 seeds, each a set of models
// with eight scenes. A failure prints its seed, the models and the scene; alone it runs again with
//
//     SCENARIOMATCH_SEED=1234 reference_tests --gtest_filter='*RandomCases*/0'

#include "tests/reference/Duel.h"
#include "tests/reference/Effort.h"
#include "tests/reference/RandomModels.h"
#include "tests/reference/RandomScenes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>

namespace scenariomatch
{

namespace
{

constexpr std::uint32_t kShards = 28;
constexpr std::uint32_t kSeedsOfAShard = 500;
constexpr int kScenesOfASeed = 8;
// Far enough ahead that nothing is left of the scene before.
constexpr double kFarAhead = 100000.0;

// A scene that takes more steps than this in a frame ends its seed.
constexpr int kMostWork = 4000;
constexpr const char* kTooMuch = "too much";

int mostActors(Random& random, const RandomModels& models)
{
    if (models.variables() > 2 || models.components() > 2) {
        return 3;
    }
    return random.oneIn(20) ? 20 : 5;
}

int framesOf(Random& random, const RandomModels& models, int actors)
{
    return actors > 5 ? 2 : 2 + random.pick(models.components() > 2 ? 3 : 7);
}

// What differs, and on which scene.
std::string runScene(Duel& duel, Random& random, const RandomModels& models, SceneFrame& frame)
{
    const int actors = mostActors(random, models);
    RandomScene scene(random, actors);
    duel.configure(scene.settings());
    duel.observe(random.oneIn(5));
    std::string told = scene.settings().text();
    for (const SceneObject& zone : scene.zones()) {
        duel.enterConstant(zone);
        told += "constant " + zone.text() + "\n";
    }
    frame.seconds += kFarAhead;
    // Some scenes are looked at in every frame, some now and then.
    const int looks = random.pick(4);
    for (int rest = framesOf(random, models, actors); rest > 0; --rest) {
        scene.next(frame);
        if (!duel.step(frame)) {
            return kTooMuch;
        }
        const bool isLookedAt = rest == 1 || random.pick(4) < looks;
        const std::string found =
            duel.difference(isLookedAt ? Duel::Look::Everywhere : Duel::Look::AtResults);
        told += frame.text();
        if (!found.empty()) {
            return told + found;
        }
    }
    return "";
}

void runSeed(std::uint32_t seed)
{
    Random random(seed);
    const RandomModels models(random);
    Duel duel(models.models());
    duel.limitWork(kMostWork);
    SceneFrame frame;
    for (int number = 0; number < kScenesOfASeed; ++number) {
        const std::string found = runScene(duel, random, models, frame);
        if (found == kTooMuch) {
            return;
        }
        ASSERT_TRUE(found.empty())
            << found << "seed " << seed << ", scene " << number << ", models\n"
            << models.models().declarations;
    }
}

class RandomCases : public ::testing::TestWithParam<std::uint32_t>
{
};

} // namespace

TEST_P(RandomCases, EngineAgrees)
{
    if (const char* seed = std::getenv("SCENARIOMATCH_SEED")) {
        runSeed(static_cast<std::uint32_t>(std::strtoul(seed, nullptr, 10)));
        return;
    }
    for (std::uint32_t i = 0; i < kSeedsOfAShard && !HasFatalFailure(); i += kEveryCase) {
        runSeed(GetParam() * kSeedsOfAShard + i);
    }
}

INSTANTIATE_TEST_SUITE_P(Reference, RandomCases, ::testing::Range(std::uint32_t{0}, kShards));

} // namespace scenariomatch
