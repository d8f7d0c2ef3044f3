#include "app/explain/CompositeSearch.h"

#include "app/explain/ObjectFilter.h"
#include "engine/Agents.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr double kNoMargin = std::numeric_limits<double>::infinity();

} // namespace

// The sub-events' times at one moment.
class CompositeSearch::TimesReader : public ValueReader
{
public:
    TimesReader(const CSScenario& model, const Together& together)
        : m_model(model)
        , m_together(together)
        , m_ends(together.events.size())
    {
    }

    void setEnd(std::size_t component, const CSTimeStamp* end) { m_ends[component] = end; }

    CSPlainValue attribute(const Expression::Node& node) override
    {
        const auto& components = m_model.m_components;
        for (std::size_t i = 0; i < components.size(); ++i) {
            if (components[i]->m_variable == node.source->m_value) {
                return CSPlainValue::interval(m_together.events[i]->start.get(), m_ends[i]);
            }
        }
        return {};
    }

    const std::shared_ptr<CSAgent>& agentOf(const CConstraint& /*leaf*/) override
    {
        static const std::shared_ptr<CSAgent> none;
        return none;
    }

private:
    const CSScenario& m_model;
    const Together& m_together;
    std::vector<const CSTimeStamp*> m_ends;
};

CompositeSearch::CompositeSearch(
    const CSScenario& model, const KnownEvents& events, double lookBack)
    : m_model(model)
    , m_events(events)
    , m_lookBack(lookBack)
    , m_trigger(model.m_triggerIndex < 0 ? 0 : static_cast<std::size_t>(model.m_triggerIndex))
    , m_gauges(model.m_constraints.size())
    , m_nearestMargins(model.m_constraints.size(), kNoMargin)
{
    // Readers go by names.
    const Expression::Numbering numbering{[](const std::string&) { return 0; }, nullptr};
    for (std::size_t i = 0; i < model.m_constraints.size(); ++i) {
        const CConstraint& constraint = *model.m_constraints[i];
        const bool isPure = m_promises.isPure(constraint);
        m_isPure = m_isPure && isPure;
        m_isTimed = m_isTimed && readsTimesOnly(constraint);
        m_outcomes.push_back({textOf(constraint), 0, isPure, {}});
        if (isPure) {
            m_gauges[i].emplace(constraint, i, m_promises, numbering);
        }
    }
    m_isTimed = m_isTimed && m_isPure;
}

CompositeSearch::~CompositeSearch() = default;

// Whether the constraint is about the times of sub-events alone, in terms of plain operators.
bool CompositeSearch::readsTimesOnly(const CConstraint& constraint)
{
    constexpr std::size_t kMostParts = 8;
    if (constraint.m_operatorName == "->") {
        const auto& components = m_model.m_components;
        return constraint.m_attribute == "Interval" && constraint.m_slot >= 0 &&
               std::any_of(components.begin(), components.end(), [&](const auto& component) {
                   return component->m_variable == constraint.m_value;
               });
    }
    if (constraint.isLeaf()) {
        return true;
    }
    const auto& children = constraint.m_children;
    return constraint.m_operator != nullptr && m_promises.of(constraint.m_operator).isPlain &&
           children.size() <= kMostParts &&
           std::all_of(children.begin(), children.end(), [this](const auto& child) {
               return readsTimesOnly(*child);
           });
}

// Empty where a component is not bound.
std::vector<int> CompositeSearch::idsOf(const CConstraint::Bindings& bindings) const
{
    std::vector<int> ids;
    for (const auto& component : m_model.m_components) {
        const auto bound = bindings.find(component->m_variable);
        if (bound == bindings.end() || !bound->second) {
            return {};
        }
        ids.push_back(agentIdentifier(bound->second));
    }
    return ids;
}

void CompositeSearch::constraintFalse(
    const CConstraint::Bindings& bindings, std::size_t constraint, const Moment& now)
{
    ++m_outcomes[constraint].firstFalse;
    if (!m_isTimed) {
        judgeNow(bindings, constraint, now);
        return;
    }
    std::vector<int> ids = idsOf(bindings);
    const auto [place, isNew] = m_together.try_emplace(std::move(ids));
    if (!isNew) {
        return;
    }
    Together& together = place->second;
    together.objects = participantsOf(bindings);
    for (const int id : place->first) {
        together.events.push_back(m_events.find(id));
    }
}

void CompositeSearch::recognised(const CConstraint::Bindings& bindings)
{
    if (m_isTimed) {
        m_together[idsOf(bindings)].isRecognised = true;
    }
}

void CompositeSearch::judgeNow(
    const CConstraint::Bindings& bindings, std::size_t constraint, const Moment& now)
{
    BoundReader reader(bindings);
    const NearMiss candidate{now, participantsOf(bindings), {}};
    if (m_isPure) {
        weigh(reader, candidate);
    } else if (m_gauges[constraint] && !m_gauges[constraint]->holds(reader)) {
        noteFirst(*m_gauges[constraint], constraint, candidate);
    }
}

void CompositeSearch::finish(std::int64_t fromMilliseconds, std::int64_t toMilliseconds)
{
    for (const auto& [ids, together] : m_together) {
        const bool isKnown =
            !together.events.empty() &&
            std::all_of(together.events.begin(), together.events.end(), [](const auto& event) {
                return event != nullptr;
            });
        if (isKnown && !together.isRecognised) {
            judge(together, fromMilliseconds, toMilliseconds);
        }
    }
}

void CompositeSearch::judge(const Together& together, std::int64_t from, std::int64_t to)
{
    for (const auto& time : together.events[m_trigger]->times) {
        const std::int64_t milliseconds = momentOf(*time).milliseconds;
        const bool isAsked = milliseconds >= from && milliseconds <= to;
        if (!isAsked || !isTestedAt(together, *time)) {
            continue;
        }
        // What would do in hindsight did not do then.
        if (!judgeAt(together, time, true)) {
            judgeAt(together, time, false);
        }
    }
}

// All have begun, and none was over for so long that it was not looked back at.
bool CompositeSearch::isTestedAt(const Together& together, const CSTimeStamp& time) const
{
    return std::all_of(together.events.begin(), together.events.end(), [&](const auto& event) {
        return !(*event->start > time) && !(event->end().duration(time) > m_lookBack);
    });
}

bool CompositeSearch::judgeAt(
    const Together& together, const std::shared_ptr<const CSTimeStamp>& time, bool isWhole)
{
    TimesReader reader(m_model, together);
    NearMiss candidate{momentOf(*time), together.objects, {}};
    for (std::size_t i = 0; i < together.events.size(); ++i) {
        const CSTimeStamp& end = together.events[i]->end();
        const bool isCut = i == m_trigger || (!isWhole && end > *time);
        reader.setEnd(i, isCut ? time.get() : &end);
        candidate.isHindsight = candidate.isHindsight || (!isCut && end > *time);
    }
    return weigh(reader, candidate);
}

bool CompositeSearch::weigh(ValueReader& reader, const NearMiss& candidate)
{
    MissRank rank;
    std::vector<std::size_t> failing;
    for (std::size_t i = 0; i < m_gauges.size(); ++i) {
        Gauge& gauge = *m_gauges[i];
        if (gauge.holds(reader)) {
            continue;
        }
        if (failing.empty()) {
            noteFirst(gauge, i, candidate);
        }
        failing.push_back(i);
        rank = rank.with(gauge.margin(), gauge.scale());
        if (m_nearestRank && !(rank < *m_nearestRank)) {
            return true;
        }
    }
    if (failing.empty()) {
        return false;
    }
    m_nearestRank = rank;
    m_nearest = candidate;
    for (const std::size_t i : failing) {
        m_gauges[i]->holds(reader);
        m_nearest->findings.push_back(m_gauges[i]->finding());
    }
    return true;
}

void CompositeSearch::noteFirst(Gauge& gauge, std::size_t constraint, const NearMiss& candidate)
{
    ConstraintOutcome& outcome = m_outcomes[constraint];
    const std::optional<double> margin = gauge.margin(m_nearestMargins[constraint]);
    if (outcome.nearest && !margin) {
        return;
    }
    outcome.nearest = candidate;
    outcome.nearest->findings.push_back(gauge.finding());
    m_nearestMargins[constraint] = margin.value_or(kNoMargin);
}

} // namespace scenariomatch
