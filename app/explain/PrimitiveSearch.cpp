#include "app/explain/PrimitiveSearch.h"

#include <algorithm>
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

} // namespace

class PrimitiveSearch::Reader : public ValueReader
{
public:
    explicit Reader(const PrimitiveSearch& search)
        : m_search(search)
    {
    }

    CSPlainValue attribute(const Expression::Node& node) override
    {
        const FrameView::AgentIndex agent = m_search.m_agents[static_cast<std::size_t>(node.slot)];
        return m_search.m_values[static_cast<std::size_t>(node.attribute)][agent];
    }

    const std::shared_ptr<CSAgent>& agentOf(const CConstraint& leaf) override
    {
        static const std::shared_ptr<CSAgent> none;
        return leaf.m_slot < 0 ? none
                               : m_search.m_view->agent(
                                     m_search.m_agents[static_cast<std::size_t>(leaf.m_slot)]);
    }

private:
    const PrimitiveSearch& m_search;
};

PrimitiveSearch::PrimitiveSearch(
    const CSScenario& model,
    const ObjectFilter& filter,
    std::size_t hidden,
    std::uint64_t mostCandidates)
    : m_model(model)
    , m_filter(filter)
    , m_hidden(hidden)
    , m_variables(distinctVariables(model))
    , m_reader(std::make_unique<Reader>(*this))
{
    m_limit.set(mostCandidates);
    for (const auto& [type, variables] : m_model.m_variablesByType) {
        for (const std::string& variable : variables) {
            const auto slot = std::lower_bound(m_variables.begin(), m_variables.end(), variable);
            m_positions.push_back(
                {static_cast<std::size_t>(slot - m_variables.begin()), m_groups.size()});
        }
        m_groups.push_back({type, 0, false, {}, variables.size()});
    }
    const auto& constraints = m_model.m_constraints;
    for (const auto& constraint : constraints) {
        const bool isPure = m_promises.isPure(*constraint);
        if (isPure && m_tested == m_outcomes.size()) {
            ++m_tested;
        }
        m_outcomes.push_back({textOf(*constraint), 0, isPure, {}});
    }
    m_nearestMargins.resize(constraints.size(), std::numeric_limits<double>::infinity());
    m_agents.resize(m_variables.size());
    chooseSteps();
}

PrimitiveSearch::~PrimitiveSearch() = default;

// Variables are bound in the order in which the constraints ask for them. One that is declared
// twice is bound twice, and the last binding counts: everything is tested in the end.
void PrimitiveSearch::chooseSteps()
{
    const bool isPlain = m_positions.size() != m_variables.size();
    std::vector<bool> isBound(m_variables.size(), false);
    const auto bindSlot = [&](std::size_t slot) {
        const auto position =
            std::find_if(m_positions.begin(), m_positions.end(), [&](const Position& one) {
                return one.slot == slot;
            });
        if (position != m_positions.end() && !isBound[slot]) {
            isBound[slot] = true;
            addStep(static_cast<std::size_t>(position - m_positions.begin()));
        }
    };
    // Constraints without variables come with the first.
    std::vector<std::size_t> waiting;
    for (std::size_t test = 0; test < m_tested; ++test) {
        waiting.push_back(test);
        for (const std::int32_t slot : slotsOf(*m_model.m_constraints[test])) {
            if (!isPlain) {
                bindSlot(static_cast<std::size_t>(slot));
            }
        }
        if (!m_steps.empty()) {
            std::vector<std::size_t>& tests = m_steps.back().tests;
            tests.insert(tests.end(), waiting.begin(), waiting.end());
            waiting.clear();
        }
    }
    for (std::size_t position = 0; position < m_positions.size(); ++position) {
        if (isPlain || !isBound[m_positions[position].slot]) {
            addStep(position);
        }
    }
    if (!m_steps.empty()) {
        m_steps.back().tests.insert(m_steps.back().tests.end(), waiting.begin(), waiting.end());
    }
}

void PrimitiveSearch::addStep(std::size_t position)
{
    m_steps.push_back({m_positions[position].slot, m_positions[position].group, {}});
}

void PrimitiveSearch::prepare(FrameView& view)
{
    m_view = &view;
    for (Group& group : m_groups) {
        group.number = view.typeNumber(group.type);
    }
    const Expression::Numbering numbering{
        [&view](const std::string& attribute) {
            return static_cast<std::int32_t>(view.attributeNumber(attribute));
        },
        nullptr};
    m_gauges.clear();
    m_attributes.clear();
    for (std::size_t i = 0; i < m_tested; ++i) {
        const CConstraint& constraint = *m_model.m_constraints[i];
        m_gauges.emplace_back(constraint, i, m_promises, numbering);
        const Expression expression(constraint, m_promises, numbering);
        expression.forEachAttribute([this](std::int32_t slot, std::int32_t attribute) {
            const auto position =
                std::find_if(m_positions.begin(), m_positions.end(), [slot](const Position& one) {
                    return static_cast<std::int32_t>(one.slot) == slot;
                });
            m_attributes.push_back({static_cast<std::size_t>(attribute), position->group});
            m_values.resize(
                std::max(m_values.size(), static_cast<std::size_t>(attribute) + 1), nullptr);
        });
    }
}

void PrimitiveSearch::beginFrame(FrameView& view)
{
    for (Group& group : m_groups) {
        group.agents = view.ofType(group.number);
        group.isSeen = group.isSeen || !group.agents.empty();
    }
    for (const Attribute& attribute : m_attributes) {
        m_values[attribute.number] =
            view.values(attribute.number, m_groups[attribute.group].number).data();
    }
    if (!m_filter.isEmpty()) {
        m_asked.assign(view.size(), -1);
        for (const Group& group : m_groups) {
            for (const FrameView::AgentIndex agent : group.agents) {
                m_asked[agent] = m_filter.indexOf(*view.agent(agent));
            }
        }
    }
}

void PrimitiveSearch::addFrame(FrameView& view, const CSTimeStamp& now)
{
    if (m_view != &view) {
        prepare(view);
    }
    m_now = momentOf(now);
    beginFrame(view);
    m_limit.start();
    if (!m_steps.empty()) {
        bind(0, {});
    }
    if (m_limit.isReached()) {
        ++m_cutFrames;
    }
    m_reader->forget();
}

bool PrimitiveSearch::isTaken(std::size_t depth, FrameView::AgentIndex agent) const
{
    for (std::size_t i = 0; i < depth; ++i) {
        if (m_steps[i].group == m_steps[depth].group && m_agents[m_steps[i].slot] == agent) {
            return true;
        }
    }
    return false;
}

void PrimitiveSearch::bind(std::size_t depth, const State& state)
{
    if (depth == m_steps.size()) {
        m_candidates += state.hasFailed ? 0 : 1;
        if (state.hasFailed) {
            noteWhole();
        }
        return;
    }
    const Step& step = m_steps[depth];
    for (const FrameView::AgentIndex agent : m_groups[step.group].agents) {
        if (!m_limit.tryOne()) {
            return;
        }
        if (isTaken(depth, agent)) {
            continue;
        }
        m_agents[step.slot] = agent;
        if (!mayPass(depth)) {
            continue;
        }
        State next = state;
        if (test(depth, next)) {
            bind(depth + 1, next);
        }
    }
}

// Whether enough of the objects asked for are bound, or still can be.
bool PrimitiveSearch::mayPass(std::size_t depth) const
{
    if (m_filter.isEmpty()) {
        return true;
    }
    std::vector<bool> isBound(m_filter.objects().size(), false);
    for (std::size_t i = 0; i <= depth; ++i) {
        const std::int32_t asked = m_asked[m_agents[m_steps[i].slot]];
        if (asked >= 0) {
            isBound[static_cast<std::size_t>(asked)] = true;
        }
    }
    const auto missing =
        static_cast<std::size_t>(std::count(isBound.begin(), isBound.end(), false));
    return missing <= m_steps.size() - depth - 1 + m_hidden;
}

bool PrimitiveSearch::test(std::size_t depth, State& state)
{
    for (const std::size_t constraint : m_steps[depth].tests) {
        if (!m_gauges[constraint].holds(*m_reader) && !fail(depth, constraint, state)) {
            return false;
        }
    }
    return true;
}

bool PrimitiveSearch::fail(std::size_t depth, std::size_t constraint, State& state)
{
    Gauge& gauge = m_gauges[constraint];
    const double scale = gauge.scale();
    const std::optional<double> margin = gauge.margin(boundFor(constraint, state, scale));
    if (!state.hasFailed) {
        state.hasFailed = true;
        const std::uint64_t failed = completions(depth + 1);
        m_candidates += failed;
        m_outcomes[constraint].firstFalse += failed;
        const bool isFirst = !m_outcomes[constraint].nearest && failed > 0;
        if (isFirst || (margin && *margin < m_nearestMargins[constraint] && failed > 0)) {
            ConstraintOutcome& outcome = m_outcomes[constraint];
            outcome.nearest = missNow(depth);
            outcome.nearest->findings.push_back(gauge.finding());
            m_nearestMargins[constraint] = margin.value_or(std::numeric_limits<double>::infinity());
        }
    }
    // With a constraint that must not be asked nobody knows what all would have said.
    if (m_tested < m_model.m_constraints.size()) {
        return false;
    }
    state.rank = state.rank.with(margin, scale);
    return !m_nearestRank || state.rank < *m_nearestRank;
}

// What a margin has to be less than to be worth knowing.
double PrimitiveSearch::boundFor(std::size_t constraint, const State& state, double scale) const
{
    constexpr double kAny = std::numeric_limits<double>::infinity();
    const double own = state.hasFailed ? 0.0 : m_nearestMargins[constraint];
    if (!m_nearestRank || state.rank.failing + 1 < m_nearestRank->failing ||
        state.rank.unmeasured < m_nearestRank->unmeasured) {
        return kAny;
    }
    return std::max(own, (m_nearestRank->share - state.rank.share) * scale);
}

// How many candidates have the bindings up to this depth in common.
std::uint64_t PrimitiveSearch::completions(std::size_t depth)
{
    if (!m_filter.isEmpty()) {
        return countFiltered(depth);
    }
    std::uint64_t count = 1;
    for (std::size_t i = depth; i < m_steps.size(); ++i) {
        std::size_t taken = 0;
        for (std::size_t k = 0; k < i; ++k) {
            if (m_steps[k].group == m_steps[i].group) {
                ++taken;
            }
        }
        const std::size_t agents = m_groups[m_steps[i].group].agents.size();
        count *= agents > taken ? agents - taken : 0;
    }
    return count;
}

std::uint64_t PrimitiveSearch::countFiltered(std::size_t depth)
{
    if (depth == m_steps.size()) {
        return 1;
    }
    std::uint64_t count = 0;
    for (const FrameView::AgentIndex agent : m_groups[m_steps[depth].group].agents) {
        if (!m_limit.tryOne()) {
            return count;
        }
        if (isTaken(depth, agent)) {
            continue;
        }
        m_agents[m_steps[depth].slot] = agent;
        count += mayPass(depth) ? countFiltered(depth + 1) : 0;
    }
    return count;
}

// The candidate at hand fails, and came nearer than all before.
void PrimitiveSearch::noteWhole()
{
    MissRank rank;
    NearMiss miss = missNow(m_steps.size() - 1);
    for (Gauge& gauge : m_gauges) {
        if (!gauge.holds(*m_reader)) {
            miss.findings.push_back(gauge.finding());
            rank = rank.with(miss.findings.back().margin, gauge.scale());
        }
    }
    if (!m_nearestRank || rank < *m_nearestRank) {
        m_nearestRank = rank;
        m_nearest = std::move(miss);
    }
}

// The objects that are bound up to this depth.
NearMiss PrimitiveSearch::missNow(std::size_t depth) const
{
    NearMiss miss;
    miss.when = m_now;
    std::vector<bool> isBound(m_variables.size(), false);
    for (std::size_t i = 0; i <= depth && i < m_steps.size(); ++i) {
        isBound[m_steps[i].slot] = true;
    }
    for (std::size_t slot = 0; slot < m_variables.size(); ++slot) {
        if (isBound[slot]) {
            miss.objects.push_back(
                participantOf(m_variables[slot], m_view->agent(m_agents[slot]).get()));
        }
    }
    return miss;
}

std::vector<std::string> PrimitiveSearch::absentTypes() const
{
    std::vector<std::string> types;
    for (const Group& group : m_groups) {
        if (!group.isSeen) {
            types.push_back(group.type);
        }
    }
    return types;
}

} // namespace scenariomatch
