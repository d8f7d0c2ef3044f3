#pragma once

#include "scenario/CSScenario.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

// How the candidates of a primitive state are enumerated and tested, made once per model.
//
// The model's variables have slots, in the order of their names. Candidates are the ordered
// selections of agents, type by type (ascending type names), variable by variable (in order of
// declaration), the first varying slowest.
class CS_EXPORT PrimitivePlan
{
public:
    // Also tells the leaves of the model's constraints their slots.
    explicit PrimitivePlan(std::shared_ptr<CSScenario> scenario);

    // The agents that may take part in this frame, per type group.
    using Candidates = std::vector<std::vector<std::shared_ptr<CSAgent>>>;

    // Whether the plain enumeration of these candidates, whose counts are 32-bit numbers, yields
    // any.
    bool hasCandidates(const Candidates& candidates) const;

    // Calls visit() for each candidate in order, with the slots filled. The candidates must outlive
    // the slots' use.
    template <class Visit>
    void enumerate(const Candidates& candidates, Visit&& visit);

    const std::shared_ptr<CSScenario>& model() const { return m_model; }

    const std::vector<std::string>& variables() const { return m_variables; }

    const std::vector<std::string>& types() const { return m_types; }

    const std::shared_ptr<CSAgent>& agent(std::size_t slot) const { return *m_slots[slot]; }

private:
    struct Position
    {
        std::size_t group;
        std::size_t slot;
    };

    template <class Visit>
    void bind(std::size_t position, const Candidates& candidates, Visit& visit);
    void assignSlots(CConstraint& node) const;

    std::shared_ptr<CSScenario> m_model;
    std::vector<std::string> m_variables;
    std::vector<std::string> m_types;
    // Variables per type, index for index with m_types.
    std::vector<int> m_variablesPerType;
    // What is bound first, second, ...
    std::vector<Position> m_positions;
    std::vector<const std::shared_ptr<CSAgent>*> m_slots;
    // Per group, which candidate is taken by a variable of the group.
    std::vector<std::vector<bool>> m_taken;
};

template <class Visit>
void PrimitivePlan::enumerate(const Candidates& candidates, Visit&& visit)
{
    m_taken.resize(candidates.size());
    for (std::size_t group = 0; group < candidates.size(); ++group) {
        m_taken[group].assign(candidates[group].size(), false);
    }
    bind(0, candidates, visit);
}

template <class Visit>
void PrimitivePlan::bind(std::size_t position, const Candidates& candidates, Visit& visit)
{
    if (position == m_positions.size()) {
        visit();
        return;
    }
    const Position& here = m_positions[position];
    const auto& choices = candidates[here.group];
    std::vector<bool>& taken = m_taken[here.group];
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (taken[i]) {
            continue;
        }
        taken[i] = true;
        m_slots[here.slot] = &choices[i];
        bind(position + 1, candidates, visit);
        taken[i] = false;
    }
}

} // namespace scenariomatch
