#pragma once

#include "app/EventWriter.h"
#include "types/CSAgent.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace scenariomatch
{

// The objects that must take part in what is explained: tracked ones by number, those of the scene
// by name.
class ObjectFilter
{
public:
    ObjectFilter() = default;

    explicit ObjectFilter(std::vector<std::string> objects)
        : m_objects(std::move(objects))
    {
    }

    bool isEmpty() const { return m_objects.empty(); }

    const std::vector<std::string>& objects() const { return m_objects; }

    // Which of them the agent is; -1 for none.
    std::int32_t indexOf(const CSAgent& agent) const;
    // How many of them are not among the participants.
    std::size_t missing(const std::vector<EventObject>& participants) const;

private:
    std::vector<std::string> m_objects;
};

// The agent as a participant; a missing one has the identifier -1.
EventObject participantOf(const std::string& variable, const CSAgent* agent);
// What people call it: "3", or the name of an object of the scene.
std::string objectName(const EventObject& object);

} // namespace scenariomatch
