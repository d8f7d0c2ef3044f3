#include "bench/BenchOptions.h"
#include "bench/BestTimes.h"
#include "bench/CrowdRecognition.h"
#include "engine/CSEngine.h"

#include <benchmark/benchmark.h>

#include <string>

// infer() by itself, against the floors in the same process: in every frame the engine first, then
// the floor.
namespace scenariomatch
{

namespace
{

// What is new to an engine that has just been started does not count.
constexpr std::size_t kFirstFrames = 10;

struct Comparison
{
    BestTimes engine;
    BestTimes floor;
};

// One pass over the crowd.
template <typename Floor>
void comparePass(
    const Crowd& crowd, CrowdRecognition& recognition, Floor& floor, Comparison& comparison)
{
    FloorInput input;
    const PassLimit limit;
    for (const TrackFrame& frame : crowd.frames()) {
        recognition.enter(frame);
        comparison.engine.add(microsecondsOf([&] { recognition.engine().infer(); }));
        input.enter(frame);
        comparison.floor.add(microsecondsOf(
            [&] { benchmark::DoNotOptimize(floor.addFrame(input.people(), input.now()).data()); }));
        if (limit.isReached()) {
            break;
        }
    }
    comparison.engine.endPass();
    comparison.floor.endPass();
}

template <typename Floor>
void compare(benchmark::State& state, const std::string& engineFile, const Floor& newFloor)
{
    const Crowd crowd(static_cast<int>(state.range(0)), benchOptions().frames);
    for ([[maybe_unused]] auto iteration : state) {
        Comparison comparison;
        for (int pass = 0; pass < benchOptions().passes; ++pass) {
            CrowdRecognition recognition(engineFile, {crowd.zoneA(), crowd.zoneB()});
            auto floor = newFloor(crowd);
            comparePass(crowd, recognition, floor, comparison);
        }
        const BestTimes& engine = comparison.engine;
        const double engineMean = engine.mean(kFirstFrames);
        const double floorMean = comparison.floor.mean(kFirstFrames);
        state.SetIterationTime(engineMean * 1e-6);
        state.counters["engine_us"] = engineMean;
        state.counters["floor_us"] = floorMean;
        state.counters["ratio"] = engineMean / floorMean;
        state.counters["slowest_us"] = engine.greatest(kFirstFrames);
        state.counters["spread"] = engine.greatest(kFirstFrames) / engine.median(kFirstFrames);
        state.counters["frames"] = static_cast<double>(engine.frames());
    }
}

void infer(benchmark::State& state)
{
    compare(state, crowdFile("engine.txt"), [](const Crowd& crowd) {
        return PermFloor(floorZone(crowd.zoneA()), floorZone(crowd.zoneB()));
    });
}

void threeNear(benchmark::State& state)
{
    compare(
        state, crowdFile("three_engine.txt"), [](const Crowd& /*crowd*/) { return TriFloor(); });
}

BENCHMARK(infer)
    ->ArgName("people")
    ->Arg(5)
    ->Arg(20)
    ->Arg(50)
    ->Arg(200)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(threeNear)
    ->ArgName("people")
    ->Arg(20)
    ->Arg(50)
    ->Arg(200)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace scenariomatch
