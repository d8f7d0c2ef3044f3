#include "bench/BenchOptions.h"
#include "bench/BestTimes.h"
#include "bench/CrowdRecognition.h"
#include "engine/CSEngine.h"
#include "engine/RecognitionObserver.h"

#include <benchmark/benchmark.h>

// What infer() costs when nobody watches any more: an engine that was watched for its first frame,
// against one that never was, pass by pass in turn.
namespace scenariomatch
{

namespace
{

constexpr std::size_t kFirstFrames = 10;

void addPass(const Crowd& crowd, bool wasWatched, BestTimes& times)
{
    CrowdRecognition recognition(crowdFile("engine.txt"), {crowd.zoneA(), crowd.zoneB()});
    RecognitionObserver observer;
    recognition.engine().setObserver(wasWatched ? &observer : nullptr);
    const PassLimit limit;
    for (const TrackFrame& frame : crowd.frames()) {
        recognition.enter(frame);
        times.add(microsecondsOf([&] { recognition.engine().infer(); }));
        recognition.engine().setObserver(nullptr);
        if (limit.isReached()) {
            break;
        }
    }
    times.endPass();
}

void unwatched(benchmark::State& state)
{
    const Crowd crowd(static_cast<int>(state.range(0)), benchOptions().frames);
    for ([[maybe_unused]] auto iteration : state) {
        BestTimes never;
        BestTimes before;
        for (int pass = 0; pass < 2 * benchOptions().passes; ++pass) {
            addPass(crowd, false, never);
            addPass(crowd, true, before);
        }
        state.SetIterationTime(before.mean(kFirstFrames) * 1e-6);
        state.counters["ratio"] = before.mean(kFirstFrames) / never.mean(kFirstFrames);
    }
}

BENCHMARK(unwatched)->ArgName("people")->Arg(20)->UseManualTime()->Iterations(1)->Unit(
    benchmark::kMicrosecond);

} // namespace

} // namespace scenariomatch
