#include "app/SceneTracks.h"

#include "app/FrameClock.h"

namespace scenariomatch
{

SceneTracks::SceneTracks(const Scene& scene)
    : m_scene(scene)
{
    m_objects.reserve(scene.objects.size());
    for (const SceneObject& object : scene.objects) {
        m_objects.emplace_back(scene, object);
    }
    if (scene.crowd) {
        m_crowd.emplace(scene, *scene.crowd);
    }
}

bool SceneTracks::next(TrackFrame& frame)
{
    const std::int64_t time = m_scene.frameTime(m_nextFrame);
    if (time >= m_scene.duration) {
        return false;
    }
    frame.number = m_nextFrame++;
    frame.clock = millisecondsToClock(m_scene.start + time);
    frame.actors.clear();
    for (SceneObjectTrack& object : m_objects) {
        object.addTo(frame, time);
    }
    if (m_crowd) {
        m_crowd->addTo(frame, time);
    }
    return true;
}

} // namespace scenariomatch
