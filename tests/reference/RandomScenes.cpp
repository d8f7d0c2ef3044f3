#include "tests/reference/RandomScenes.h"

#include <cmath>
#include <limits>

namespace scenariomatch
{

namespace
{

using Kind = SceneValue::Kind;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Duel::Settings randomSettings(Random& random)
{
    return {
        .prolongation = random.of<double>({-1.0, 0.0, 1.0, 1.0, 5.0}),
        .timeSearch = random.of<double>({0.0, 1.0, 2.0, 3.0, 600.0}),
        .bayesianRatio = random.of<double>({1.0, 1.0, 1.0, 2.0, 0.8}),
        .historySize = 1 + random.pick(3)};
}

} // namespace

RandomScene::RandomScene(Random& random, int mostActors)
    : m_random(random)
    , m_settings(randomSettings(random))
    , m_ground(random.of<Ground>(
          {Ground::Grid, Ground::Grid, Ground::Grid, Ground::Field, Ground::Wide, Ground::Odd}))
    , m_absent(2 + random.pick(4))
    , m_mayGoBack(random.oneIn(8))
    , m_zones(random.pick(3))
{
    const int actors = 1 + random.pick(mostActors);
    for (int host = 0; host < actors; ++host) {
        m_actors.push_back(
            {.host = host,
             .type = random.of<std::string>({"Person", "Person", "Person", "Child", "Bag"}),
             .attributes = {}});
        m_places.emplace_back(random.pick(5), random.pick(3));
    }
}

SceneObject RandomScene::zone(int host)
{
    const auto x = static_cast<double>(m_random.pick(4));
    const SceneValue place = m_random.oneIn(2) ? SceneValue{.kind = Kind::Polygon, .x = x, .y = 1.0}
                                               : SceneValue{.kind = Kind::Point, .x = x, .y = 0.0};
    return {
        .host = host,
        .type = m_random.oneIn(10) ? "Person" : "Zone",
        .attributes = {{"P", {.kind = Kind::Number, .x = x}}, {"X", place}}};
}

std::vector<SceneObject> RandomScene::zones()
{
    std::vector<SceneObject> zones;
    zones.reserve(static_cast<std::size_t>(m_zones));
    for (int host = 0; host < m_zones; ++host) {
        zones.push_back(zone(host));
    }
    return zones;
}

SceneValue RandomScene::oddPosition()
{
    const double x = m_random.of<double>({0.0, 1.0, 1.0, 2.0, kNaN, kInfinity, -kInfinity, 1e200});
    const double y = m_random.of<double>({0.0, 0.0, 1.0, kNaN});
    const double z = m_random.of<double>({0.0, 0.0, 1.0, kNaN, kInfinity});
    const auto whole = static_cast<double>(m_random.pick(3));
    return m_random.of<SceneValue>(
        {{.kind = Kind::Point, .x = x, .y = y},
         {.kind = Kind::Point, .x = whole, .y = 0.0},
         {.kind = Kind::HighPoint, .x = x, .y = y, .z = z},
         {.kind = Kind::HighPoint, .x = whole, .y = 0.0, .z = 1.0},
         {.kind = Kind::WholePoint, .x = whole, .y = 0.0},
         {.kind = Kind::WholeHighPoint, .x = whole, .y = 1.0},
         {.kind = Kind::Polygon, .x = whole, .y = 1.0},
         {.kind = Kind::NoCorners},
         {.kind = Kind::Number, .x = whole},
         {.kind = Kind::Text, .x = 1.0},
         {.kind = Kind::MistaggedNumber, .x = whole},
         {.kind = Kind::MistaggedPoint, .x = whole, .y = 0.0}});
}

SceneValue RandomScene::position(const SceneObject& actor)
{
    const auto& [east, north] = m_places[static_cast<std::size_t>(actor.host)];
    switch (m_ground) {
    case Ground::Grid:
        return {
            .kind = Kind::Point, .x = static_cast<double>(east), .y = static_cast<double>(north)};
    case Ground::Field:
        return {
            .kind = m_random.oneIn(4) ? Kind::HighPoint : Kind::Point,
            .x = east * 0.1,
            .y = north * 0.3,
            .z = m_random.pick(3) * 0.7};
    case Ground::Wide:
        return {.kind = Kind::Point, .x = east * 3.1 - 5.0, .y = north * 40.0};
    case Ground::Odd:
        break;
    }
    return oddPosition();
}

// Sets most of the attributes, each in most of the frames.
SceneObject RandomScene::moved(SceneObject& actor)
{
    auto& [east, north] = m_places[static_cast<std::size_t>(actor.host)];
    if (!m_random.oneIn(3)) {
        east += m_random.pick(3) - 1;
        north += m_random.pick(4) == 0 ? 1 : 0;
    }
    SceneObject seen = actor;
    if (m_random.oneIn(20)) {
        seen.type = "Child";
    }
    seen.seen = !m_random.oneIn(40);
    const auto set = [&](const char* name, int every, const SceneValue& value) {
        if (m_random.pick(every) != 0) {
            seen.attributes.emplace_back(name, value);
        }
    };
    const bool isOdd = m_ground == Ground::Odd && m_random.oneIn(4);
    set("P", 20, isOdd ? oddPosition() : SceneValue{.x = static_cast<double>(east)});
    set("X", 10, position(actor));
    set("R",
        2,
        {.kind = m_random.oneIn(2) ? Kind::Number : Kind::WholeNumber,
         .x = static_cast<double>(m_random.pick(3))});
    if (m_random.oneIn(3)) {
        set("Y", 2, position(actor));
        set("F", 2, {.kind = Kind::Truth, .x = m_random.pick(3) == 0 ? 0.0 : 1.0, .y = 0.8});
        set("T", 2, {.kind = Kind::Text, .x = m_random.pick(2) == 0 ? 0.0 : 1.0});
    }
    return seen;
}

void RandomScene::passTime(SceneFrame& frame)
{
    constexpr double kSecond = 1000.0;
    static const std::vector<double> kSteps{
        0.0, 250.0, 1000.0, 1000.0, 1000.0, 1250.0, 2000.0, 3000.0};
    frame.number += m_random.oneIn(30) ? 0 : 1;
    if (m_mayGoBack && m_random.oneIn(6)) {
        frame.number -= 1 + m_random.pick(3);
    }
    const bool goesBack = m_mayGoBack && m_random.oneIn(4);
    frame.milliseconds += goesBack ? -1500.0 : m_random.of(kSteps);
    const double whole = std::floor(frame.milliseconds / kSecond);
    frame.seconds += whole;
    frame.milliseconds -= whole * kSecond;
}

void RandomScene::next(SceneFrame& frame)
{
    passTime(frame);
    frame.constants.clear();
    frame.actors.clear();
    if (m_zones > 0 && m_random.oneIn(10)) {
        frame.constants.push_back(zone(m_random.pick(m_zones)));
    }
    for (SceneObject& actor : m_actors) {
        const SceneObject seen = moved(actor);
        if (m_random.oneIn(m_absent)) {
            continue;
        }
        frame.actors.push_back(seen);
        if (m_random.oneIn(60)) {
            frame.actors.push_back(moved(actor));
        }
    }
}

} // namespace scenariomatch
