#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <deque>
#include <span>
#include <unordered_map>
#include <vector>

// What a programmer would write by hand for the questions of bench/crowd/: the floors that the
// engine is measured against. They answer exactly the same, frame by frame.
//
// A state that holds again after at most a second goes on; whatever happened is remembered for a
// minute. Times are milliseconds.
namespace scenariomatch
{

// Somebody in the current frame, and where he was in the one before.
struct FloorPerson
{
    int id = 0;
    double x = 0.0;
    double y = 0.0;
    double lastX = 0.0;
    double lastY = 0.0;
    bool wasThere = false;
};

struct FloorZone
{
    double left = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    double top = 0.0;
};

enum class FloorQuestion { NearLong, NearInA, Follow, AToB, ThreeNear };

// What is recognised in the current frame: the question, the people in the order in which it names
// them (0 for none), and since when it goes on.
struct FloorEvent
{
    FloorQuestion question = FloorQuestion::NearLong;
    std::array<int, 3> people{};
    std::int64_t begin = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): it takes the comparisons that are made for pointers
    friend auto operator<=>(const FloorEvent&, const FloorEvent&) = default;
};

using FloorEvents = std::vector<FloorEvent>;
using FloorPeople = std::span<const FloorPerson>;

// A relation of one or two people and what it compares with; the operator is called through a
// pointer. Conditions on one person look at p alone.
struct FloorCondition
{
    using Operator =
        bool (*)(const FloorPerson& p, const FloorPerson& q, const FloorCondition& condition);

    Operator holds = nullptr;
    double limit = 0.0;
    FloorZone zone;
};

// How long something has been going on, up to when it was seen last, and since when it counts.
struct FloorState
{
    std::int64_t begin = 0;
    std::int64_t end = 0;
    std::int64_t counts = -1;
};

// A state of two people that counts once it has lasted: all ordered pairs are tried.
class FloorPairModel
{
public:
    FloorPairModel(
        FloorQuestion question, std::vector<FloorCondition> conditions, std::int64_t leastDuration);

    void addFrame(FloorPeople people, std::int64_t now, FloorEvents& events);

private:
    void note(const FloorPerson& p, const FloorPerson& q, std::int64_t now, FloorEvents& events);

    FloorQuestion m_question;
    std::vector<FloorCondition> m_conditions;
    std::int64_t m_leastDuration;
    std::unordered_map<std::uint64_t, FloorState> m_states;
};

// Moments in the life of one person, such as the entering of a zone.
class FloorMomentModel
{
public:
    struct Moment
    {
        int person = 0;
        std::int64_t begin = 0;
        std::int64_t end = 0;
    };

    explicit FloorMomentModel(FloorCondition condition);

    // Notes who has such a moment now.
    void addFrame(FloorPeople people, std::int64_t now);

    // Those of the last minute; the ones that are now end now.
    const std::deque<Moment>& moments() const { return m_moments; }

    bool hasMoment() const { return m_hasMoment; }

private:
    void note(int person, std::int64_t now);

    FloorCondition m_condition;
    std::deque<Moment> m_moments;
    bool m_hasMoment = false;
};

// The four questions as a careful generic program answers them: people as structs, ordered
// permutations, the conditions tested one after the other through function pointers, the state of
// pairs in one hash map per model.
class PermFloor
{
public:
    PermFloor(const FloorZone& a, const FloorZone& b);

    // What is recognised in the frame; the same vector every time.
    const FloorEvents& addFrame(FloorPeople people, std::int64_t now);

private:
    void addFollow(std::int64_t now);
    void addAToB(std::int64_t now);

    FloorPairModel m_nearLong;
    FloorPairModel m_nearInA;
    FloorMomentModel m_entersA;
    FloorMomentModel m_leavesA;
    FloorMomentModel m_entersB;
    FloorEvents m_events;
};

// Three people mutually closer than two metres, each condition tested as soon as its people are
// bound.
class TriFloor
{
public:
    const FloorEvents& addFrame(FloorPeople people, std::int64_t now);

private:
    void
    findThird(FloorPeople people, const FloorPerson& p, const FloorPerson& q, std::int64_t now);
    void note(const FloorPerson& p, const FloorPerson& q, const FloorPerson& r, std::int64_t now);

    std::unordered_map<std::uint64_t, FloorState> m_states;
    FloorEvents m_events;
};

} // namespace scenariomatch
