#include "plugin/ActorAgents.h"

#include "engine/CSEngine.h"
#include "host/rhmDataActor.h"

#include <cstdint>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace scenariomatch
{

namespace
{

// The attributes' names, in the order of the enumeration.
const std::array<std::string, 13> kNames{
    "ID",
    "Position2D",
    "XMin",
    "XMax",
    "YMin",
    "YMax",
    "Position",
    "Width",
    "Height",
    "Depth",
    "Speed",
    "Type",
    "Posture"};

// Sums of what a tracker gives never overflow; as a value they wrap.
int wrapped(std::int64_t value)
{
    return static_cast<std::int32_t>(value);
}

} // namespace

void ActorAgents::startFrame(int frame)
{
    m_frame = frame;
    m_nextPlace = 0;
    m_place = nullptr;
}

void ActorAgents::enter(const rhmDataActor& actor)
{
    goToAgent(actor.getIdent());
    set<CSInt>(Id, actor.getIdent());
    m_place->agent->setFrameID(m_frame);
    enterBox(actor);
    const auto& position = actor.getCurrentPosition();
    set<CS3DDPoint>(Position, double{position.x}, double{position.y}, double{position.z});
    const auto& size = actor.getInformation3D();
    set<CSDouble>(Width, double{size.getWidth()});
    set<CSDouble>(Height, double{size.getHeight()});
    set<CSDouble>(Depth, double{size.getDepth()});
    set<CSDouble>(Speed, 0.0);
}

void ActorAgents::enterBox(const rhmDataActor& actor)
{
    const auto& box = actor.getBoundingBox2D();
    const std::int64_t right = std::int64_t{box.x} + box.width - 1;
    const std::int64_t bottom = std::int64_t{box.y} + box.height - 1;
    const std::int64_t middle = std::int64_t{box.x} + box.width / 2;
    set<CS2DDPoint>(Position2D, static_cast<double>(middle), static_cast<double>(bottom));
    set<CSInt>(XMin, box.x);
    set<CSInt>(XMax, wrapped(right));
    set<CSInt>(YMin, box.y);
    set<CSInt>(YMax, wrapped(bottom));
}

void ActorAgents::setType(const char* type)
{
    set<CSString>(Type, std::string(type));
    m_place->agent->m_type = type;
}

void ActorAgents::setPosture(int code)
{
    set<CSInt>(Posture, code);
}

// Engine identifiers are never given twice, so a known one means the agent that is known with it.
void ActorAgents::goToAgent(int hostId)
{
    if (m_nextPlace == m_places.size()) {
        m_places.emplace_back();
    }
    m_place = &m_places[m_nextPlace++];
    const int engineId = m_engine.getAgent(hostId, false);
    if (m_place->engineId != engineId) {
        *m_place = {engineId, m_engine.agents().at(engineId).get(), {}};
    }
}

template <typename Value, typename... Arguments>
void ActorAgents::set(Attribute attribute, Arguments... arguments)
{
    auto value = object<Value>(std::move(arguments)...);
    std::shared_ptr<CSBasicType>* const current = m_place->values[attribute];
    if (current == nullptr) {
        setFirst(attribute, std::move(value));
        return;
    }
    keep<Value>(CSAgent::replace(*current, std::move(value), m_frame));
}

void ActorAgents::setFirst(Attribute attribute, std::shared_ptr<CSBasicType> value)
{
    CSAgent& agent = *m_place->agent;
    agent.set(kNames[attribute], std::move(value), m_frame);
    m_place->values[attribute] = &agent.m_attributes.find(kNames[attribute])->second;
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
    if (dropped != nullptr && typeid(*dropped) == typeid(Value)) {
        std::get<std::shared_ptr<Value>>(m_spares) =
            std::static_pointer_cast<Value>(std::move(dropped));
    }
}

} // namespace scenariomatch
