#pragma once

#include "app/explain/Gauge.h"
#include "app/explain/NearMiss.h"
#include "app/explain/ObjectFilter.h"
#include "engine/CandidateLimit.h"
#include "engine/FrameView.h"
#include "scenario/CSScenario.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace scenariomatch
{

// Tries all candidates of a primitive state, frame by frame, and keeps for each constraint how
// often it was the first to fail, and who came nearest.
//
// The candidates are those of recognition; the constraints are evaluated up to the first that is
// not pure, which nobody but recognition may ask. A constraint is tested as soon as its variables
// are bound: all candidates that have them in common fail together. A nearest miss is written down
// when it is nearer than all before, and what cannot be nearer is not looked at further.
class PrimitiveSearch
{
public:
    // Of the objects asked for as many as `hidden` may be missing. In a frame as many candidates
    // are tried as recognition tries of a model, 0 for all. The model outlives the search.
    PrimitiveSearch(
        const CSScenario& model,
        const ObjectFilter& filter,
        std::size_t hidden,
        std::uint64_t mostCandidates);
    PrimitiveSearch(const PrimitiveSearch&) = delete;
    PrimitiveSearch(PrimitiveSearch&&) = delete;
    PrimitiveSearch& operator=(const PrimitiveSearch&) = delete;
    PrimitiveSearch& operator=(PrimitiveSearch&&) = delete;
    ~PrimitiveSearch();

    void addFrame(FrameView& view, const CSTimeStamp& now);

    // The constraints that are tested here: those before the first that is not pure.
    std::size_t tested() const { return m_tested; }

    std::uint64_t candidates() const { return m_candidates; }

    // How often a constraint that is tested here was the first to fail, and who came nearest.
    const std::vector<ConstraintOutcome>& outcomes() const { return m_outcomes; }

    // The nearest of all, where all constraints are tested here.
    const std::optional<NearMiss>& nearest() const { return m_nearest; }

    // How near the nearest of all came.
    const std::optional<MissRank>& nearestRank() const { return m_nearestRank; }

    // In how many frames there were too many candidates.
    std::uint64_t cutFrames() const { return m_cutFrames; }

    // The types of which no object was seen.
    std::vector<std::string> absentTypes() const;

private:
    struct Step
    {
        std::size_t slot = 0;
        std::size_t group = 0;
        // Constraints that can be tested once the variable is bound.
        std::vector<std::size_t> tests;
    };

    struct Group
    {
        std::string type;
        std::size_t number = 0;
        bool isSeen = false;
        std::span<const FrameView::AgentIndex> agents;
        // Variables that choose from them.
        std::size_t variables = 0;
    };

    struct State
    {
        bool hasFailed = false;
        MissRank rank;
    };

    class Reader;

    void chooseSteps();
    void addStep(std::size_t position);
    void prepare(FrameView& view);
    void beginFrame(FrameView& view);
    void bind(std::size_t depth, const State& state);
    bool isTaken(std::size_t depth, FrameView::AgentIndex agent) const;
    // False where nothing that follows is worth a look.
    bool test(std::size_t depth, State& state);
    bool fail(std::size_t depth, std::size_t constraint, State& state);
    bool mayPass(std::size_t depth) const;
    std::uint64_t completions(std::size_t depth);
    std::uint64_t countFiltered(std::size_t depth);
    double boundFor(std::size_t constraint, const State& state, double scale) const;
    void noteNearest(std::size_t constraint, double margin);
    void noteWhole();
    NearMiss missNow(std::size_t depth) const;

    const CSScenario& m_model;
    const ObjectFilter& m_filter;
    std::size_t m_hidden;
    std::size_t m_tested = 0;
    // Variables by slot, and where each is declared: slot and group, type by type.
    std::vector<std::string> m_variables;
    std::vector<Group> m_groups;

    struct Position
    {
        std::size_t slot = 0;
        std::size_t group = 0;
    };

    std::vector<Position> m_positions;
    std::vector<Step> m_steps;
    OperatorPromises m_promises;
    std::vector<Gauge> m_gauges;
    std::unique_ptr<Reader> m_reader;

    // Attributes that constraints read, of agents of which group.
    struct Attribute
    {
        std::size_t number = 0;
        std::size_t group = 0;
    };

    std::vector<Attribute> m_attributes;

    // The frame at hand.
    FrameView* m_view = nullptr;
    Moment m_now;
    std::vector<const CSPlainValue*> m_values;
    std::vector<FrameView::AgentIndex> m_agents;
    // By agent, which of the objects asked for it is; empty where none is asked for.
    std::vector<std::int32_t> m_asked;

    CandidateLimit m_limit;
    std::uint64_t m_cutFrames = 0;
    std::uint64_t m_candidates = 0;
    std::vector<ConstraintOutcome> m_outcomes;
    std::vector<double> m_nearestMargins;
    std::vector<bool> m_isUnmeasuredNoted;
    std::optional<NearMiss> m_nearest;
    std::optional<MissRank> m_nearestRank;
};

} // namespace scenariomatch
