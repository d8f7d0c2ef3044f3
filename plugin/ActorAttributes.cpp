#include "plugin/ActorAttributes.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace scenariomatch
{

const std::string& nameOf(ActorAttribute attribute)
{
    static const std::array<std::string, kActorAttributes> names{
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
    return names[static_cast<std::size_t>(attribute)];
}

// The first value of an attribute is told from the others, so it is made at once; and states can
// only be forgotten one for one while all of them set the same attributes, in growing frames.
void ActorAttributes::renew(CSAgent& agent, const ActorState& state)
{
    if (m_late.none()) {
        return;
    }
    const bool hasPosture = state.posture != 0;
    const bool isLater = m_states.empty() || state.frame > m_states.back().frame;
    const bool isAlike = m_hasFirst && hasPosture == m_hasPosture;
    if (!isLater || !isAlike) {
        makeUp(agent);
    }
    m_states.push_back(state);
    if (!isAlike) {
        makeUp(agent);
    }
    m_hasFirst = true;
    m_hasPosture = hasPosture;
    forgetOldest(agent);
}

// Those states whose values the histories would have dropped by now. In bulk, so that it costs
// nothing most of the time.
void ActorAttributes::forgetOldest(CSAgent& agent)
{
    const auto limit = static_cast<std::size_t>(std::max(CSAgent::m_historySize, 0));
    if (m_states.size() <= 2 * (limit + 1)) {
        return;
    }
    if (hasLongerHistory(agent, limit)) {
        makeUp(agent);
        return;
    }
    m_states.erase(m_states.begin(), m_states.end() - static_cast<std::ptrdiff_t>(limit + 1));
}

// Positions asked for in vain make a history longer than its limit; then every value counts.
bool ActorAttributes::hasLongerHistory(const CSAgent& agent, std::size_t limit)
{
    return std::any_of(
        agent.m_attributes.begin(), agent.m_attributes.end(), [limit](const auto& entry) {
            return entry.second != nullptr && entry.second->m_history.size() > limit;
        });
}

void ActorAttributes::makeUp(CSAgent& agent)
{
    // Setting looks for late attributes in turn.
    const std::vector<ActorState> states = std::exchange(m_states, {});
    for (const ActorState& state : states) {
        visitActorAttributes(
            state,
            [&]<typename Value>(std::type_identity<Value>, ActorAttribute attribute, auto... of) {
                if (isLate(attribute)) {
                    agent.set(
                        nameOf(attribute), std::make_shared<Value>(std::move(of)...), state.frame);
                }
            });
    }
}

} // namespace scenariomatch
