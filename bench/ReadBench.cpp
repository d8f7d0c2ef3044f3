#include "app/TrackReader.h"
#include "bench/BenchOptions.h"
#include "bench/BestTimes.h"
#include "bench/Crowd.h"
#include "bench/TemporaryFolder.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

// Tracks as text to actors.
namespace scenariomatch
{

namespace
{

// The actors that were read.
std::size_t readAll(const std::string& path)
{
    TrackProblems problems(path, std::cerr, {});
    TrackFailure failure;
    const auto reader = openTracks(path, {}, problems, failure);
    if (!reader) {
        throw std::runtime_error(failure.reason);
    }
    std::size_t actors = 0;
    TrackFrame frame;
    while (reader->next(frame)) {
        actors += frame.actors.size();
    }
    return actors;
}

void readJsonLines(benchmark::State& state)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("crowd.jsonl");
    std::ofstream file(path, std::ios::binary);
    writeCrowd(static_cast<int>(state.range(0)), benchOptions().frames, file);
    file.close();
    const auto bytes = static_cast<double>(std::filesystem::file_size(path));
    for ([[maybe_unused]] auto iteration : state) {
        BestTimes times;
        for (int pass = 0; pass < 2 * benchOptions().passes; ++pass) {
            times.add(microsecondsOf([&] { benchmark::DoNotOptimize(readAll(path)); }));
            times.endPass();
        }
        state.SetIterationTime(times.mean() * 1e-6);
        state.counters["bytes"] = bytes;
        state.counters["gigabytes_per_second"] = bytes / times.mean() * 1e-3;
    }
}

BENCHMARK(readJsonLines)
    ->ArgName("people")
    ->Arg(20)
    ->Arg(200)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace scenariomatch
