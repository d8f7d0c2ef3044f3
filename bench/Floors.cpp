#include "bench/Floors.h"

#include <algorithm>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr std::int64_t kSecond = 1000;
// What is seen again after so long goes on.
constexpr std::int64_t kProlongation = 1 * kSecond;
// What happened is remembered for so long.
constexpr std::int64_t kWindow = 60 * kSecond;
constexpr double kNear = 2.0;
constexpr double kNearInA = 1.5;
constexpr std::int64_t kLong = 3 * kSecond;
constexpr std::int64_t kFollowsWithin = 2 * kSecond;

bool areCloser(const FloorPerson& p, const FloorPerson& q, double limit)
{
    const double dx = q.x - p.x;
    const double dy = q.y - p.y;
    return dx * dx + dy * dy < limit * limit;
}

// The border is inside.
bool isInside(double x, double y, const FloorZone& zone)
{
    return x >= zone.left && x <= zone.right && y >= zone.bottom && y <= zone.top;
}

// For comings and goings a place on the border is the place next to it, towards greater x and y.
bool isWithin(double x, double y, const FloorZone& zone)
{
    return x >= zone.left && x < zone.right && y >= zone.bottom && y < zone.top;
}

// The operators

bool isCloser(const FloorPerson& p, const FloorPerson& q, const FloorCondition& condition)
{
    return areCloser(p, q, condition.limit);
}

bool isFirstInside(const FloorPerson& p, const FloorPerson& /*q*/, const FloorCondition& condition)
{
    return isInside(p.x, p.y, condition.zone);
}

bool isSecondInside(const FloorPerson& /*p*/, const FloorPerson& q, const FloorCondition& condition)
{
    return isInside(q.x, q.y, condition.zone);
}

bool enters(const FloorPerson& p, const FloorPerson& /*q*/, const FloorCondition& condition)
{
    return p.wasThere && isWithin(p.x, p.y, condition.zone) &&
           !isWithin(p.lastX, p.lastY, condition.zone);
}

bool leaves(const FloorPerson& p, const FloorPerson& /*q*/, const FloorCondition& condition)
{
    return p.wasThere && !isWithin(p.x, p.y, condition.zone) &&
           isWithin(p.lastX, p.lastY, condition.zone);
}

// The states

using States = std::unordered_map<std::uint64_t, FloorState>;

// Ids of people are positive and below two millions.
std::uint64_t keyOf(int p, int q, int r = 0)
{
    constexpr unsigned kBits = 21;
    return static_cast<std::uint64_t>(p) << (2 * kBits) | static_cast<std::uint64_t>(q) << kBits |
           static_cast<std::uint64_t>(r);
}

// The state for the key, which holds now: an earlier one that goes on, or a new one.
FloorState& extended(States& states, std::uint64_t key, std::int64_t now)
{
    FloorState& state = states.try_emplace(key, FloorState{now, now}).first->second;
    if (now - state.end > kProlongation) {
        state = {now, now};
    }
    state.end = now;
    return state;
}

// Once a second is often enough to forget what cannot go on any more.
void forgetOld(States& states, std::int64_t now)
{
    if (now % kSecond == 0) {
        std::erase_if(
            states, [now](const auto& entry) { return now - entry.second.end > kProlongation; });
    }
}

} // namespace

FloorPairModel::FloorPairModel(
    FloorQuestion question, std::vector<FloorCondition> conditions, std::int64_t leastDuration)
    : m_question(question)
    , m_conditions(std::move(conditions))
    , m_leastDuration(leastDuration)
{
}

void FloorPairModel::addFrame(FloorPeople people, std::int64_t now, FloorEvents& events)
{
    for (const FloorPerson& p : people) {
        for (const FloorPerson& q : people) {
            const bool holds =
                &p != &q &&
                std::all_of(
                    m_conditions.begin(), m_conditions.end(), [&](const FloorCondition& condition) {
                        return condition.holds(p, q, condition);
                    });
            if (holds) {
                note(p, q, now, events);
            }
        }
    }
    forgetOld(m_states, now);
}

void FloorPairModel::note(
    const FloorPerson& p, const FloorPerson& q, std::int64_t now, FloorEvents& events)
{
    FloorState& state = extended(m_states, keyOf(p.id, q.id), now);
    if (now - state.begin < m_leastDuration) {
        return;
    }
    if (state.counts < 0) {
        state.counts = now;
    }
    events.push_back({m_question, {p.id, q.id}, state.counts});
}

FloorMomentModel::FloorMomentModel(FloorCondition condition)
    : m_condition(condition)
{
}

void FloorMomentModel::addFrame(FloorPeople people, std::int64_t now)
{
    m_hasMoment = false;
    for (const FloorPerson& p : people) {
        if (m_condition.holds(p, p, m_condition)) {
            note(p.id, now);
            m_hasMoment = true;
        }
    }
    if (now % kSecond == 0) {
        std::erase_if(
            m_moments, [now](const Moment& moment) { return now - moment.end > kWindow; });
    }
}

void FloorMomentModel::note(int person, std::int64_t now)
{
    const auto earlier =
        std::find_if(m_moments.rbegin(), m_moments.rend(), [&](const Moment& moment) {
            return moment.person == person && now - moment.end <= kProlongation;
        });
    if (earlier != m_moments.rend()) {
        earlier->end = now;
    } else {
        m_moments.push_back({person, now, now});
    }
}

PermFloor::PermFloor(const FloorZone& a, const FloorZone& b)
    : m_nearLong(FloorQuestion::NearLong, {{isCloser, kNear, {}}}, kLong)
    , m_nearInA(
          FloorQuestion::NearInA,
          {{isFirstInside, 0.0, a}, {isSecondInside, 0.0, a}, {isCloser, kNearInA, {}}},
          0)
    , m_entersA({enters, 0.0, a})
    , m_leavesA({leaves, 0.0, a})
    , m_entersB({enters, 0.0, b})
{
}

const FloorEvents& PermFloor::addFrame(FloorPeople people, std::int64_t now)
{
    m_events.clear();
    m_nearLong.addFrame(people, now, m_events);
    m_nearInA.addFrame(people, now, m_events);
    m_entersA.addFrame(people, now);
    m_leavesA.addFrame(people, now);
    m_entersB.addFrame(people, now);
    if (m_entersA.hasMoment()) {
        addFollow(now);
    }
    if (m_entersB.hasMoment()) {
        addAToB(now);
    }
    return m_events;
}

// p enters A, then another q does so within two seconds.
void PermFloor::addFollow(std::int64_t now)
{
    for (const auto& second : m_entersA.moments()) {
        if (second.end != now) {
            continue;
        }
        for (const auto& first : m_entersA.moments()) {
            const std::int64_t gap = second.begin - first.end;
            if (gap > 0 && gap <= kFollowsWithin && now - first.end <= kWindow &&
                first.person != second.person) {
                m_events.push_back(
                    {FloorQuestion::Follow, {first.person, second.person}, first.begin});
            }
        }
    }
}

// p leaves A, then enters B within a minute.
void PermFloor::addAToB(std::int64_t now)
{
    for (const auto& second : m_entersB.moments()) {
        if (second.end != now) {
            continue;
        }
        for (const auto& first : m_leavesA.moments()) {
            if (first.person == second.person && second.begin > first.end &&
                now - first.end <= kWindow) {
                m_events.push_back({FloorQuestion::AToB, {first.person}, first.begin});
            }
        }
    }
}

const FloorEvents& TriFloor::addFrame(FloorPeople people, std::int64_t now)
{
    m_events.clear();
    for (const FloorPerson& p : people) {
        for (const FloorPerson& q : people) {
            if (&q != &p && areCloser(p, q, kNear)) {
                findThird(people, p, q, now);
            }
        }
    }
    forgetOld(m_states, now);
    return m_events;
}

void TriFloor::findThird(
    FloorPeople people, const FloorPerson& p, const FloorPerson& q, std::int64_t now)
{
    for (const FloorPerson& r : people) {
        if (&r != &p && &r != &q && areCloser(p, r, kNear) && areCloser(q, r, kNear)) {
            note(p, q, r, now);
        }
    }
}

void TriFloor::note(
    const FloorPerson& p, const FloorPerson& q, const FloorPerson& r, std::int64_t now)
{
    const FloorState& state = extended(m_states, keyOf(p.id, q.id, r.id), now);
    m_events.push_back({FloorQuestion::ThreeNear, {p.id, q.id, r.id}, state.begin});
}

} // namespace scenariomatch
