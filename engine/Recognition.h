#pragma once

#include "engine/ComponentLookups.h"
#include "engine/CompositePlan.h"
#include "engine/CSEngine.h"
#include "engine/PrimitivePlan.h"
#include "engine/RecognisedScenarios.h"
#include "engine/Seeding.h"

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// What recognition works with: the plans, made when models were read or rewritten, and what has
// been recognised.
struct CSEngine::Recognition
{
    // Where recognised instances of one model go: into the list, and into the candidates of the
    // model's parents.
    struct Outcome
    {
        scenariomatch::RecognisedIndex* index = nullptr;
        std::vector<scenariomatch::Seeding> seedings;
    };

    void prepare(const CSAllScenarios& scenarios);
    // Worked out when it is new.
    Outcome& outcomeOf(const CSScenario& model, const CSAllScenarios& scenarios);

    // The recognised instances that can fill the component of a candidate.
    const scenariomatch::RecognisedGroup*
    recognisedFor(const CSScenarioInstance& candidate, std::size_t component) const;

    bool plansAreCurrent = false;
    // Whether the plans let an observer see every candidate.
    bool isObserved = false;
    std::unique_ptr<scenariomatch::PlanContext> context =
        std::make_unique<scenariomatch::PlanContext>();
    // By name, then in reading order.
    std::map<std::string, std::vector<scenariomatch::PrimitivePlan>> primitives;
    std::unordered_map<const CSScenario*, scenariomatch::CompositePlan> composites;
    std::unordered_map<const CSScenario*, Outcome> outcomes;
    scenariomatch::ComponentLookups lookups;
    scenariomatch::RecognisedScenarios recognised;
    // Of the candidate at hand; kept to save allocations.
    std::vector<int> participants;
    std::vector<std::string> variables;

private:
    void shareWork();
};
