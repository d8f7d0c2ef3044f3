#include "engine/PrimitivePlan.h"

#include "engine/CSEngine.h"
#include "engine/Truth.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace scenariomatch
{

namespace
{

std::vector<std::string> distinctVariables(const CSScenario& model)
{
    std::vector<std::string> variables;
    for (const auto& [position, variable] : model.m_physicalObjects) {
        variables.push_back(variable);
    }
    std::sort(variables.begin(), variables.end());
    variables.erase(std::unique(variables.begin(), variables.end()), variables.end());
    return variables;
}

bool isConstantType(const std::string& type)
{
    const auto found = CSAgent::m_constantObjects.find(type);
    return found != CSAgent::m_constantObjects.end() && found->second;
}

} // namespace

struct PrimitivePlan::Reader
{
    PrimitivePlan& plan;

    CSPlainValue attribute(const Expression::Node& node) const
    {
        const FrameView::AgentIndex agent = plan.m_agents[static_cast<std::size_t>(node.slot)];
        return plan.m_values[static_cast<std::size_t>(node.attribute)][agent];
    }

    const CSBasicType* objects(const CConstraint& part) const
    {
        static const std::shared_ptr<CSAgent> none;
        const auto agentOf = [this](const CConstraint& leaf) -> const std::shared_ptr<CSAgent>& {
            return leaf.m_slot < 0 ? none : plan.agent(static_cast<std::size_t>(leaf.m_slot));
        };
        return plan.m_context.shared.keep(evaluateConstraint(part, agentOf));
    }

    template <class Compute>
    CSPlainValue shared(const Expression::Node& node, Compute&& compute) const
    {
        return plan.m_context.shared.value(
            node, plan.m_context.view, plan.m_agents.data(), std::forward<Compute>(compute));
    }
};

PrimitivePlan::PrimitivePlan(
    std::shared_ptr<CSScenario> scenario, PlanContext& context, bool isPlain)
    : m_model(std::move(scenario))
    , m_context(context)
    , m_isPlain(isPlain)
    , m_variables(distinctVariables(*m_model))
{
    bindVariables();
    for (const auto& constraint : m_model->m_constraints) {
        assignSlots(*constraint, m_variables);
    }
    chooseTested();
    orderSteps();
    m_ranks.resize(m_positions.size());
    m_agents.resize(m_variables.size());
    m_confidences.resize(m_tested, 1.0);
}

void PrimitivePlan::bindVariables()
{
    for (const auto& [type, variables] : m_model->m_variablesByType) {
        const std::size_t group = m_types.size();
        m_types.push_back(type);
        m_typeNumbers.push_back(m_context.view.typeNumber(type));
        m_variablesPerType.push_back(static_cast<int>(variables.size()));
        for (const std::string& variable : variables) {
            const auto slot = std::lower_bound(m_variables.begin(), m_variables.end(), variable);
            m_positions.push_back({group, static_cast<std::size_t>(slot - m_variables.begin())});
        }
    }
}

// A variable that is declared twice is bound twice, and the last binding counts: nothing can be
// said before.
bool PrimitivePlan::bindsOneVariableTwice() const
{
    return m_positions.size() != m_variables.size();
}

// Operators that promise nothing are called for every candidate of which all constraints before
// hold, in order.
void PrimitivePlan::chooseTested()
{
    if (m_isPlain || bindsOneVariableTwice()) {
        return;
    }
    const auto& constraints = m_model->m_constraints;
    const auto firstImpure =
        std::find_if(constraints.begin(), constraints.end(), [this](const auto& constraint) {
            return !m_context.promises.isPure(*constraint);
        });
    m_tested = static_cast<std::size_t>(firstImpure - constraints.begin());
}

void PrimitivePlan::orderSteps()
{
    std::vector<bool> isBound(m_variables.size(), false);
    for (std::size_t constraint = 0; constraint < m_tested; ++constraint) {
        if (slotsOf(*m_model->m_constraints[constraint]).empty()) {
            m_always.push_back({constraint, {}});
        }
    }
    while (m_steps.size() < m_positions.size()) {
        const std::size_t position = m_tested > 0 ? nextPosition(isBound) : m_steps.size();
        m_isReordered = m_isReordered || position != m_steps.size();
        addStep(position, isBound);
    }
}

// The most useful variable, the first of several.
std::size_t PrimitivePlan::nextPosition(const std::vector<bool>& isBound) const
{
    std::size_t best = m_positions.size();
    int mostUseful = -1;
    for (std::size_t position = 0; position < m_positions.size(); ++position) {
        if (isBound[m_positions[position].slot]) {
            continue;
        }
        const int useful = usefulness(position, isBound);
        if (useful > mostUseful) {
            mostUseful = useful;
            best = position;
        }
    }
    return best;
}

// How much binding the variable next narrows the choice: what can be tested then, best of all a
// constant object on its own, of which there are few, and a distance to an agent that is known.
int PrimitivePlan::usefulness(std::size_t position, const std::vector<bool>& isBound) const
{
    constexpr int kConstantAlone = 100;
    constexpr int kWithinReach = 20;
    constexpr int kAlone = 10;
    constexpr int kWithOthers = 5;
    const std::size_t slot = m_positions[position].slot;
    std::vector<bool> then = isBound;
    then[slot] = true;
    int useful = 0;
    for (std::size_t i = 0; i < m_tested; ++i) {
        const CConstraint& constraint = *m_model->m_constraints[i];
        if (isReady(constraint, isBound) || !isReady(constraint, then)) {
            continue;
        }
        std::vector<Bound> bounds;
        findBounds(constraint, bounds);
        if (slotsOf(constraint).size() == 1) {
            useful +=
                isConstantType(m_types[m_positions[position].group]) ? kConstantAlone : kAlone;
        } else {
            useful += bounds.empty() ? kWithOthers : kWithinReach;
        }
    }
    return useful;
}

bool PrimitivePlan::isReady(const CConstraint& constraint, const std::vector<bool>& isBound) const
{
    const auto slots = slotsOf(constraint);
    return std::all_of(slots.begin(), slots.end(), [&](std::int32_t slot) {
        return isBound[static_cast<std::size_t>(slot)];
    });
}

void PrimitivePlan::addStep(std::size_t position, std::vector<bool>& isBound)
{
    Step step;
    step.position = position;
    step.slot = m_positions[position].slot;
    step.group = m_positions[position].group;
    for (const Step& earlier : m_steps) {
        if (earlier.group == step.group) {
            step.rivals.push_back(earlier.position);
        }
    }
    chooseNearby(step, isBound);
    const std::vector<bool> before = isBound;
    isBound[step.slot] = true;
    for (std::size_t i = 0; i < m_tested; ++i) {
        const CConstraint& constraint = *m_model->m_constraints[i];
        if (!isReady(constraint, before) && isReady(constraint, isBound)) {
            step.tests.push_back({i, {}});
        }
    }
    chooseFilter(step);
    m_steps.push_back(std::move(step));
}

// Takes the tests that many candidates, and other models, ask in the same words.
void PrimitivePlan::chooseFilter(Step& step)
{
    Filter filter;
    filter.object = objectFor(step);
    std::vector<std::int32_t> slots{static_cast<std::int32_t>(step.slot)};
    if (filter.object) {
        slots.push_back(static_cast<std::int32_t>(*filter.object));
    }
    std::string question = m_types[step.group] + (filter.object ? " with an object" : "") + '\n';
    std::vector<Test> others;
    for (Test& test : step.tests) {
        const CConstraint& constraint = *m_model->m_constraints[test.constraint];
        const auto read = slotsOf(constraint);
        const bool isPart = std::all_of(read.begin(), read.end(), [&](std::int32_t slot) {
            return std::find(slots.begin(), slots.end(), slot) != slots.end();
        });
        if (isPart) {
            question += keyOf(constraint, slots) + '\n';
            filter.tests.push_back(std::move(test));
        } else {
            others.push_back(std::move(test));
        }
    }
    step.tests = std::move(others);
    if (!filter.tests.empty()) {
        filter.question = m_context.choices.numberOf(question);
        step.filter = std::move(filter);
    }
}

// The constant object, bound before, that a test asks for beside the step's own agent.
std::optional<std::size_t> PrimitivePlan::objectFor(const Step& step) const
{
    for (const Test& test : step.tests) {
        const auto slots = slotsOf(*m_model->m_constraints[test.constraint]);
        if (slots.size() != 2) {
            continue;
        }
        const auto own = static_cast<std::int32_t>(step.slot);
        const auto other = static_cast<std::size_t>(slots[0] == own ? slots[1] : slots[0]);
        const auto earlier = std::find_if(
            m_steps.begin(), m_steps.end(), [&](const Step& one) { return one.slot == other; });
        if (earlier != m_steps.end() && isConstantType(m_types[earlier->group])) {
            return other;
        }
    }
    return std::nullopt;
}

// The tightest bound on the distance to an agent that is bound already.
void PrimitivePlan::chooseNearby(Step& step, const std::vector<bool>& isBound)
{
    std::vector<Bound> bounds;
    for (std::size_t i = 0; i < m_tested; ++i) {
        findBounds(*m_model->m_constraints[i], bounds);
    }
    for (const Bound& bound : bounds) {
        const auto from = static_cast<std::size_t>(bound.from->m_slot);
        const auto to = static_cast<std::size_t>(bound.to->m_slot);
        const bool leadsHere = to == step.slot && isBound[from];
        const bool leadsBack = from == step.slot && isBound[to];
        if (!(leadsHere || leadsBack) || (step.nearby && step.nearby->reach <= bound.reach)) {
            continue;
        }
        const std::size_t partner = leadsHere ? from : to;
        const CConstraint& known = leadsHere ? *bound.from : *bound.to;
        const CConstraint& sought = leadsHere ? *bound.to : *bound.from;
        const auto earlier = std::find_if(
            m_steps.begin(), m_steps.end(), [&](const Step& one) { return one.slot == partner; });
        FrameView& view = m_context.view;
        const std::size_t question = m_context.neighbourhoods.numberOf(
            {m_typeNumbers[earlier->group], view.attributeNumber(known.m_attribute)},
            {m_typeNumbers[step.group], view.attributeNumber(sought.m_attribute)},
            bound.reach);
        step.nearby = Nearby{
            earlier->position, question, Neighbourhoods::squaredLimit(bound.reach), bound.reach};
    }
}

void PrimitivePlan::findBounds(const CConstraint& constraint, std::vector<Bound>& bounds) const
{
    const auto& children = constraint.m_children;
    const CSOperatorMeaning meaning = m_context.promises.of(constraint.m_operator).meaning;
    std::optional<Bound> bound;
    if (meaning == CSOperatorMeaning::Conjunction) {
        for (const auto& child : children) {
            findBounds(*child, bounds);
        }
    } else if (meaning == CSOperatorMeaning::AtMost && children.size() == 2) {
        bound = boundOf(*children[0], *children[1], CSOperatorMeaning::Distance);
    } else if (meaning == CSOperatorMeaning::AtLeast && children.size() == 2) {
        bound = boundOf(*children[1], *children[0], CSOperatorMeaning::Distance);
    } else if (meaning == CSOperatorMeaning::Nearness && children.size() == 3) {
        bound = boundOf(constraint, *children[2], CSOperatorMeaning::Nearness);
    }
    if (bound) {
        bounds.push_back(*bound);
    }
}

// The bound that a constant limit puts on the measured distance of two agents.
std::optional<PrimitivePlan::Bound> PrimitivePlan::boundOf(
    const CConstraint& measured, const CConstraint& limit, CSOperatorMeaning meaning) const
{
    const auto isPosition = [](const CConstraint& node) {
        return node.m_operatorName == "->" && node.m_slot >= 0;
    };
    const auto& places = measured.m_children;
    const bool isMeasured = !measured.isLeaf() &&
                            m_context.promises.of(measured.m_operator).meaning == meaning &&
                            places.size() >= 2 && isPosition(*places[0]) && isPosition(*places[1]);
    const bool isLimit = limit.isLeaf() && limit.m_operatorName == "NULL" && limit.m_isNumeric &&
                         std::isfinite(limit.m_numericValue);
    if (!isMeasured || !isLimit || places[0]->m_slot == places[1]->m_slot) {
        return std::nullopt;
    }
    return Bound{places[0].get(), places[1].get(), limit.m_numericValue};
}

void PrimitivePlan::countShared()
{
    const auto count = [this](const std::vector<Test>& tests) {
        for (const Test& test : tests) {
            m_context.shared.count(*m_model->m_constraints[test.constraint]);
        }
    };
    for (const Step& step : m_steps) {
        if (step.filter && step.filter->question.isNew) {
            count(step.filter->tests);
        }
        count(step.tests);
    }
}

void PrimitivePlan::prepareTests()
{
    if (m_finder != nullptr) {
        return;
    }
    const Expression::Numbering numbering{
        [this](const std::string& attribute) {
            return static_cast<std::int32_t>(m_context.view.attributeNumber(attribute));
        },
        [this](const CConstraint& part) { return sharedNumber(part); }};
    const auto prepare = [&](std::vector<Test>& tests) {
        for (Test& test : tests) {
            test.expression.emplace(
                *m_model->m_constraints[test.constraint], m_context.promises, numbering);
            test.expression->forEachAttribute([this](std::int32_t slot, std::int32_t attribute) {
                noteAttribute(static_cast<std::size_t>(slot), static_cast<std::size_t>(attribute));
            });
        }
    };
    prepare(m_always);
    for (Step& step : m_steps) {
        if (step.filter) {
            prepare(step.filter->tests);
        }
        prepare(step.tests);
    }
}

// Between two agents that come and go nothing is remembered.
std::int32_t PrimitivePlan::sharedNumber(const CConstraint& part) const
{
    const auto slots = slotsOf(part);
    const auto isOfConstantType = [this](std::int32_t slot) {
        return std::any_of(m_positions.begin(), m_positions.end(), [&](const Position& position) {
            return static_cast<std::int32_t>(position.slot) == slot &&
                   isConstantType(m_types[position.group]);
        });
    };
    const bool isOfPair = slots.size() == Expression::kMostSharers &&
                          std::none_of(slots.begin(), slots.end(), isOfConstantType);
    return isOfPair ? -1 : m_context.shared.numberOf(part);
}

void PrimitivePlan::noteAttribute(std::size_t slot, std::size_t attribute)
{
    const auto step = std::find_if(
        m_steps.begin(), m_steps.end(), [slot](const Step& one) { return one.slot == slot; });
    const Neighbourhoods::Side read{m_typeNumbers[step->group], attribute};
    if (std::find(m_attributes.begin(), m_attributes.end(), read) == m_attributes.end()) {
        m_attributes.push_back(read);
        m_values.resize(std::max(m_values.size(), attribute + 1));
    }
}

std::uint64_t PrimitivePlan::countCandidates()
{
    if (m_types.empty()) {
        return 0;
    }
    std::uint32_t count = 1;
    double exactly = 1.0;
    m_choices.clear();
    for (std::size_t group = 0; group < m_types.size(); ++group) {
        m_choices.push_back(m_context.view.ofType(m_typeNumbers[group]));
        const auto agents = static_cast<int>(m_choices.back().size());
        count *= permutation(agents, m_variablesPerType[group]);
        for (int k = 0; k < m_variablesPerType[group]; ++k) {
            exactly *= std::max(agents - k, 0);
        }
    }
    if (count == 0) {
        return 0;
    }
    constexpr double kMost = 1e18;
    return static_cast<std::uint64_t>(std::min(exactly, kMost));
}

bool PrimitivePlan::isPossible()
{
    for (const auto& [type, attribute] : m_attributes) {
        m_values[attribute] = m_context.view.values(attribute, type).data();
    }
    return hold(m_always);
}

bool PrimitivePlan::hold(const std::vector<Test>& tests)
{
    Reader reader{*this};
    for (const Test& test : tests) {
        const Truth truth(test.expression->evaluate(reader));
        if (!truth.holds) {
            return false;
        }
        m_confidences[test.constraint] = truth.confidence;
    }
    return true;
}

Neighbourhoods::Found PrimitivePlan::neighboursFor(const Step& step)
{
    if (!step.nearby) {
        return {};
    }
    return m_context.neighbourhoods.near(
        step.nearby->question, m_ranks[step.nearby->partner], m_context.view);
}

const Choices::Answer* PrimitivePlan::chosenFor(const Step& step)
{
    const FrameView& view = m_context.view;
    std::int32_t object = -1;
    if (step.filter->object) {
        object = view.constantNumber(m_agents[*step.filter->object]);
        if (object < 0) {
            return nullptr;
        }
    }
    Choices::Answer& known = m_context.choices.about(step.filter->question.number, object, view);
    if (known.frame != view.frame()) {
        known.frame = view.frame();
        answer(step, known);
    }
    return &known;
}

void PrimitivePlan::answer(const Step& step, Choices::Answer& answer)
{
    const auto choices = m_choices[step.group];
    answer.ranks.clear();
    answer.confidences.clear();
    answer.indexes.assign(choices.size(), 0);
    for (std::uint32_t rank = 0; rank < choices.size(); ++rank) {
        m_agents[step.slot] = choices[rank];
        if (!hold(step.filter->tests)) {
            continue;
        }
        answer.ranks.push_back(rank);
        answer.indexes[rank] = static_cast<std::uint32_t>(answer.ranks.size());
        for (const Test& test : step.filter->tests) {
            answer.confidences.push_back(m_confidences[test.constraint]);
        }
    }
}

// Binds the step's variable to the agent with this rank, unless another variable has it or a test
// of the step fails.
bool PrimitivePlan::passes(const Step& step, const Choices::Answer* chosen, std::uint32_t rank)
{
    for (const std::size_t rival : step.rivals) {
        if (m_ranks[rival] == rank) {
            return false;
        }
    }
    m_ranks[step.position] = rank;
    m_agents[step.slot] = m_choices[step.group][rank];
    if (chosen != nullptr) {
        const std::size_t index = chosen->indexes[rank];
        if (index == 0) {
            return false;
        }
        const std::vector<Test>& tests = step.filter->tests;
        const double* confidence = &chosen->confidences[(index - 1) * tests.size()];
        for (const Test& test : tests) {
            m_confidences[test.constraint] = *confidence++;
        }
    } else if (step.filter && !hold(step.filter->tests)) {
        return false;
    }
    return hold(step.tests);
}

// All candidates of the frame, once however many plans ask.
void PrimitivePlan::findAll()
{
    if (m_foundFrame == m_context.view.frame()) {
        return;
    }
    m_foundFrame = m_context.view.frame();
    m_foundRanks.clear();
    m_foundConfidences.clear();
    m_foundOrder.clear();
    m_candidates = countCandidates();
    const auto remember = [this] {
        m_foundOrder.push_back(m_foundOrder.size());
        m_foundRanks.insert(m_foundRanks.end(), m_ranks.begin(), m_ranks.end());
        m_foundConfidences.insert(
            m_foundConfidences.end(), m_confidences.begin(), m_confidences.end());
    };
    bindAll(remember);
    if (m_isReordered) {
        sortFound();
    }
}

void PrimitivePlan::sortFound()
{
    const std::size_t width = m_positions.size();
    const auto ranks = [&](std::size_t found) {
        return std::span(m_foundRanks).subspan(found * width, width);
    };
    std::sort(m_foundOrder.begin(), m_foundOrder.end(), [&](std::size_t a, std::size_t b) {
        const auto left = ranks(a);
        const auto right = ranks(b);
        return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end());
    });
}

void PrimitivePlan::adopt(const PrimitivePlan& finder, std::size_t found)
{
    const std::uint32_t* rank = &finder.m_foundRanks[found * m_positions.size()];
    for (const Position& position : m_positions) {
        m_agents[position.slot] = finder.m_choices[position.group][*rank++];
    }
    const auto confidence =
        finder.m_foundConfidences.begin() + static_cast<std::ptrdiff_t>(found * m_tested);
    std::copy_n(confidence, m_tested, m_confidences.begin());
}

std::string PrimitivePlan::work() const
{
    std::string work;
    if (m_tested == 0) {
        return work;
    }
    for (const Position& position : m_positions) {
        work += m_types[position.group] + ' ' + std::to_string(position.slot) + '\n';
    }
    for (std::size_t i = 0; i < m_tested; ++i) {
        work += keyOf(*m_model->m_constraints[i], {}) + '\n';
    }
    return work;
}

void PrimitivePlan::follow(PrimitivePlan& finder)
{
    m_finder = &finder;
    finder.m_isFollowed = true;
}

} // namespace scenariomatch
