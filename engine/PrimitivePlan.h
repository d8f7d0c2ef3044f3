#pragma once

#include "engine/CandidateLimit.h"
#include "engine/Choices.h"
#include "engine/Expression.h"
#include "engine/FrameView.h"
#include "engine/Neighbourhoods.h"
#include "engine/SharedValues.h"
#include "scenario/CSScenario.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace scenariomatch
{

// What the plans of all models share: the view of the frame, and what is computed once for all.
struct PlanContext
{
    FrameView view;
    OperatorPromises promises;
    SharedValues shared;
    Choices choices;
    Neighbourhoods neighbourhoods;
    CandidateLimit limit;
};

// How the candidates of a primitive state are enumerated and tested, made once per model.
//
// The model's variables have slots, in the order of their names. Candidates are the ordered
// selections of agents, type by type (ascending type names), variable by variable (in order of
// declaration), the first varying slowest. The plan visits, in that order, those of which the
// model's leading constraints hold: the pure ones before the first that is not. Each of these is
// tested as soon as its variables are bound, and variables are bound in the order that lets most be
// tested soon; a bound on a distance chooses the agents that can be within it.
//
// Example: for near_in_A (p, q : Person, z : Zone; z->Name = A, p in z, q in z, distance(p, q) <
// 1.5) first the zones named A, then for each the people in it, then for each those within 1.5 of
// them who are in it too.
class CS_EXPORT PrimitivePlan
{
public:
    // Also tells the leaves of the model's constraints their slots. With isPlain nothing is tested
    // early: every candidate is visited. Context and model outlive the plan.
    PrimitivePlan(std::shared_ptr<CSScenario> scenario, PlanContext& context, bool isPlain);

    // Takes part in what all models share; once, after all plans are made.
    void countShared();
    void prepareTests();

    // What the plan looks for, without names: plans with the same work find the same candidates.
    // Empty where nothing is tested.
    std::string work() const;
    // Takes the candidates over from a plan with the same work, which outlives this one.
    void follow(PrimitivePlan& finder);

    // Calls visit() for each candidate of the frame whose tested constraints hold, with agents and
    // confidences set, but not for those beyond the context's limit. Returns the number of all
    // candidates.
    template <class Visit>
    std::uint64_t enumerate(Visit&& visit);

    // Whether the last enumeration left candidates out.
    bool isCut() const { return m_finder == nullptr ? m_isCut : m_finder->m_isCut; }

    const std::shared_ptr<CSScenario>& model() const { return m_model; }

    const std::vector<std::string>& variables() const { return m_variables; }

    const std::shared_ptr<CSAgent>& agent(std::size_t slot) const
    {
        return m_context.view.agent(m_agents[slot]);
    }

    // The number of leading constraints that are tested here, and their confidences.
    std::size_t tested() const { return m_tested; }

    double confidence(std::size_t constraint) const { return m_confidences[constraint]; }

    // Writes the plan for people.
    void print(std::ostream& out) const;

private:
    // The place of a variable in a candidate.
    struct Position
    {
        std::size_t group = 0;
        std::size_t slot = 0;
    };

    // A distance that is bounded by a constant.
    struct Bound
    {
        const CConstraint* from = nullptr;
        const CConstraint* to = nullptr;
        double reach = 0.0;
    };

    struct Nearby
    {
        std::size_t partner = 0;
        std::size_t question = 0;
        double squaredLimit = 0.0;
        double reach = 0.0;
    };

    struct Test
    {
        std::size_t constraint = 0;
        std::optional<Expression> expression;
    };

    // Tests of one variable, alone or with a constant object that is bound before.
    struct Filter
    {
        Choices::Number question;
        std::optional<std::size_t> object;
        std::vector<Test> tests;
    };

    struct Step
    {
        std::size_t position = 0;
        std::size_t slot = 0;
        std::size_t group = 0;
        // Earlier steps whose variables choose from the same agents.
        std::vector<std::size_t> rivals;
        std::optional<Nearby> nearby;
        std::optional<Filter> filter;
        // Those that are no part of the filter.
        std::vector<Test> tests;
    };

    // Reads attributes of the candidate at hand.
    struct Reader;

    void bindVariables();
    void chooseTested();
    bool bindsOneVariableTwice() const;
    void orderSteps();
    void chooseFilter(Step& step);
    std::optional<std::size_t> objectFor(const Step& step) const;
    std::size_t nextPosition(const std::vector<bool>& isBound) const;
    int usefulness(std::size_t position, const std::vector<bool>& isBound) const;
    void addStep(std::size_t position, std::vector<bool>& isBound);
    bool isReady(const CConstraint& constraint, const std::vector<bool>& isBound) const;
    void findBounds(const CConstraint& constraint, std::vector<Bound>& bounds) const;
    std::optional<Bound>
    boundOf(const CConstraint& measured, const CConstraint& limit, CSOperatorMeaning meaning) const;
    void chooseNearby(Step& step, const std::vector<bool>& isBound);
    std::int32_t sharedNumber(const CConstraint& part) const;
    void noteAttribute(std::size_t slot, std::size_t attribute);
    void printStep(std::ostream& out, const Step& step) const;
    // Whether the tests are done once for all who ask, or their parts are.
    enum class Sharing { OfTests, OfParts };
    void printTests(std::ostream& out, const std::vector<Test>& tests, Sharing sharing) const;

    // As the plain enumeration counts them; 0 where its 32-bit numbers say that there are none.
    std::uint64_t countCandidates();
    // Makes ready for binding; false where a constraint without variables is.
    bool isPossible();
    template <class Visit>
    void bindAll(Visit& visit);
    template <class Visit>
    void bind(std::size_t step, Visit& visit);
    template <class Try>
    void forEachRank(const Step& step, const Choices::Answer* chosen, Try&& tryOut);
    Neighbourhoods::Found neighboursFor(const Step& step);
    bool hold(const std::vector<Test>& tests);
    // Who passes the step's filter; null where that has to be tested one by one.
    const Choices::Answer* chosenFor(const Step& step);
    void answer(const Step& step, Choices::Answer& answer);
    bool passes(const Step& step, const Choices::Answer* chosen, std::uint32_t rank);
    void findAll();
    void sortFound();
    void adopt(const PrimitivePlan& finder, std::size_t found);

    std::shared_ptr<CSScenario> m_model;
    PlanContext& m_context;
    bool m_isPlain;
    std::vector<std::string> m_variables;
    // Types, with numbers of the view and the variables of each.
    std::vector<std::string> m_types;
    std::vector<std::size_t> m_typeNumbers;
    std::vector<int> m_variablesPerType;
    std::vector<Position> m_positions;
    std::size_t m_tested = 0;
    // Tests of constraints without variables.
    std::vector<Test> m_always;
    std::vector<Step> m_steps;
    // The attributes that tests read, of agents of which type.
    std::vector<Neighbourhoods::Side> m_attributes;
    // Whether the steps bind in another order than that of the positions.
    bool m_isReordered = false;

    // The candidate at hand: ranks by position, agents by slot, confidences by constraint.
    std::vector<std::uint32_t> m_ranks;
    std::vector<FrameView::AgentIndex> m_agents;
    std::vector<double> m_confidences;
    // The agents to choose from, by group, and the attributes of all agents, by number.
    std::vector<std::span<const FrameView::AgentIndex>> m_choices;
    std::vector<const CSPlainValue*> m_values;
    // Who finds the candidates for this plan, null for itself; and whether others follow this one.
    PrimitivePlan* m_finder = nullptr;
    bool m_isFollowed = false;
    // The candidates of a frame, where they are found out of order or for several plans: ranks and
    // confidences, one after the other.
    std::uint64_t m_foundFrame = 0;
    std::uint64_t m_candidates = 0;
    bool m_isCut = false;
    std::vector<std::uint32_t> m_foundRanks;
    std::vector<double> m_foundConfidences;
    std::vector<std::size_t> m_foundOrder;
};

template <class Visit>
std::uint64_t PrimitivePlan::enumerate(Visit&& visit)
{
    PrimitivePlan& finder = m_finder == nullptr ? *this : *m_finder;
    if (finder.m_isReordered || finder.m_isFollowed) {
        finder.findAll();
        for (const std::size_t found : finder.m_foundOrder) {
            adopt(finder, found);
            visit();
        }
        return finder.m_candidates;
    }
    m_candidates = countCandidates();
    bindAll(visit);
    return m_candidates;
}

template <class Visit>
void PrimitivePlan::bindAll(Visit& visit)
{
    m_context.limit.start();
    if (m_candidates > 0 && isPossible()) {
        bind(0, visit);
    }
    m_isCut = m_context.limit.isReached();
}

template <class Visit>
void PrimitivePlan::bind(std::size_t step, Visit& visit)
{
    if (step == m_steps.size()) {
        visit();
        return;
    }
    const Step& here = m_steps[step];
    const Choices::Answer* chosen = here.filter ? chosenFor(here) : nullptr;
    forEachRank(here, chosen, [&](std::uint32_t rank) {
        if (!m_context.limit.tryOne()) {
            return false;
        }
        if (passes(here, chosen, rank)) {
            bind(step + 1, visit);
        }
        return true;
    });
}

// Those within reach, where there are fewer of them; else those who pass the filter, or all; as
// long as another one may be tried.
template <class Try>
void PrimitivePlan::forEachRank(const Step& step, const Choices::Answer* chosen, Try&& tryOut)
{
    const auto found = neighboursFor(step);
    if (!found.isAnyone) {
        for (const Neighbourhoods::Neighbour& neighbour : found.neighbours) {
            const bool isNear = neighbour.squaredDistance <= step.nearby->squaredLimit;
            if (isNear && !tryOut(neighbour.rank)) {
                return;
            }
        }
    } else if (chosen != nullptr) {
        for (const std::uint32_t rank : chosen->ranks) {
            if (!tryOut(rank)) {
                return;
            }
        }
    } else {
        for (std::uint32_t rank = 0; rank < m_choices[step.group].size(); ++rank) {
            if (!tryOut(rank)) {
                return;
            }
        }
    }
}

} // namespace scenariomatch
