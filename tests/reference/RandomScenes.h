#pragma once

#include "tests/reference/Duel.h"
#include "tests/reference/Random.h"

#include <cstdint>
#include <string>
#include <vector>

namespace scenariomatch
{

// Makes up the frames of one scene: objects that wander, come and go, on ground that is a small
// grid, a field with rounding errors, or full of values that are no positions; a clock that stands
// still or goes back now and then.
class RandomScene
{
public:
    // Few actors where recognition tries many combinations of them.
    RandomScene(Random& random, int mostActors);

    const Duel::Settings& settings() const { return m_settings; }

    // The zones that there are from the start.
    std::vector<SceneObject> zones();
    // Moves on to the next frame.
    void next(SceneFrame& frame);

private:
    enum class Ground : std::uint8_t {
        Grid,
        Field,
        Wide,
        Odd,
    };

    void passTime(SceneFrame& frame);
    SceneObject moved(SceneObject& actor);
    SceneValue position(const SceneObject& actor);
    SceneValue oddPosition();
    SceneObject zone(int host);

    Random& m_random;
    Duel::Settings m_settings;
    Ground m_ground;
    int m_absent;
    bool m_mayGoBack;
    int m_zones;
    std::vector<SceneObject> m_actors;
    // Where the actors are, in steps.
    std::vector<std::pair<int, int>> m_places;
};

} // namespace scenariomatch
