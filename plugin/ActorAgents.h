#pragma once

#include "types/CSAgent.h"

#include <array>
#include <cstddef>
#include <memory>
#include <tuple>
#include <vector>

class CSEngine;
class rhmDataActor;

namespace scenariomatch
{

// Enters the actors of a frame into an engine's table of agents.
//
// Most actors come again in the next frame, in the same place of the list: for every place the
// agent is remembered, and where its attributes stand. Value objects that drop out of an agent's
// histories, and that nobody else holds, serve for the values that come.
//
// The engine must outlive it. Same thread as the engine.
//
// Example:
//     agents.startFrame(12);
//     for (const auto& actor : actors) {
//         agents.enter(*actor);
//         agents.setType("Mobile");
//     }
class ActorAgents
{
public:
    explicit ActorAgents(CSEngine& engine)
        : m_engine(engine)
    {
    }

    void startFrame(int frame);

    // Enters the actor with all its attributes except type and posture.
    void enter(const rhmDataActor& actor);

    // Of the actor entered last.
    void setType(const char* type);
    void setPosture(int code);

private:
    enum Attribute : std::size_t {
        Id,
        Position2D,
        XMin,
        XMax,
        YMin,
        YMax,
        Position,
        Width,
        Height,
        Depth,
        Speed,
        Type,
        Posture
    };

    static constexpr std::size_t kAttributes = 13;

    // What is known of the agent in one place of the list.
    struct Place
    {
        int engineId = -1;
        CSAgent* agent = nullptr;
        // The current values' pointers in the agent; null for an attribute that was not set yet.
        std::array<std::shared_ptr<CSBasicType>*, kAttributes> values{};
    };

    // For each class of values one object to be used again, or none.
    using Spares = std::tuple<
        std::shared_ptr<CSInt>,
        std::shared_ptr<CSDouble>,
        std::shared_ptr<CSString>,
        std::shared_ptr<CS2DDPoint>,
        std::shared_ptr<CS3DDPoint>>;

    void goToAgent(int hostId);
    void enterBox(const rhmDataActor& actor);
    template <typename Value, typename... Arguments>
    void set(Attribute attribute, Arguments... arguments);
    void setFirst(Attribute attribute, std::shared_ptr<CSBasicType> value);
    template <typename Value, typename... Arguments>
    std::shared_ptr<Value> object(Arguments... arguments);
    template <typename Value>
    void keep(std::shared_ptr<CSBasicType> dropped);

    CSEngine& m_engine;
    int m_frame = 0;
    std::vector<Place> m_places;
    // Of the next actor.
    std::size_t m_nextPlace = 0;
    // Of the actor entered last.
    Place* m_place = nullptr;
    Spares m_spares;
};

} // namespace scenariomatch
