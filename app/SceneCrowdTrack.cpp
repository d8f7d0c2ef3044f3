#include "app/SceneCrowdTrack.h"

#include "app/SceneActor.h"

#include <algorithm>
#include <cmath>

namespace scenariomatch
{

namespace
{

// The whole part of the square root; the library's result is only where the search begins.
std::int64_t squareRoot(std::int64_t number)
{
    auto root = static_cast<std::int64_t>(std::sqrt(static_cast<double>(number)));
    while (root * root > number) {
        --root;
    }
    while ((root + 1) * (root + 1) <= number) {
        ++root;
    }
    return root;
}

std::int64_t distance(const ScenePosition& a, const ScenePosition& b)
{
    const std::int64_t x = a.x - b.x;
    const std::int64_t y = a.y - b.y;
    return squareRoot(x * x + y * y);
}

} // namespace

SceneCrowdTrack::SceneCrowdTrack(const Scene& scene, const SceneCrowd& crowd)
    : m_scene(scene)
    , m_crowd(crowd)
{
    // Square metres in thousandths are thousands of square millimetres.
    const std::int64_t area = crowd.people * crowd.areaPerPerson * 1000;
    m_width = squareRoot(area * crowd.aspect[0] / crowd.aspect[1]);
    m_height = squareRoot(area * crowd.aspect[1] / crowd.aspect[0]);
    m_walkers.reserve(static_cast<std::size_t>(crowd.people));
    for (int i = 0; i < crowd.people; ++i) {
        const auto stream =
            static_cast<std::uint64_t>(crowd.firstId) + static_cast<std::uint64_t>(i);
        Walker walker(SceneRandom(scene.seed, stream));
        walker.to = randomPlace(walker.random);
        m_walkers.push_back(walker);
    }
}

void SceneCrowdTrack::addTo(TrackFrame& frame, std::int64_t time)
{
    int id = m_crowd.firstId;
    for (Walker& walker : m_walkers) {
        while (time >= walker.rested) {
            startLeg(walker);
        }
        const std::int64_t whole = walker.arrival - walker.departure;
        const std::int64_t gone = std::min(time - walker.departure, whole);
        const ScenePosition place{
            walker.from.x + divideRounded((walker.to.x - walker.from.x) * gone, whole),
            walker.from.y + divideRounded((walker.to.y - walker.from.y) * gone, whole),
            0};
        TrackedActor& actor = frame.actors.emplace_back();
        actor.id = id++;
        actor.type = m_crowd.type;
        placeActor(actor, m_scene, place, m_crowd.size, ScenePose::Standing);
    }
}

ScenePosition SceneCrowdTrack::randomPlace(SceneRandom& random) const
{
    const std::int64_t x = random.between(0, m_width);
    const std::int64_t y = random.between(0, m_height);
    return {x, y, 0};
}

void SceneCrowdTrack::startLeg(Walker& walker) const
{
    walker.departure = walker.rested;
    walker.from = walker.to;
    walker.to = randomPlace(walker.random);
    const bool isFast = walker.random.isChosen(m_crowd.fastLegs);
    const auto& speeds = isFast ? m_crowd.fastSpeeds : m_crowd.speeds;
    const std::int64_t speed = walker.random.between(speeds[0], speeds[1]);
    const std::int64_t walking = divideRounded(distance(walker.from, walker.to) * 1000, speed);
    walker.arrival = walker.departure + std::max<std::int64_t>(walking, 1);
    const bool isStop = walker.random.isChosen(m_crowd.stops);
    const std::int64_t pause = walker.random.between(m_crowd.stopTimes[0], m_crowd.stopTimes[1]);
    walker.rested = walker.arrival + (isStop ? pause : 0);
}

} // namespace scenariomatch
