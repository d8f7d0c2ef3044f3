#include "app/SceneReader.h"

#include "app/FrameClock.h"
#include "app/SceneFault.h"
#include "app/SceneMap.h"
#include "app/YamlDocument.h"

#include <algorithm>
#include <fmt/format.h>
#include <limits>
#include <tuple>

namespace scenariomatch
{

namespace
{

constexpr std::int64_t kWhole = 1000;

// That an id stands for an object from one time up to another one.
struct IdUse
{
    int id = 0;
    SceneSpan span;
    YAML::Mark mark;
};

// Reads one scene; the functions are in the order of the file's description in docs/scenes.md.
class SceneReader
{
public:
    explicit SceneReader(const SceneLimits& limits)
        : m_limits(limits)
    {
    }

    Scene read(const YAML::Node& root);

private:
    void readStart(const SceneMap& map);
    void readSeed(const SceneMap& map);
    void readUnit(const SceneMap& map);
    void readObjects(const SceneMap& map);
    SceneObject readObject(const YAML::Node& node);
    std::vector<YAML::Node>
    readPoints(const YAML::Node& node, std::string_view key, std::size_t least);
    void readPath(const YAML::Node& list, SceneObject& object);
    SceneWayPoint readWayPoint(const YAML::Node& node, const SceneWayPoint* before) const;
    ScenePosition readPosition(const YAML::Node& node) const;
    void readGaps(const SceneMap& map, SceneObject& object);
    void readSwitches(const SceneMap& map, SceneObject& object);
    void addIdUse(int id, SceneSpan span, const YAML::Node& node);
    void readCrowd(const SceneMap& scene);
    void readSize(const SceneMap& map, SceneSize& size) const;
    void readDuration(const SceneMap& map, const YAML::Node& root);
    void checkIds();

    SceneLimits m_limits;
    Scene m_scene;
    std::vector<IdUse> m_idUses;
    std::size_t m_points = 0;
};

Scene SceneReader::read(const YAML::Node& root)
{
    const SceneMap map(
        root,
        "a scene",
        {{"frame_rate"},
         {"start"},
         {"duration"},
         {"seed"},
         {"unit"},
         {"pixels_per_metre"},
         {"objects"},
         {"crowd"}});
    map.readDecimal("frame_rate", m_scene.frameRate, {1, m_limits.frameRate});
    readStart(map);
    readSeed(map);
    readUnit(map);
    readObjects(map);
    readCrowd(map);
    readDuration(map, root);
    checkIds();
    return std::move(m_scene);
}

void SceneReader::readStart(const SceneMap& map)
{
    if (!map.has("start")) {
        return;
    }
    const std::optional<TrackClock> clock = parseClock(sceneText(map.at("start"), "start"));
    if (!clock) {
        throw SceneFault{
            map.at("start").Mark(), "'start' must be a time like 2026-05-04T10:00:00.000"};
    }
    m_scene.start = clockToMilliseconds(*clock);
}

void SceneReader::readSeed(const SceneMap& map)
{
    std::int64_t seed = 1;
    map.readWhole("seed", seed, {0, std::numeric_limits<std::int64_t>::max()});
    m_scene.seed = static_cast<std::uint64_t>(seed);
}

void SceneReader::readUnit(const SceneMap& map)
{
    std::string unit = "metre";
    map.readText("unit", unit);
    if (unit != "metre" && unit != "pixel") {
        throw SceneFault{map.at("unit").Mark(), "'unit' must be metre or pixel"};
    }
    m_scene.unit = unit == "metre" ? SceneUnit::Metre : SceneUnit::Pixel;
    if (m_scene.unit == SceneUnit::Pixel && map.has("pixels_per_metre")) {
        throw SceneFault{
            map.at("pixels_per_metre").Mark(), "'pixels_per_metre' needs the unit metre"};
    }
    map.readDecimal("pixels_per_metre", m_scene.pixelsPerMetre, {1, m_limits.pixelsPerMetre});
}

void SceneReader::readObjects(const SceneMap& map)
{
    if (!map.has("objects")) {
        return;
    }
    for (const YAML::Node& node : sceneList(map.at("objects"), "objects", 0, m_limits.objects)) {
        m_scene.objects.push_back(readObject(node));
    }
}

SceneObject SceneReader::readObject(const YAML::Node& node)
{
    const SceneMap map(
        node,
        "an object",
        {{"id", true},
         {"type"},
         {"size"},
         {"path", true},
         {"jitter"},
         {"missed"},
         {"gaps"},
         {"switches"}});
    SceneObject object;
    map.readId("id", object.id);
    map.readText("type", object.type);
    readSize(map, object.size);
    readPath(map.at("path"), object);
    map.readDecimal("jitter", object.jitter, {0, m_limits.coordinate});
    map.readDecimal("missed", object.missed, {0, kWhole});
    readGaps(map, object);
    readSwitches(map, object);
    return object;
}

// The elements of a list that counts towards the limit of points.
std::vector<YAML::Node>
SceneReader::readPoints(const YAML::Node& node, std::string_view key, std::size_t least)
{
    std::vector<YAML::Node> points = sceneList(node, key, least, m_limits.points);
    m_points += points.size();
    if (m_points > m_limits.points) {
        throw SceneFault{
            node.Mark(),
            fmt::format(
                "the scene has more than {} way points, gaps and switches", m_limits.points)};
    }
    return points;
}

void SceneReader::readPath(const YAML::Node& list, SceneObject& object)
{
    for (const YAML::Node& node : readPoints(list, "path", 1)) {
        const SceneWayPoint* const before = object.path.empty() ? nullptr : &object.path.back();
        object.path.push_back(readWayPoint(node, before));
    }
}

SceneWayPoint SceneReader::readWayPoint(const YAML::Node& node, const SceneWayPoint* before) const
{
    const bool isFirst = before == nullptr;
    const SceneMap map(
        node,
        isFirst ? "the first way point" : "a way point",
        {{"time", true}, {"position", isFirst}, {"pose"}});
    SceneWayPoint point = isFirst ? SceneWayPoint{} : *before;
    map.readDecimal("time", point.time, {0, m_limits.time});
    if (!isFirst && point.time <= before->time) {
        throw SceneFault{map.at("time").Mark(), "the way point is not later than the one before"};
    }
    if (map.has("position")) {
        point.position = readPosition(map.at("position"));
    }
    std::string pose = point.pose == ScenePose::Lying ? "lying" : "standing";
    map.readText("pose", pose);
    if (pose != "standing" && pose != "lying") {
        throw SceneFault{map.at("pose").Mark(), "'pose' must be standing or lying"};
    }
    point.pose = pose == "lying" ? ScenePose::Lying : ScenePose::Standing;
    return point;
}

ScenePosition SceneReader::readPosition(const YAML::Node& node) const
{
    const std::size_t most = m_scene.unit == SceneUnit::Pixel ? 2 : 3;
    const std::vector<YAML::Node> numbers = sceneList(node, "position", 2, most);
    const SceneRange range{-m_limits.coordinate, m_limits.coordinate};
    ScenePosition position;
    position.x = sceneDecimal(numbers[0], "position", range);
    position.y = sceneDecimal(numbers[1], "position", range);
    position.z = numbers.size() == 3 ? sceneDecimal(numbers[2], "position", range) : 0;
    return position;
}

void SceneReader::readGaps(const SceneMap& map, SceneObject& object)
{
    if (!map.has("gaps")) {
        return;
    }
    for (const YAML::Node& node : readPoints(map.at("gaps"), "gaps", 0)) {
        const std::vector<YAML::Node> ends = sceneList(node, "gaps", 2, 2);
        const SceneRange range{0, m_limits.time};
        const SceneSpan gap{
            sceneDecimal(ends[0], "gaps", range), sceneDecimal(ends[1], "gaps", range)};
        if (gap.from >= gap.to) {
            throw SceneFault{ends[1].Mark(), "the gap does not end later than it begins"};
        }
        object.gaps.push_back(gap);
    }
}

void SceneReader::readSwitches(const SceneMap& map, SceneObject& object)
{
    SceneIdentity current{object.path.front().time, object.id};
    YAML::Node place = map.at("id");
    if (map.has("switches")) {
        for (const YAML::Node& node : readPoints(map.at("switches"), "switches", 0)) {
            const SceneMap entry(node, "a switch", {{"time", true}, {"id", true}});
            SceneIdentity next;
            entry.readDecimal("time", next.time, {0, m_limits.time});
            entry.readId("id", next.id);
            if (next.time <= current.time || next.time > object.path.back().time) {
                throw SceneFault{
                    entry.at("time").Mark(),
                    "the switch is not later than what is before it, or later than the path"};
            }
            addIdUse(current.id, {current.time, next.time}, place);
            object.switches.push_back(next);
            current = next;
            place = entry.at("id");
        }
    }
    addIdUse(current.id, {current.time, object.path.back().time + 1}, place);
}

void SceneReader::addIdUse(int id, SceneSpan span, const YAML::Node& node)
{
    m_idUses.push_back({id, span, node.Mark()});
}

void SceneReader::readCrowd(const SceneMap& scene)
{
    if (!scene.has("crowd")) {
        return;
    }
    const YAML::Node node = scene.at("crowd");
    const SceneMap map(
        node,
        "a crowd",
        {{"people", true},
         {"area_per_person"},
         {"aspect"},
         {"speeds"},
         {"fast_legs"},
         {"fast_speeds"},
         {"stops"},
         {"stop_times"},
         {"first_id"},
         {"type"},
         {"size"}});
    if (m_scene.unit == SceneUnit::Pixel) {
        throw SceneFault{node.Mark(), "a crowd needs the unit metre"};
    }
    SceneCrowd crowd;
    std::int64_t people = 0;
    map.readWhole("people", people, {1, m_limits.people});
    crowd.people = static_cast<int>(people);
    map.readDecimal("area_per_person", crowd.areaPerPerson, {100, m_limits.areaPerPerson});
    if (map.has("aspect")) {
        const std::vector<YAML::Node> sides = sceneList(map.at("aspect"), "aspect", 2, 2);
        crowd.aspect = {
            sceneWhole(sides[0], "aspect", {1, m_limits.aspect}),
            sceneWhole(sides[1], "aspect", {1, m_limits.aspect})};
    }
    map.readSpan("speeds", crowd.speeds, {1, m_limits.speed});
    map.readDecimal("fast_legs", crowd.fastLegs, {0, kWhole});
    map.readSpan("fast_speeds", crowd.fastSpeeds, {1, m_limits.speed});
    map.readDecimal("stops", crowd.stops, {0, kWhole});
    map.readSpan("stop_times", crowd.stopTimes, {0, m_limits.time});
    map.readId("first_id", crowd.firstId);
    map.readText("type", crowd.type);
    readSize(map, crowd.size);
    if (crowd.firstId > std::numeric_limits<int>::max() - crowd.people) {
        throw SceneFault{map.at("first_id").Mark(), "the crowd's ids become too great"};
    }
    for (int i = 0; i < crowd.people; ++i) {
        addIdUse(crowd.firstId + i, {0, m_limits.time + 1}, node);
    }
    m_scene.crowd = std::move(crowd);
}

void SceneReader::readSize(const SceneMap& map, SceneSize& size) const
{
    const bool isPixel = m_scene.unit == SceneUnit::Pixel;
    size = isPixel ? SceneSize{24'000, 60'000, 24'000} : SceneSize{};
    if (!map.has("size")) {
        return;
    }
    const std::vector<YAML::Node> sides = sceneList(map.at("size"), "size", 2, isPixel ? 2 : 3);
    const SceneRange range{1, isPixel ? m_limits.pixels : m_limits.metres};
    size.width = sceneDecimal(sides[0], "size", range);
    size.height = sceneDecimal(sides[1], "size", range);
    size.depth = sides.size() == 3 ? sceneDecimal(sides[2], "size", range) : size.width;
}

void SceneReader::readDuration(const SceneMap& map, const YAML::Node& root)
{
    if (map.has("duration")) {
        map.readDecimal("duration", m_scene.duration, {1, m_limits.time});
    } else {
        for (const SceneObject& object : m_scene.objects) {
            m_scene.duration = std::max(m_scene.duration, object.path.back().time + 1);
        }
    }
    const YAML::Mark mark = map.has("duration") ? map.at("duration").Mark() : root.Mark();
    if (m_scene.duration == 0) {
        throw SceneFault{mark, "a scene without objects needs the key 'duration'"};
    }
    if (m_scene.frameTime(m_limits.frames) < m_scene.duration) {
        throw SceneFault{mark, fmt::format("the scene has more than {} frames", m_limits.frames)};
    }
}

void SceneReader::checkIds()
{
    std::stable_sort(m_idUses.begin(), m_idUses.end(), [](const IdUse& a, const IdUse& b) {
        return std::tie(a.id, a.span.from) < std::tie(b.id, b.span.from);
    });
    const auto overlap = [](const IdUse& a, const IdUse& b) {
        return a.id == b.id && b.span.from < a.span.to;
    };
    const auto found = std::adjacent_find(m_idUses.begin(), m_idUses.end(), overlap);
    if (found != m_idUses.end()) {
        const IdUse& first = *found;
        const IdUse& second = *std::next(found);
        const bool isFirstLater = first.mark.pos > second.mark.pos;
        throw SceneFault{
            isFirstLater ? first.mark : second.mark,
            fmt::format("the id {} stands for two objects at the same time", first.id)};
    }
}

YAML::Node onlyDocument(const std::string& text)
{
    const YamlDocument document = readYamlDocument(text);
    if (document.next) {
        throw SceneFault{*document.next, "a scene file holds one scene"};
    }
    return document.root;
}

} // namespace

Scene readSceneNode(const YAML::Node& node, const SceneLimits& limits)
{
    return SceneReader(limits).read(node);
}

SceneReading
readScene(const std::string& text, const std::string& fileName, const SceneLimits& limits)
{
    try {
        if (text.size() > limits.fileBytes) {
            throw SceneFault{{}, fmt::format("the file has more than {} bytes", limits.fileBytes)};
        }
        return {SceneReader(limits).read(onlyDocument(text)), {}};
    } catch (const SceneFault& fault) {
        return {std::nullopt, describeFault(text, fileName, fault)};
    } catch (const YAML::Exception& error) {
        return {std::nullopt, describeFault(text, fileName, {error.mark, error.msg})};
    }
}

} // namespace scenariomatch
