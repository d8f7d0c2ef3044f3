#include "app/FrameClock.h"
#include "bench/BenchOptions.h"
#include "bench/BestTimes.h"
#include "bench/CrowdRecognition.h"
#include "engine/CSEngine.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <malloc.h>
#include <vector>

// Time and memory must not depend on how long recognition has been running.
namespace scenariomatch
{

namespace
{

// Bytes that are allocated at the moment.
double allocatedBytes()
{
    const auto information = mallinfo2();
    return static_cast<double>(information.uordblks + information.hblkhd);
}

// An hour made of one minute that is played forwards and backwards in turn, so that minute 60 sees
// the very frames of minute 2. Frame numbers and clock go on.
class Hour
{
public:
    explicit Hour(const Crowd& crowd)
        : m_minute(crowd.frames())
        , m_frame(crowd.frames().front())
        , m_start(clockToMilliseconds(m_frame.clock))
    {
    }

    int framesPerMinute() const { return static_cast<int>(m_minute.size()); }

    const TrackFrame& frame(int number)
    {
        constexpr int kMillisecondsPerFrame = 1000 / Crowd::kFramesPerSecond;
        const int place = number % framesPerMinute();
        const bool isForwards = number / framesPerMinute() % 2 == 0;
        const int shown = isForwards ? place : framesPerMinute() - 1 - place;
        m_frame = m_minute[static_cast<std::size_t>(shown)];
        m_frame.number = number;
        m_frame.clock = millisecondsToClock(m_start + std::int64_t{number} * kMillisecondsPerFrame);
        return m_frame;
    }

private:
    const std::vector<TrackFrame>& m_minute;
    TrackFrame m_frame;
    std::int64_t m_start;
};

struct HourFigures
{
    BestTimes early;
    BestTimes late;
    double earlyBytes = 0.0;
    double lateBytes = 0.0;
};

void hourPass(const Crowd& crowd, int minutes, HourFigures& figures)
{
    Hour hour(crowd);
    const double before = allocatedBytes();
    CrowdRecognition recognition(crowdFile("engine.txt"), {crowd.zoneA(), crowd.zoneB()});
    const auto play = [&](int minute, BestTimes* times) {
        for (int i = 0; i < hour.framesPerMinute(); ++i) {
            const TrackFrame& frame = hour.frame((minute - 1) * hour.framesPerMinute() + i);
            const double time = microsecondsOf([&] {
                recognition.enter(frame);
                recognition.engine().infer();
            });
            if (times != nullptr) {
                times->add(time);
            }
        }
    };
    for (int minute = 1; minute <= minutes; ++minute) {
        play(minute, minute == 2 ? &figures.early : minute == minutes ? &figures.late : nullptr);
        if (minute == 2) {
            figures.earlyBytes = allocatedBytes() - before;
        }
    }
    figures.lateBytes = allocatedBytes() - before;
    figures.early.endPass();
    figures.late.endPass();
}

void longRun(benchmark::State& state)
{
    const Crowd crowd(20, 60 * Crowd::kFramesPerSecond);
    const int minutes = benchOptions().minutes;
    for ([[maybe_unused]] auto iteration : state) {
        HourFigures figures;
        for (int pass = 0; pass < std::min(benchOptions().passes, 3); ++pass) {
            hourPass(crowd, minutes, figures);
        }
        state.SetIterationTime(figures.late.mean() * 1e-6);
        state.counters["early_us"] = figures.early.mean();
        state.counters["late_us"] = figures.late.mean();
        state.counters["ratio"] = figures.late.mean() / figures.early.mean();
        state.counters["early_bytes"] = figures.earlyBytes;
        state.counters["late_bytes"] = figures.lateBytes;
        state.counters["memory_ratio"] = figures.lateBytes / figures.earlyBytes;
    }
}

BENCHMARK(longRun)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace scenariomatch
