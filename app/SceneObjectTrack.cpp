#include "app/SceneObjectTrack.h"

#include "app/SceneActor.h"

#include <algorithm>

namespace scenariomatch
{

SceneObjectTrack::SceneObjectTrack(const Scene& scene, const SceneObject& object)
    : m_scene(scene)
    , m_object(object)
    , m_random(scene.seed, static_cast<std::uint64_t>(object.id))
{
}

void SceneObjectTrack::addTo(TrackFrame& frame, std::int64_t time)
{
    if (!exists(time)) {
        return;
    }
    ScenePosition place = placeAt(time);
    // Always the same draws, so that a gap does not change the noise behind it.
    place.x += m_random.between(-m_object.jitter, m_object.jitter);
    place.y += m_random.between(-m_object.jitter, m_object.jitter);
    const bool isMissed = m_random.isChosen(m_object.missed);
    if (isMissed || isHidden(time)) {
        return;
    }
    TrackedActor& actor = frame.actors.emplace_back();
    actor.id = idAt(time);
    actor.type = m_object.type;
    placeActor(actor, m_scene, place, m_object.size, m_object.path[m_passed].pose);
}

bool SceneObjectTrack::exists(std::int64_t time) const
{
    return time >= m_object.path.front().time && time <= m_object.path.back().time;
}

bool SceneObjectTrack::isHidden(std::int64_t time) const
{
    return std::any_of(m_object.gaps.begin(), m_object.gaps.end(), [time](const SceneSpan& gap) {
        return time >= gap.from && time < gap.to;
    });
}

ScenePosition SceneObjectTrack::placeAt(std::int64_t time)
{
    const std::vector<SceneWayPoint>& path = m_object.path;
    while (m_passed + 1 < path.size() && path[m_passed + 1].time <= time) {
        ++m_passed;
    }
    const SceneWayPoint& from = path[m_passed];
    if (m_passed + 1 == path.size()) {
        return from.position;
    }
    const SceneWayPoint& to = path[m_passed + 1];
    const std::int64_t gone = time - from.time;
    const std::int64_t whole = to.time - from.time;
    const auto between = [gone, whole](std::int64_t a, std::int64_t b) {
        return a + divideRounded((b - a) * gone, whole);
    };
    return {
        between(from.position.x, to.position.x),
        between(from.position.y, to.position.y),
        between(from.position.z, to.position.z)};
}

int SceneObjectTrack::idAt(std::int64_t time) const
{
    int id = m_object.id;
    for (const SceneIdentity& identity : m_object.switches) {
        if (identity.time <= time) {
            id = identity.id;
        }
    }
    return id;
}

} // namespace scenariomatch
