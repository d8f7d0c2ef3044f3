#include "app/SceneActor.h"

#include <algorithm>

namespace scenariomatch
{

namespace
{

constexpr std::int64_t kThousand = 1000;
constexpr std::int64_t kMillion = kThousand * kThousand;

// Whole pixels of a length; a box is never empty.
int pixels(std::int64_t length, std::int64_t divisor)
{
    return static_cast<int>(std::max<std::int64_t>(divideRounded(length, divisor), 1));
}

float metres(std::int64_t thousandths)
{
    return static_cast<float>(static_cast<double>(thousandths) / 1000.0);
}

float roundedToCentimetre(std::int64_t thousandths)
{
    return static_cast<float>(static_cast<double>(divideRounded(thousandths, 10)) / 100.0);
}

void placePixels(TrackedActor& actor, const ScenePosition& place, const SceneSize& size)
{
    actor.box.width = pixels(size.width, kThousand);
    actor.box.height = pixels(size.height, kThousand);
    actor.box.x =
        static_cast<int>(divideRounded(2 * place.x - actor.box.width * kThousand, 2 * kThousand));
    actor.box.y = static_cast<int>(divideRounded(place.y, kThousand)) - actor.box.height;
    const double middle = actor.box.x + actor.box.width / 2.0;
    actor.position = TrackPoint{
        static_cast<float>(middle), static_cast<float>(actor.box.y + actor.box.height), 0.0F};
    actor.size.reset();
}

void placeMetres(
    TrackedActor& actor,
    std::int64_t pixelsPerMetre,
    const ScenePosition& place,
    const SceneSize& size)
{
    actor.box.width = pixels(size.width * pixelsPerMetre, kMillion);
    actor.box.height = pixels(size.height * pixelsPerMetre, kMillion);
    actor.box.x =
        static_cast<int>(divideRounded((2 * place.x - size.width) * pixelsPerMetre, 2 * kMillion));
    actor.box.y =
        static_cast<int>(divideRounded(place.y * pixelsPerMetre, kMillion)) - actor.box.height;
    actor.position = TrackPoint{
        roundedToCentimetre(place.x), roundedToCentimetre(place.y), roundedToCentimetre(place.z)};
    actor.size = TrackSize{metres(size.width), metres(size.height), metres(size.depth)};
}

} // namespace

std::int64_t divideRounded(std::int64_t dividend, std::int64_t divisor)
{
    const std::int64_t doubled = 2 * dividend + divisor;
    const std::int64_t quotient = doubled / (2 * divisor);
    return doubled % (2 * divisor) < 0 ? quotient - 1 : quotient;
}

void placeActor(
    TrackedActor& actor,
    const Scene& scene,
    const ScenePosition& place,
    const SceneSize& size,
    ScenePose pose)
{
    SceneSize seen = size;
    if (pose == ScenePose::Lying) {
        std::swap(seen.width, seen.height);
    }
    if (scene.unit == SceneUnit::Pixel) {
        placePixels(actor, place, seen);
    } else {
        placeMetres(actor, scene.pixelsPerMetre, place, seen);
    }
}

} // namespace scenariomatch
