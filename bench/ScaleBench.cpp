#include "bench/BenchOptions.h"
#include "bench/BestTimes.h"
#include "bench/CrowdRecognition.h"
#include "bench/ModelVariants.h"
#include "engine/CSEngine.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

// What the cost of infer() depends on: models, what is remembered, people, variables.
namespace scenariomatch
{

namespace
{

constexpr std::size_t kFirstFrames = 10;

// One pass of infer() over frames, with models from a file.
void inferPass(
    const std::vector<TrackFrame>& frames,
    const std::string& engineFile,
    const std::vector<CrowdZone>& zones,
    BestTimes& times)
{
    CrowdRecognition recognition(engineFile, zones);
    const PassLimit limit;
    for (const TrackFrame& frame : frames) {
        recognition.enter(frame);
        times.add(microsecondsOf([&] { recognition.engine().infer(); }));
        if (limit.isReached()) {
            break;
        }
    }
    times.endPass();
}

// infer() with two sets of models or frames, pass by pass in turn.
struct Side
{
    const std::vector<TrackFrame>& frames;
    MadeModels models;
};

void compare(benchmark::State& state, const Side& more, const Side& less)
{
    const TemporaryFolder moreFolder;
    const TemporaryFolder lessFolder;
    const std::string moreFile = writeModels(more.models, moreFolder);
    const std::string lessFile = writeModels(less.models, lessFolder);
    for ([[maybe_unused]] auto iteration : state) {
        BestTimes moreTimes;
        BestTimes lessTimes;
        for (int pass = 0; pass < benchOptions().passes; ++pass) {
            inferPass(less.frames, lessFile, less.models.zones, lessTimes);
            inferPass(more.frames, moreFile, more.models.zones, moreTimes);
        }
        const std::size_t frames = std::min(moreTimes.frames(), lessTimes.frames());
        moreTimes.cut(frames);
        lessTimes.cut(frames);
        const double moreMean = moreTimes.mean(kFirstFrames);
        const double lessMean = lessTimes.mean(kFirstFrames);
        state.SetIterationTime(moreMean * 1e-6);
        state.counters["more_us"] = moreMean;
        state.counters["less_us"] = lessMean;
        state.counters["ratio"] = moreMean / lessMean;
        state.counters["frames"] = static_cast<double>(frames);
    }
}

void hundredModels(benchmark::State& state)
{
    const Crowd crowd(50, benchOptions().frames);
    compare(
        state,
        {crowd.frames(), variedQuestions(crowd, 25)},
        {crowd.frames(), fourQuestions(crowd)});
}

// Of frames; as long as instances are remembered.
constexpr int kMinute = 60 * Crowd::kFramesPerSecond;
constexpr int kFirstBag = 100'000;
constexpr int kSeenModels = 4;

// The frames, with bags that are seen in the first one and never again.
std::vector<TrackFrame> withBags(std::vector<TrackFrame> frames, int bags)
{
    for (int i = 0; i < bags && !frames.empty(); ++i) {
        TrackedActor bag;
        bag.id = kFirstBag + i;
        bag.type = "BAG";
        bag.position = TrackPoint{};
        frames.front().actors.push_back(bag);
    }
    return frames;
}

// A thousand instances of other models and participants stay in memory for the minute that is
// measured, or none do.
void liveInstances(benchmark::State& state)
{
    const Crowd crowd(20, std::min(benchOptions().frames, kMinute));
    const auto bags = static_cast<int>(state.range(0));
    const std::vector<TrackFrame> frames = withBags(crowd.frames(), bags);
    MadeModels models = fourQuestions(crowd);
    addSeenModels(models, kSeenModels, kFirstBag, bags / kSeenModels);
    compare(state, {frames, models}, {crowd.frames(), models});
}

// How the cost grows: infer() with made models over frames.
void sweep(benchmark::State& state, const std::vector<TrackFrame>& frames, const MadeModels& models)
{
    const TemporaryFolder folder;
    const std::string engineFile = writeModels(models, folder);
    for ([[maybe_unused]] auto iteration : state) {
        BestTimes times;
        for (int pass = 0; pass < benchOptions().passes; ++pass) {
            inferPass(frames, engineFile, models.zones, times);
        }
        state.SetIterationTime(times.mean(kFirstFrames) * 1e-6);
        state.counters["engine_us"] = times.mean(kFirstFrames);
    }
}

constexpr int kSweepPeople = 20;

void sweepPeople(benchmark::State& state)
{
    const Crowd crowd(static_cast<int>(state.range(0)), benchOptions().frames);
    sweep(state, crowd.frames(), fourQuestions(crowd));
}

void sweepModels(benchmark::State& state)
{
    constexpr int kQuestions = 4;
    const Crowd crowd(kSweepPeople, benchOptions().frames);
    sweep(
        state,
        crowd.frames(),
        variedQuestions(crowd, static_cast<int>(state.range(0)) / kQuestions));
}

void sweepVariables(benchmark::State& state)
{
    const Crowd crowd(kSweepPeople, benchOptions().frames);
    sweep(state, crowd.frames(), closePeople(crowd, static_cast<int>(state.range(0))));
}

void sweepInstances(benchmark::State& state)
{
    const Crowd crowd(kSweepPeople, std::min(benchOptions().frames, kMinute));
    const auto bags = static_cast<int>(state.range(0));
    MadeModels models = fourQuestions(crowd);
    addSeenModels(models, kSeenModels, kFirstBag, bags / kSeenModels);
    sweep(state, withBags(crowd.frames(), bags), models);
}

// Events of events of events.
void deepLevels(benchmark::State& state)
{
    const Crowd crowd(kSweepPeople, benchOptions().frames);
    sweep(state, crowd.frames(), levelChain(crowd, static_cast<int>(state.range(0))));
}

BENCHMARK(deepLevels)
    ->ArgName("levels")
    ->Arg(10)
    ->Arg(100)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(hundredModels)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(liveInstances)
    ->ArgName("instances")
    ->Arg(1000)
    ->Arg(10'000)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(sweepPeople)
    ->ArgName("people")
    ->Arg(5)
    ->Arg(10)
    ->Arg(20)
    ->Arg(50)
    ->Arg(100)
    ->Arg(150)
    ->Arg(200)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(sweepModels)
    ->ArgName("models")
    ->Arg(4)
    ->DenseRange(20, 100, 20)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(sweepVariables)
    ->ArgName("variables")
    ->DenseRange(1, 5)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(sweepInstances)
    ->ArgName("instances")
    ->DenseRange(0, 8000, 2000)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace scenariomatch
