#include "app/explain/EvidenceObserver.h"

#include "app/explain/KnownEvents.h"
#include "engine/Agents.h"

#include <map>
#include <utility>

namespace scenariomatch
{

void EvidenceObserver::frameStarted(FrameView& /*view*/, const CSTimeStamp& now)
{
    m_start = m_start.value_or(momentOf(now));
    handOn();
}

EvidenceObserver::Gauges& EvidenceObserver::gaugesOf(const CSScenario& model)
{
    const auto [place, isNew] = m_gauges.try_emplace(&model);
    if (isNew) {
        // Readers go by names.
        const Expression::Numbering numbering{[](const std::string&) { return 0; }, nullptr};
        for (const auto& constraint : model.m_constraints) {
            auto& gauge = place->second.emplace_back();
            if (m_promises.isPure(*constraint)) {
                gauge.emplace(*constraint, place->second.size() - 1, m_promises, numbering);
            }
        }
    }
    return place->second;
}

void EvidenceObserver::instanceNew(const CSScenarioInstance& instance)
{
    if (m_evidence && m_evidence->id != instance.m_id) {
        return;
    }
    auto evidence = std::make_shared<Evidence>();
    evidence->id = instance.m_id;
    evidence->model = instance.m_scenario->m_name;
    evidence->kind = instance.m_scenario->m_kind;
    evidence->confidence = instance.m_confidence;
    evidence->threshold = instance.m_scenario->m_confidenceThreshold;
    evidence->begin = momentOf(*instance.m_start);
    evidence->recognised = momentOf(*instance.m_end);
    evidence->end = evidence->recognised;
    evidence->start = m_start.value_or(evidence->begin);
    evidence->objects = participantsOf(instance.m_bindings);
    addFindings(instance, *evidence);
    addParts(instance, *evidence);
    m_alive[instance.m_id] = evidence;
    if (instance.m_id == m_event) {
        m_evidence = std::move(evidence);
    }
}

void EvidenceObserver::addFindings(const CSScenarioInstance& instance, Evidence& evidence)
{
    BoundReader reader(instance.m_bindings);
    Gauges& gauges = gaugesOf(*instance.m_scenario);
    for (std::size_t i = 0; i < gauges.size(); ++i) {
        if (gauges[i]) {
            gauges[i]->holds(reader);
            evidence.findings.push_back(gauges[i]->finding());
            continue;
        }
        Finding& untold = evidence.findings.emplace_back();
        untold.constraint = i;
        untold.text = textOf(*instance.m_scenario->m_constraints[i]);
        untold.holds = true;
        untold.note = "its operator promises nothing, so it is not asked again";
    }
}

void EvidenceObserver::addParts(const CSScenarioInstance& instance, Evidence& evidence) const
{
    for (const auto& component : instance.m_scenario->m_components) {
        const auto bound = instance.m_bindings.find(component->m_variable);
        const auto part = bound == instance.m_bindings.end()
                              ? m_alive.end()
                              : m_alive.find(agentIdentifier(bound->second));
        if (part != m_alive.end()) {
            evidence.parts.push_back({component->m_variable, part->second->end, part->second});
        }
    }
}

// What an event is part of has been told already; its end is still to come.
void EvidenceObserver::instanceExtended(const CSScenarioInstance& instance)
{
    const auto alive = m_alive.find(instance.m_id);
    if (alive != m_alive.end()) {
        alive->second->end = momentOf(*instance.m_end);
    }
}

void EvidenceObserver::instanceExpired(const CSScenarioInstance& instance)
{
    const auto alive = m_alive.find(instance.m_id);
    if (alive != m_alive.end()) {
        if (m_take) {
            m_over.push_back(alive->second);
        }
        m_alive.erase(alive);
    }
    m_isOver = m_isOver || instance.m_id == m_event;
}

void EvidenceObserver::handOn()
{
    for (const auto& evidence : m_over) {
        m_take(*evidence);
    }
    m_over.clear();
}

void EvidenceObserver::finish()
{
    handOn();
    for (const auto& [id, evidence] : std::map(m_alive.begin(), m_alive.end())) {
        m_take(*evidence);
    }
}

} // namespace scenariomatch
