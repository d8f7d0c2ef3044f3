#pragma once

#include "types/CSAgent.h"

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace scenariomatch
{

// The agents that a frame has to look at, of all that the engine remembers: those that are not
// asleep. An agent that is not seen any more, and is remembered only because it took part in
// something, sleeps until it is seen again or has been forgotten by the last of its instances.
//
// So a frame costs what is going on in it, not what went on before. The agents keep a pointer to
// this while they sleep; it must not move, and forgets them when it goes.
class CS_EXPORT AwakeAgents
{
public:
    // By the engine's identifiers.
    using Table = std::map<int, std::shared_ptr<CSAgent>>;

    AwakeAgents() = default;
    AwakeAgents(const AwakeAgents&) = delete;
    AwakeAgents(AwakeAgents&&) = delete;
    AwakeAgents& operator=(const AwakeAgents&) = delete;
    AwakeAgents& operator=(AwakeAgents&&) = delete;
    ~AwakeAgents() = default;

    const Table& table() const { return m_awake; }

    void add(const std::shared_ptr<CSAgent>& agent);
    // Forgets all agents of the table and takes the others for awake.
    void replace(const Table& all);

    // Wakes up who was seen since, out of all agents. A frame number that does not grow wakes up
    // everyone: who has been asleep may be in that frame.
    void startFrame(std::int32_t frame, const Table& all);
    void wakeSeen(const Table& all);

    // Calls remains(agent) for each agent that is awake; takes out those for which it says no, and
    // puts to sleep those who are not in this frame nor in a later one.
    template <class Remains>
    void review(std::int32_t frame, Remains&& remains);

private:
    static bool isOver(const CSAgent& agent, std::int32_t frame);

    Table m_awake;
    std::int32_t m_latestFrame = INT32_MIN;
    // Identifiers of agents that were seen, or freed, in their sleep.
    std::vector<std::int32_t> m_woken;
};

template <class Remains>
void AwakeAgents::review(std::int32_t frame, Remains&& remains)
{
    for (auto place = m_awake.begin(); place != m_awake.end();) {
        CSAgent& agent = *place->second;
        if (!remains(agent)) {
            place = m_awake.erase(place);
        } else if (isOver(agent, frame)) {
            agent.m_sleepers = &m_woken;
            place = m_awake.erase(place);
        } else {
            ++place;
        }
    }
}

} // namespace scenariomatch
