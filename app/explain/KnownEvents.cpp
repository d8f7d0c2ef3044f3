#include "app/explain/KnownEvents.h"

#include "app/explain/ObjectFilter.h"
#include "engine/Agents.h"

namespace scenariomatch
{

void KnownEvents::add(const CSScenarioInstance& instance)
{
    const auto events = m_byModel.find(instance.m_scenario->m_name);
    if (events == m_byModel.end()) {
        return;
    }
    auto event = std::make_shared<KnownEvent>();
    event->id = instance.m_id;
    event->objects = participantsOf(instance.m_bindings);
    event->start = instance.m_start;
    event->times.push_back(instance.m_end);
    m_byId[instance.m_id] = event;
    events->second.push_back(std::move(event));
}

// A merge clause may have given it another start.
void KnownEvents::extend(const CSScenarioInstance& instance)
{
    const auto found = m_byId.find(instance.m_id);
    if (found != m_byId.end()) {
        found->second->start = instance.m_start;
        found->second->times.push_back(instance.m_end);
    }
}

std::shared_ptr<const KnownEvent> KnownEvents::find(int id) const
{
    const auto found = m_byId.find(id);
    return found == m_byId.end() ? nullptr : found->second;
}

const KnownEvents::Events& KnownEvents::of(const std::string& model) const
{
    static const Events none;
    const auto found = m_byModel.find(model);
    return found == m_byModel.end() ? none : found->second;
}

std::vector<EventObject> participantsOf(const CConstraint::Bindings& bindings)
{
    std::vector<EventObject> participants;
    for (const auto& [variable, agent] : bindings) {
        if (isPhysicalObject(agent)) {
            participants.push_back(participantOf(variable, agent.get()));
        }
    }
    return participants;
}

} // namespace scenariomatch
