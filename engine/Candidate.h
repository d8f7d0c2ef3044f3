#pragma once

#include "engine/RecognisedScenarios.h"
#include "engine/Seeding.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

// A candidate of a composite model: an instance, or what has seeded it and how, from which the
// instance is made once somebody needs it. Most candidates extend what is recognised already, or
// do not hold, and never need theirs.
//
// Keeps what has seeded it, but not the seeding, which goes when models are prepared anew.
struct Candidate
{
    explicit Candidate(std::shared_ptr<CSScenarioInstance> made)
        : instance(std::move(made))
    {
    }

    Candidate(std::shared_ptr<RecognisedEntry> recognised, const Seeding& by)
        : origin(std::move(recognised))
        , seeding(&by)
    {
    }

    std::shared_ptr<CSScenarioInstance> instance;
    std::shared_ptr<RecognisedEntry> origin;
    const Seeding* seeding = nullptr;
    // Of one without an instance.
    double seedConfidence = 1.0;

    const CSScenario& model() const
    {
        return instance ? *instance->m_scenario : *seeding->parent();
    }

    double& confidence() { return instance ? instance->m_confidence : seedConfidence; }

    // The instance, as one that was seeded at this time.
    const std::shared_ptr<CSScenarioInstance>& made(const std::shared_ptr<CSTimeStamp>& seeded)
    {
        if (!instance) {
            instance = seeding->seed(*origin, seeded);
            instance->m_confidence = seedConfidence;
        }
        return instance;
    }
};

// Candidates by the names of their models.
struct Candidates
{
    std::map<std::string, std::vector<Candidate>> byModel;

    bool empty() const
    {
        return std::all_of(
            byModel.begin(), byModel.end(), [](const auto& entry) { return entry.second.empty(); });
    }

    // Appends their instances, as ones that were seeded at this time, and is empty then.
    void moveTo(
        std::map<std::string, std::vector<std::shared_ptr<CSScenarioInstance>>>& instances,
        const std::shared_ptr<CSTimeStamp>& seeded)
    {
        for (auto& [name, candidates] : byModel) {
            for (Candidate& candidate : candidates) {
                instances[name].push_back(candidate.made(seeded));
            }
            candidates.clear();
        }
    }

    // Names stay as long as there are candidates each time: so do their lists' allocations, and of
    // many levels none goes through the names of all others.
    void clear()
    {
        std::erase_if(byModel, [](const auto& entry) { return entry.second.empty(); });
        for (auto& [name, candidates] : byModel) {
            candidates.clear();
        }
    }
};

} // namespace scenariomatch
