#include "bench/BenchOptions.h"
#include "bench/BestTimes.h"
#include "bench/CrowdRecognition.h"
#include "engine/CSEngine.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <utility>
#include <vector>

// Giving all attributes of all actors to the engine as the process does it,
// against what a history costs that is kept in a map: one insertion and one
// removal for each attribute. Told beside it: the same with a new value each
// time, and with a map of its own for each attribute, as histories are.
namespace scenariomatch
{

namespace
{

// Enough for every history to be full.
constexpr std::size_t kFirstFrames = 20;

// A map that always holds as many values as a history of the process by
// default.
class HistoryMap
{
public:
    HistoryMap()
    {
        constexpr int kHistorySize = 10;
        for (int i = 0; i < kHistorySize; ++i) {
            insert(std::make_shared<CSInt>(i));
        }
    }

    void insert(std::shared_ptr<CSBasicType> value)
    {
        m_values.emplace(m_next++, std::move(value));
    }

    void removeOldest() { m_values.erase(m_values.begin()); }

private:
    std::map<int, std::shared_ptr<CSBasicType>> m_values;
    int m_next = 0;
};

struct UpdateTimes
{
    // With the attributes that the four questions name, and with all of them named.
    BestTimes update;
    BestTimes allNamed;
    BestTimes map;
    BestTimes newValues;
    BestTimes ownMaps;
};

void addMapTimes(std::vector<HistoryMap>& maps, UpdateTimes& times)
{
    const std::shared_ptr<CSBasicType> value = std::make_shared<CSInt>(0);
    times.map.add(microsecondsOf([&] {
        for (std::size_t i = 0; i < maps.size(); ++i) {
            maps.front().insert(value);
            maps.front().removeOldest();
        }
    }));
    times.newValues.add(microsecondsOf([&] {
        for (std::size_t i = 0; i < maps.size(); ++i) {
            maps.front().insert(std::make_shared<CSInt>(0));
            maps.front().removeOldest();
        }
    }));
    times.ownMaps.add(microsecondsOf([&] {
        for (HistoryMap& map : maps) {
            map.insert(std::make_shared<CSInt>(0));
            map.removeOldest();
        }
    }));
}

std::size_t attributesOf(const Crowd& crowd)
{
    return static_cast<std::size_t>(crowd.people()) * CrowdRecognition::kAttributesPerPerson;
}

void allNamedPass(const Crowd& crowd, UpdateTimes& times)
{
    CrowdRecognition recognition(crowdFile("engine.txt"), {crowd.zoneA(), crowd.zoneB()});
    recognition.nameAllAttributes();
    const PassLimit limit;
    for (const TrackFrame& frame : crowd.frames()) {
        recognition.enterTime(frame);
        recognition.enterScene(frame);
        recognition.setActors(frame);
        times.allNamed.add(microsecondsOf([&] { recognition.enterActors(frame.number); }));
        recognition.engine().infer();
        if (limit.isReached()) {
            break;
        }
    }
    times.allNamed.endPass();
}

void updatePass(const Crowd& crowd, UpdateTimes& times)
{
    CrowdRecognition recognition(crowdFile("engine.txt"), {crowd.zoneA(), crowd.zoneB()});
    std::vector<HistoryMap> maps(attributesOf(crowd));
    const PassLimit limit;
    for (const TrackFrame& frame : crowd.frames()) {
        recognition.enterTime(frame);
        recognition.enterScene(frame);
        recognition.setActors(frame);
        times.update.add(microsecondsOf([&] { recognition.enterActors(frame.number); }));
        addMapTimes(maps, times);
        recognition.engine().infer();
        if (limit.isReached()) {
            break;
        }
    }
    for (BestTimes* const one : {&times.update, &times.map, &times.newValues, &times.ownMaps}) {
        one->endPass();
    }
}

void agentsUpdate(benchmark::State& state)
{
    const Crowd crowd(static_cast<int>(state.range(0)), benchOptions().frames);
    for ([[maybe_unused]] auto iteration : state) {
        UpdateTimes times;
        for (int pass = 0; pass < benchOptions().passes; ++pass) {
            updatePass(crowd, times);
            allNamedPass(crowd, times);
        }
        const auto nanoseconds = [&crowd](const BestTimes& all) {
            return all.mean(kFirstFrames) * 1e3 / static_cast<double>(attributesOf(crowd));
        };
        const double update = nanoseconds(times.update);
        const double map = nanoseconds(times.map);
        state.SetIterationTime(times.update.mean(kFirstFrames) * 1e-6);
        state.counters["attribute_ns"] = update;
        state.counters["map_ns"] = map;
        state.counters["ratio"] = update / map;
        state.counters["all_named_ratio"] = nanoseconds(times.allNamed) / map;
        state.counters["map_with_new_value_ns"] = nanoseconds(times.newValues);
        state.counters["own_map_with_new_value_ns"] = nanoseconds(times.ownMaps);
    }
}

BENCHMARK(agentsUpdate)
    ->ArgName("people")
    ->Arg(20)
    ->Arg(50)
    ->Arg(200)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace scenariomatch
