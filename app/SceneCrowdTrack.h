#pragma once

#include "app/Scene.h"
#include "app/SceneRandom.h"
#include "app/TrackFrame.h"

#include <vector>

namespace scenariomatch
{

// The people of a scene's crowd, moved on from frame to frame.
//
// Each walks in a straight line to a random place of the hall, may stand there for a while, and
// walks on. Everyone is seen in every frame. Scene and crowd must outlive it.
class SceneCrowdTrack
{
public:
    SceneCrowdTrack(const Scene& scene, const SceneCrowd& crowd);

    // Appends everyone in the order of their ids. Times must not go back.
    void addTo(TrackFrame& frame, std::int64_t time);

private:
    struct Walker
    {
        explicit Walker(const SceneRandom& stream)
            : random(stream)
        {
        }

        SceneRandom random;
        ScenePosition from;
        ScenePosition to;
        // Walks from departure to arrival, then stands until rested.
        std::int64_t departure = 0;
        std::int64_t arrival = 0;
        std::int64_t rested = 0;
    };

    ScenePosition randomPlace(SceneRandom& random) const;
    void startLeg(Walker& walker) const;

    const Scene& m_scene;
    const SceneCrowd& m_crowd;
    // Of the hall.
    std::int64_t m_width;
    std::int64_t m_height;
    std::vector<Walker> m_walkers;
};

} // namespace scenariomatch
