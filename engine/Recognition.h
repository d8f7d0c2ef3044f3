#pragma once

#include "engine/AwakeAgents.h"
#include "engine/Candidate.h"
#include "engine/ComponentLookups.h"
#include "engine/CompositePlan.h"
#include "engine/CSEngine.h"
#include "engine/PrimitivePlan.h"
#include "engine/RecognisedScenarios.h"
#include "engine/Seeding.h"
#include "engine/SlowOperators.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// Where recognised instances of one model go: into the list, and into candidates of the model's
// parents.
struct CSEngine::Outcome
{
    const CSScenario* model = nullptr;
    scenariomatch::RecognisedIndex* index = nullptr;
    // What instances bind, by name.
    std::vector<std::string> variables;
    std::vector<scenariomatch::Seeding> seedings;
};

// The candidates that are seeded on one level. Those of one model mostly come one after the other.
struct CSEngine::Seeds
{
    scenariomatch::Candidates& candidates;
    const CSScenario* model = nullptr;
    std::vector<scenariomatch::Candidate>* ofModel = nullptr;

    void add(scenariomatch::Candidate seed);
};

// What recognition works with: the plans, made when models were read or rewritten, and what has
// been recognised.
struct CSEngine::Recognition
{
    struct Primitive
    {
        scenariomatch::PrimitivePlan plan;
        Outcome* outcome = nullptr;
    };

    void prepare(const CSAllScenarios& scenarios);
    // Leaves nothing of a frame that an observer's exception has cut short.
    void dropLevels();
    // Takes over what the first level has built from what was seeded at this time.
    void
    keepFirstLevel(scenariomatch::Candidates& candidates, std::shared_ptr<CSTimeStamp> seededAt);
    const InstancesByModel& firstLevelInstances();

    // Worked out when it is new.
    Outcome& outcomeOf(const CSScenario& model, const CSAllScenarios& scenarios);

    // A frame begins, in which that many candidates of a model may be tried.
    void startCandidates(std::uint64_t limit);

    // The recognised instances that can fill the component of a candidate.
    const scenariomatch::RecognisedGroup*
    recognisedFor(const CSScenarioInstance& candidate, std::size_t component) const;

    bool plansAreCurrent = false;
    // Whether the plans let an observer see every candidate.
    bool isObserved = false;
    std::unique_ptr<scenariomatch::PlanContext> context =
        std::make_unique<scenariomatch::PlanContext>();
    // By name, then in reading order.
    std::map<std::string, std::vector<Primitive>> primitives;
    std::unordered_map<const CSScenario*, scenariomatch::CompositePlan> composites;
    std::unordered_map<const CSScenario*, Outcome> outcomes;
    scenariomatch::ComponentLookups lookups;
    scenariomatch::AwakeAgents awake;
    scenariomatch::RecognisedScenarios recognised;
    scenariomatch::SlowOperators slow;
    // By model name, how many candidates of composites were tried in the frame.
    std::map<std::string, std::uint64_t> tried;

    // Of the level at hand, and of the candidate or instance at hand; kept to save allocations.
    scenariomatch::Candidates seeded;
    scenariomatch::Candidates completed;
    std::vector<int> participants;

private:
    void shareWork();
    void makeFirstLevel();

    // Of the last frame that seeded something: what has been made, and what has not been asked for.
    InstancesByModel m_firstLevelInstances;
    scenariomatch::Candidates m_firstLevel;
    std::shared_ptr<CSTimeStamp> m_firstLevelSeeded;
};
