#include "bench/BenchOptions.h"
#include "bench/ChildProcess.h"
#include "bench/Crowd.h"
#include "bench/CrowdRecognition.h"
#include "bench/TemporaryFolder.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

// The program as a whole, on one core: `scenariomatch run` from its start to its end. This program
// keeps no tracks in its own memory, see ChildProcess.h.
namespace scenariomatch
{

namespace
{

std::string programPath()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "scenariomatch";
}

// The files that the program reads, and where it writes the events.
class RunFiles
{
public:
    RunFiles(int people, int frames)
    {
        std::ofstream tracks(m_folder.path("tracks.jsonl"), std::ios::binary);
        writeCrowd(people, frames, tracks);
        const Crowd crowd(people, 0);
        m_folder.write("context.xml", crowdContext({crowd.zoneA(), crowd.zoneB()}));
    }

    // Recognises events.
    ChildUsage run() const
    {
        return runCommand("run", {"--events", m_folder.path("events.jsonl")});
    }

    // Says why two people were never near each other; the explanation goes nowhere.
    ChildUsage explain() const { return runCommand("explain", {"--model", "near_pair"}); }

private:
    // Throws when the program does not end well.
    ChildUsage runCommand(const std::string& command, const std::vector<std::string>& more) const
    {
        std::vector<std::string> words{
            programPath(),
            command,
            "--params",
            crowdFile("crowd.yaml"),
            "--set",
            "RHMContext=" + m_folder.path("context.xml"),
            "--tracks",
            m_folder.path("tracks.jsonl")};
        words.insert(words.end(), more.begin(), more.end());
        const ChildUsage usage = runChild(words);
        if (usage.status != 0) {
            throw std::runtime_error(fmt::format("the program ended with {}", usage.status));
        }
        return usage;
    }

    TemporaryFolder m_folder;
};

// Until the first frame is done, and the program has ended.
void start(benchmark::State& state)
{
    const RunFiles files(static_cast<int>(state.range(0)), 1);
    for ([[maybe_unused]] auto iteration : state) {
        std::vector<double> times(4 * static_cast<std::size_t>(benchOptions().passes));
        for (double& time : times) {
            time = files.run().wallSeconds * 1e3;
        }
        std::sort(times.begin(), times.end());
        state.SetIterationTime(times[times.size() / 2] * 1e-3);
        state.counters["median_ms"] = times[times.size() / 2];
        state.counters["best_ms"] = times.front();
    }
}

void wholeRun(benchmark::State& state)
{
    const int frames = 20 * benchOptions().frames;
    const RunFiles files(static_cast<int>(state.range(0)), frames);
    for ([[maybe_unused]] auto iteration : state) {
        ChildUsage best = files.run();
        for (int pass = 1; pass < benchOptions().passes; ++pass) {
            const ChildUsage usage = files.run();
            best.wallSeconds = std::min(best.wallSeconds, usage.wallSeconds);
            best.processorSeconds = std::min(best.processorSeconds, usage.processorSeconds);
        }
        state.SetIterationTime(best.wallSeconds);
        state.counters["frames_per_second"] = frames / best.wallSeconds;
        state.counters["frames_per_processor_second"] = frames / best.processorSeconds;
    }
}

// A quarter of a minute longer than what is remembered.
void peakMemory(benchmark::State& state)
{
    const RunFiles files(static_cast<int>(state.range(0)), benchOptions().frames * 5 / 4);
    for ([[maybe_unused]] auto iteration : state) {
        const ChildUsage usage = files.run();
        state.SetIterationTime(usage.wallSeconds);
        state.counters["peak_mebibytes"] = usage.peakMebibytes;
    }
}

// As many actors in a frame as nobody tracks; a few frames.
void manyActors(benchmark::State& state)
{
    const int frames = std::max(2, benchOptions().frames / 30);
    const RunFiles files(static_cast<int>(state.range(0)), frames);
    for ([[maybe_unused]] auto iteration : state) {
        const ChildUsage usage = files.run();
        state.SetIterationTime(usage.wallSeconds);
        state.counters["ms_per_frame"] = usage.wallSeconds * 1e3 / frames;
        state.counters["peak_mebibytes"] = usage.peakMebibytes;
    }
}

// An hour: all pairs of people in all frames.
void explainHour(benchmark::State& state)
{
    const RunFiles files(static_cast<int>(state.range(0)), 60 * benchOptions().frames);
    for ([[maybe_unused]] auto iteration : state) {
        double best = files.explain().wallSeconds;
        for (int pass = 1; pass < benchOptions().passes; ++pass) {
            best = std::min(best, files.explain().wallSeconds);
        }
        state.SetIterationTime(best);
        state.counters["seconds"] = best;
    }
}

BENCHMARK(explainHour)
    ->ArgName("people")
    ->Arg(20)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(manyActors)
    ->ArgName("people")
    ->Arg(10'000)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(start)->ArgName("people")->Arg(20)->UseManualTime()->Iterations(1)->Unit(
    benchmark::kMillisecond);
BENCHMARK(wholeRun)->ArgName("people")->Arg(20)->UseManualTime()->Iterations(1)->Unit(
    benchmark::kMillisecond);
BENCHMARK(peakMemory)
    ->ArgName("people")
    ->Arg(200)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace scenariomatch
