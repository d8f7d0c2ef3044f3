#include "plugin/ActorAgents.h"

#include "engine/CSEngine.h"

#include <type_traits>
#include <typeinfo>
#include <utility>

namespace scenariomatch
{

namespace
{

void addNamedAttributes(const CConstraint& constraint, std::set<std::string>& names)
{
    names.insert(constraint.m_attribute);
    for (const auto& child : constraint.m_children) {
        addNamedAttributes(*child, names);
    }
}

} // namespace

std::set<std::string> namedAttributes(const CSAllScenarios& scenarios)
{
    std::set<std::string> names;
    for (const auto& [kind, models] : scenarios.m_scenariosByKind) {
        for (const auto& model : models) {
            for (const auto& constraint : model->m_constraints) {
                addNamedAttributes(*constraint, names);
            }
        }
    }
    return names;
}

void ActorAgents::setNamedAttributes(const std::set<std::string>& names)
{
    for (std::size_t i = 0; i < kActorAttributes; ++i) {
        m_named.set(i, names.contains(nameOf(static_cast<ActorAttribute>(i))));
    }
}

bool ActorAgents::enter(const ActorState& actor)
{
    Place& place = nextPlace(actor.id);
    const bool isFirst = place.late->startRound(m_round);
    place.late->renew(*place.agent, actor);
    place.agent->addFrame(actor.frame);
    place.agent->m_type = actor.type;
    visitActorAttributes(
        actor,
        [&]<typename Value>(std::type_identity<Value>, ActorAttribute attribute, auto... of) {
            if (!place.late->isLate(attribute)) {
                set<Value>(place, attribute, actor.frame, std::move(of)...);
            }
        });
    return isFirst;
}

// Engine identifiers are never given twice, so a known one means the agent that is known with it.
ActorAgents::Place& ActorAgents::nextPlace(int hostId)
{
    if (m_nextPlace == m_places.size()) {
        m_places.emplace_back();
    }
    Place& place = m_places[m_nextPlace++];
    const int engineId = m_engine.getAgent(hostId, false);
    if (place.engineId != engineId) {
        CSAgent& agent = *m_engine.agents().at(engineId);
        place = {engineId, &agent, &lateAttributesOf(agent), {}};
    }
    return place;
}

ActorAttributes& ActorAgents::lateAttributesOf(CSAgent& agent) const
{
    if (auto* late = dynamic_cast<ActorAttributes*>(agent.m_late.get())) {
        return *late;
    }
    agent.makeUp();
    auto late = std::make_unique<ActorAttributes>(~m_named);
    ActorAttributes& held = *late;
    agent.m_late.hold(std::move(late));
    return held;
}

template <typename Value, typename... Arguments>
void ActorAgents::set(Place& place, ActorAttribute attribute, int frame, Arguments... arguments)
{
    auto value = object<Value>(std::move(arguments)...);
    auto*& current = place.values[static_cast<std::size_t>(attribute)];
    if (current == nullptr) {
        const std::string& name = nameOf(attribute);
        place.agent->set(name, std::move(value), frame);
        current = &place.agent->m_attributes.find(name)->second;
        return;
    }
    keep<Value>(CSAgent::replace(*current, std::move(value), frame));
}

// A new object in all but its memory.
template <typename Value, typename... Arguments>
std::shared_ptr<Value> ActorAgents::object(Arguments... arguments)
{
    static_assert(std::is_nothrow_constructible_v<Value, Arguments...>);
    auto& spare = std::get<std::shared_ptr<Value>>(m_spares);
    if (spare.use_count() != 1) {
        return std::make_shared<Value>(std::move(arguments)...);
    }
    std::destroy_at(spare.get());
    std::construct_at(spare.get(), std::move(arguments)...);
    return std::exchange(spare, nullptr);
}

template <typename Value>
void ActorAgents::keep(std::shared_ptr<CSBasicType> dropped)
{
    const CSBasicType* object = dropped.get();
    if (object != nullptr && typeid(*object) == typeid(Value)) {
        std::get<std::shared_ptr<Value>>(m_spares) =
            std::static_pointer_cast<Value>(std::move(dropped));
    }
}

} // namespace scenariomatch
