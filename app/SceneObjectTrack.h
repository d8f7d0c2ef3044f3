#pragma once

#include "app/Scene.h"
#include "app/SceneRandom.h"
#include "app/TrackFrame.h"

#include <cstddef>

namespace scenariomatch
{

// One object of a scene, moved on from frame to frame.
//
// Scene and object must outlive it.
class SceneObjectTrack
{
public:
    SceneObjectTrack(const Scene& scene, const SceneObject& object);

    // Appends the object as it is seen at the time, when it is seen. Times must not go back.
    void addTo(TrackFrame& frame, std::int64_t time);

private:
    bool exists(std::int64_t time) const;
    bool isHidden(std::int64_t time) const;
    ScenePosition placeAt(std::int64_t time);
    int idAt(std::int64_t time) const;

    const Scene& m_scene;
    const SceneObject& m_object;
    SceneRandom m_random;
    // The way point that was passed last.
    std::size_t m_passed = 0;
};

} // namespace scenariomatch
