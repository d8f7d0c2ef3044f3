#pragma once

#include "app/Scene.h"
#include "app/SceneCrowdTrack.h"
#include "app/SceneObjectTrack.h"
#include "app/TrackFrame.h"

#include <optional>
#include <vector>

namespace scenariomatch
{

// Makes the frames of a scene one after the other, in a memory that does not grow with their
// number.
//
// The scene must outlive it. Frames count from 0; frames in which nothing is seen are made as well.
//
// Example:
//     SceneTracks tracks(scene);
//     TrackFrame frame;
//     while (tracks.next(frame)) { writer.write(frame); }
class SceneTracks
{
public:
    explicit SceneTracks(const Scene& scene);

    // Replaces the frame by the next one; false at the end of the scene.
    bool next(TrackFrame& frame);

private:
    const Scene& m_scene;
    int m_nextFrame = 0;
    std::vector<SceneObjectTrack> m_objects;
    std::optional<SceneCrowdTrack> m_crowd;
};

} // namespace scenariomatch
