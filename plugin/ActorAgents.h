#pragma once

#include "plugin/ActorAttributes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

class CSAllScenarios;
class CSEngine;

namespace scenariomatch
{

// The attributes of agents that the models' constraints speak of.
std::set<std::string> namedAttributes(const CSAllScenarios& scenarios);

// Enters the actors of a frame into an engine's table of agents.
//
// Attributes that no model names are entered late, when somebody looks at them. For the others:
// most actors come again in the next frame, in the same place of the list, so for every place the
// agent is remembered, and where its attributes stand. Value objects that drop out of an agent's
// histories, and that nobody else holds, serve for the values that come.
//
// The engine must outlive it. Same thread as the engine.
//
// Example:
//     agents.setNamedAttributes({"Position"});
//     agents.startFrame();
//     for (const ActorState& actor : actors) { agents.enter(actor); }
class ActorAgents
{
public:
    explicit ActorAgents(CSEngine& engine)
        : m_engine(engine)
    {
    }

    // The attributes that models name, for the agents that come from now on. At first there are
    // none.
    void setNamedAttributes(const std::set<std::string>& names);

    void startFrame()
    {
        m_nextPlace = 0;
        ++m_round;
    }

    // False when the frame has had an actor of this identifier already; the later one's attributes
    // then stand beside the earlier one's, as if they came in a frame of their own.
    bool enter(const ActorState& actor);

private:
    // What is known of the agent in one place of the list.
    struct Place
    {
        int engineId = -1;
        CSAgent* agent = nullptr;
        // The agent's own.
        ActorAttributes* late = nullptr;
        // The current values' pointers in the agent; null for an attribute that was not set yet.
        std::array<std::shared_ptr<CSBasicType>*, kActorAttributes> values{};
    };

    // For each class of values one object to be used again, or none.
    using Spares = std::tuple<
        std::shared_ptr<CSInt>,
        std::shared_ptr<CSDouble>,
        std::shared_ptr<CSString>,
        std::shared_ptr<CS2DDPoint>,
        std::shared_ptr<CS3DDPoint>>;

    Place& nextPlace(int hostId);
    ActorAttributes& lateAttributesOf(CSAgent& agent) const;
    template <typename Value, typename... Arguments>
    void set(Place& place, ActorAttribute attribute, int frame, Arguments... arguments);
    template <typename Value, typename... Arguments>
    std::shared_ptr<Value> object(Arguments... arguments);
    template <typename Value>
    void keep(std::shared_ptr<CSBasicType> dropped);

    CSEngine& m_engine;
    ActorAttributeSet m_named;
    std::vector<Place> m_places;
    // Of the next actor.
    std::size_t m_nextPlace = 0;
    // Counts the frames.
    std::uint64_t m_round = 0;
    Spares m_spares;
};

} // namespace scenariomatch
