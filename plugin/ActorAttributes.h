#pragma once

#include "host/rhmDataActor.h"
#include "types/CSAgent.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace scenariomatch
{

// The attributes of an actor's agent, in the order in which they are set.
enum class ActorAttribute : std::size_t {
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

inline constexpr std::size_t kActorAttributes = 13;

const std::string& nameOf(ActorAttribute attribute);

// Some of the attributes.
using ActorAttributeSet = std::bitset<kActorAttributes>;

// What a frame says of an actor.
struct ActorState
{
    int frame = 0;
    int id = 0;
    BoundingBox2D box;
    Position3D position;
    Information3D size;
    // "Person", "Group" or "Mobile".
    const char* type = "";
    // 0 for who has none.
    int posture = 0;
};

// Calls visit(std::type_identity<Value>(), attribute, arguments...) for each of the actor's
// attributes, whose value is Value(arguments...).
template <typename Visit>
void visitActorAttributes(const ActorState& state, Visit visit)
{
    const auto& box = state.box;
    // Sums of what a tracker gives never overflow; as a value they wrap.
    const auto whole = [&visit](ActorAttribute attribute, std::int64_t value) {
        visit(std::type_identity<CSInt>(), attribute, static_cast<std::int32_t>(value));
    };
    const auto real = [&visit](ActorAttribute attribute, float value) {
        visit(std::type_identity<CSDouble>(), attribute, static_cast<double>(value));
    };
    const std::int64_t middle = std::int64_t{box.x} + box.width / 2;
    const std::int64_t bottom = std::int64_t{box.y} + box.height - 1;
    whole(ActorAttribute::Id, state.id);
    visit(
        std::type_identity<CS2DDPoint>(),
        ActorAttribute::Position2D,
        static_cast<double>(middle),
        static_cast<double>(bottom));
    whole(ActorAttribute::XMin, box.x);
    whole(ActorAttribute::XMax, std::int64_t{box.x} + box.width - 1);
    whole(ActorAttribute::YMin, box.y);
    whole(ActorAttribute::YMax, bottom);
    visit(
        std::type_identity<CS3DDPoint>(),
        ActorAttribute::Position,
        static_cast<double>(state.position.x),
        static_cast<double>(state.position.y),
        static_cast<double>(state.position.z));
    real(ActorAttribute::Width, state.size.getWidth());
    real(ActorAttribute::Height, state.size.getHeight());
    real(ActorAttribute::Depth, state.size.getDepth());
    real(ActorAttribute::Speed, 0.0F);
    visit(std::type_identity<CSString>(), ActorAttribute::Type, std::string(state.type));
    if (state.posture != 0) {
        whole(ActorAttribute::Posture, state.posture);
    }
}

// Those attributes of an actor's agent that recognition does not read: they are made into value
// objects when somebody looks.
//
// Remembers at most twice as many states as the agent's histories keep. The history size stays as
// it is while the agent lives.
class ActorAttributes : public LateAttributes
{
public:
    explicit ActorAttributes(ActorAttributeSet late)
        : m_late(late)
    {
    }

    bool isLate(ActorAttribute attribute) const
    {
        return m_late.test(static_cast<std::size_t>(attribute));
    }

    // Whether this round is another one than the last that was started.
    bool startRound(std::uint64_t round) { return std::exchange(m_round, round) != round; }

    // The actor's state in this frame.
    void renew(CSAgent& agent, const ActorState& state);

    void makeUp(CSAgent& agent) override;

    bool isRead() const override { return false; }

    CSPlainValue interval() const override { return {}; }

    CSPlainValue name() const override { return {}; }

private:
    void forgetOldest(CSAgent& agent);
    static bool hasLongerHistory(const CSAgent& agent, std::size_t limit);

    ActorAttributeSet m_late;
    std::vector<ActorState> m_states;
    std::uint64_t m_round = 0;
    // Whether there has been a state, and whether the last one had a posture.
    bool m_hasFirst = false;
    bool m_hasPosture = false;
};

} // namespace scenariomatch
