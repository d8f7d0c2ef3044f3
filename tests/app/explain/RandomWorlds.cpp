#include "tests/app/explain/RandomWorlds.h"

#include "tests/reference/Random.h"

#include <algorithm>

namespace scenariomatch
{

namespace
{

constexpr double kHundredth = 0.01;

// In hundredths, so that limits are met exactly now and then.
double between(Random& random, double least, double most)
{
    const int steps = static_cast<int>((most - least) / kHundredth);
    return least + kHundredth * random.pick(steps + 1);
}

std::string comparison(Random& random)
{
    return random.of<std::string>({" < ", " <= ", " > ", " >= "});
}

WorldConstraint measured(Random& random, const std::string& measure, double least, double most)
{
    return {measure + comparison(random), between(random, least, most), ""};
}

WorldConstraint constraintOfPair(Random& random)
{
    if (random.oneIn(2)) {
        return {"near(p->Position, q->Position, ", between(random, 0.5, 4), ")"};
    }
    return measured(random, "distance(p->Position, q->Position)", 0.5, 6);
}

WorldConstraint constraintOfZone(Random& random, const std::string& person)
{
    const std::string place = person + "->Position";
    switch (random.pick(4)) {
    case 0:
        return {"z->Name = ", std::nullopt, random.oneIn(2) ? "A" : "B"};
    case 1:
        return measured(random, "distance(" + place + ", z->Vertices)", 0, 3);
    case 2:
        return {place + " in z->Vertices", std::nullopt, ""};
    default:
        return {place + " out z->Vertices", std::nullopt, ""};
    }
}

WorldConstraint constraintOfPerson(Random& random, const std::string& person)
{
    const std::string place = person + "->Position";
    switch (random.pick(4)) {
    case 0:
        return measured(random, "speed(" + place + ", 0.12)", 0, 20);
    case 1:
        return measured(random, "displacement(" + place + ", 0.12)", 0, 2);
    case 2:
        return measured(random, "heading(" + place + ", 0.12)", 0, 350);
    default:
        return {"stationary(" + place + ", 0.12, ", between(random, 0.1, 2), ")"};
    }
}

WorldConstraint anyConstraint(Random& random, const std::string& person, bool isPair, bool hasZone)
{
    const int choice = random.pick(3);
    if (isPair && choice == 0) {
        return constraintOfPair(random);
    }
    return hasZone && choice == 1 ? constraintOfZone(random, person)
                                  : constraintOfPerson(random, person);
}

WorldZone randomZone(Random& random, const std::string& name)
{
    const double left = between(random, 0, 6);
    const double bottom = between(random, 0, 6);
    return {name, left, bottom, left + between(random, 1, 4), bottom + between(random, 1, 4)};
}

// Who is out of view and part of no event is forgotten, with the positions before: where those
// count, another limit may mean other positions.
bool readsHistory(const WorldModel& model)
{
    return std::any_of(
        model.constraints.begin(), model.constraints.end(), [](const WorldConstraint& one) {
            return one.before.find("0.12") != std::string::npos;
        });
}

void addWalk(Random& random, World& world, int person, bool hasGaps)
{
    double x = between(random, 0, 10);
    double y = between(random, 0, 10);
    for (int frame = 0; frame < world.frames; ++frame) {
        x += between(random, -1, 1);
        y += between(random, -1, 1);
        if (!hasGaps || !random.oneIn(12)) {
            world.tracks[person][frame] = {x, y};
        }
    }
}

// Outside, then in the middle of the zone from one frame to another, then outside.
void addStay(Random& random, World& world, int person, const WorldZone& zone)
{
    const int begin = random.pick(world.frames - 2);
    const int end = begin + random.pick(world.frames - 1 - begin);
    const double x = (zone.left + zone.right) / 2;
    const double y = (zone.bottom + zone.top) / 2;
    const double off = random.oneIn(4) ? between(random, 3, 9) : 50;
    const bool isEver = !random.oneIn(8);
    for (int frame = 0; frame < world.frames; ++frame) {
        const bool isIn = isEver && frame >= begin && frame <= end;
        world.tracks[person][frame] = {isIn ? x : zone.right + off, y};
    }
}

WorldModel stay(const std::string& name, const std::string& zone)
{
    return {
        "PrimitiveState",
        name,
        std::nullopt,
        "(p : Person)(z : Zone)",
        "",
        {{"z->Name = ", std::nullopt, zone}, {"p->Position in z->Vertices", std::nullopt, ""}}};
}

WorldConstraint constraintOfTimes(Random& random)
{
    switch (random.pick(5)) {
    case 0:
        return measured(random, "duration(c1->Interval)", 0, 0.8);
    case 1:
        return measured(random, "duration(c2->Interval)", 0, 0.8);
    case 2:
        return measured(random, "gap(c1->Interval, c2->Interval)", -0.5, 0.8);
    case 3:
        return {"c1->Interval before c2->Interval", std::nullopt, ""};
    default:
        return {
            "c1->Interval " +
                random.of<std::string>({"overlaps", "meets", "during", "starts", "finishes"}) +
                " c2->Interval",
            std::nullopt,
            ""};
    }
}

} // namespace

World randomPrimitiveWorld(std::uint32_t seed)
{
    Random random(seed);
    World world;
    world.frames = 4 + random.pick(8);
    world.zones = {randomZone(random, "A"), randomZone(random, "B")};
    const bool isPair = !random.oneIn(3);
    const bool hasZone = random.oneIn(2);
    WorldModel asked;
    asked.name = "Asked";
    asked.objects = std::string("(p : Person)") + (isPair ? "(q : Person)" : "") +
                    (hasZone ? "(z : Zone)" : "");
    const int constraints = 1 + random.pick(4);
    for (int i = 0; i < constraints; ++i) {
        const std::string person = isPair && random.oneIn(2) ? "q" : "p";
        asked.constraints.push_back(anyConstraint(random, person, isPair, hasZone));
    }
    if (random.oneIn(8)) {
        world.bayesianRatio = 2.0;
        asked.threshold = between(random, 0.51, 1.5);
    }
    world.models.push_back(asked);
    const int people = 1 + (isPair ? 1 : 0) + random.pick(2);
    for (int person = 1; person <= people; ++person) {
        addWalk(random, world, person, !readsHistory(asked));
    }
    return world;
}

World randomCompositeWorld(std::uint32_t seed)
{
    Random random(seed);
    World world;
    world.frames = 8 + random.pick(24);
    world.zones = {{"A", 0, 0, 4, 4}, {"B", 200, 200, 204, 204}};
    world.models = {stay("InA", "A"), stay("InB", "B")};
    WorldModel asked;
    asked.kind = "CompositeEvent";
    asked.name = "Asked";
    asked.objects = "(p : Person)(q : Person)(a : Zone)(b : Zone)";
    asked.components = "(c1 : PrimitiveState InA(p, a))(c2 : PrimitiveState InB(q, b))";
    const int constraints = 1 + random.pick(3);
    for (int i = 0; i < constraints; ++i) {
        asked.constraints.push_back(constraintOfTimes(random));
    }
    world.models.push_back(asked);
    addStay(random, world, 1, world.zone("A"));
    addStay(random, world, 2, world.zone("B"));
    if (random.oneIn(6)) {
        world.lookBack = between(random, 0.04, 0.4);
    }
    return world;
}

} // namespace scenariomatch
