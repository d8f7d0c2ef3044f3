#pragma once

#include "app/Scene.h"
#include "app/TrackFrame.h"

namespace scenariomatch
{

// The quotient rounded to the nearest whole number, halves upwards; the divisor is positive.
std::int64_t divideRounded(std::int64_t dividend, std::int64_t divisor);

// Puts an object at its place into the actor: box, position and, in metre scenes, size.
//
// In a pixel scene the box stands on the place, and the position is the middle of its lower edge.
// In a metre scene the position is the place, rounded to the centimetre, and the box is an upright
// view on a scale of pixels per metre.
void placeActor(
    TrackedActor& actor,
    const Scene& scene,
    const ScenePosition& place,
    const SceneSize& size,
    ScenePose pose);

} // namespace scenariomatch
