#include "app/RuleTest.h"
#include "app/SceneFault.h"
#include "app/SceneMap.h"
#include "app/SceneReader.h"
#include "app/YamlDocument.h"
#include "types/TextFile.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <utility>

namespace scenariomatch
{

namespace
{

// A scene in a file of its own is wrong; what is wrong stands in that file.
struct SceneFileFault
{
    std::string problem;
};

// What cases have in common unless they say otherwise.
struct RuleDefaults
{
    std::string parameterFile;
    std::vector<NamedText> settings;
    std::vector<std::string> models;
    std::int64_t tolerance = 100;
};

TextPlace placeOf(const YAML::Mark& mark)
{
    return {
        static_cast<std::size_t>(std::max(mark.line, 0)),
        static_cast<std::size_t>(std::max(mark.column, 0))};
}

std::size_t pointsOf(const Scene& scene)
{
    std::size_t points = 0;
    for (const SceneObject& object : scene.objects) {
        points += object.path.size() + object.gaps.size() + object.switches.size();
    }
    return points;
}

// The functions are in the order of the file's description in docs/testing-rules.md.
class RuleTestReader
{
public:
    RuleTestReader(const std::string& fileName, const RuleTestLimits& limits)
        : m_folder(std::filesystem::path(fileName).parent_path())
        , m_limits(limits)
    {
    }

    std::vector<RuleCase> read(const YAML::Node& root);

private:
    void readCommon(const SceneMap& map, RuleDefaults& defaults) const;
    void readSettings(const YAML::Node& node, RuleDefaults& defaults) const;
    RuleCase readCase(const YAML::Node& node, RuleDefaults defaults);
    void readTracks(const SceneMap& map, const YAML::Node& node, RuleTracks& tracks);
    Scene readSceneFile(const YAML::Node& node) const;
    void countScene(const Scene& scene);
    std::vector<ExpectedEvent> readEvents(const YAML::Node& list, std::string_view key);
    ExpectedEvent readEvent(const YAML::Node& node) const;
    void
    readTime(const SceneMap& map, std::string_view key, std::optional<std::int64_t>& time) const;
    void readObjects(const YAML::Node& node, ExpectedEvent& event) const;
    static void checkModels(const RuleCase& ruleCase);
    std::string resolved(const std::string& name) const;

    std::filesystem::path m_folder;
    RuleTestLimits m_limits;
    SceneLimits m_sceneLimits;
    std::size_t m_events = 0;
};

std::vector<RuleCase> RuleTestReader::read(const YAML::Node& root)
{
    const SceneMap map(
        root, "a test file", {{"params"}, {"set"}, {"models"}, {"tolerance"}, {"cases", true}});
    RuleDefaults defaults;
    readCommon(map, defaults);
    std::vector<RuleCase> cases;
    for (const YAML::Node& node : sceneList(map.at("cases"), "cases", 1, m_limits.cases)) {
        cases.push_back(readCase(node, defaults));
    }
    return cases;
}

void RuleTestReader::readCommon(const SceneMap& map, RuleDefaults& defaults) const
{
    if (map.has("params")) {
        map.readText("params", defaults.parameterFile);
        defaults.parameterFile = resolved(defaults.parameterFile);
    }
    if (map.has("set")) {
        readSettings(map.at("set"), defaults);
    }
    if (map.has("models")) {
        defaults.models.clear();
        for (const YAML::Node& node : sceneList(map.at("models"), "models", 1, m_limits.entries)) {
            defaults.models.push_back(sceneText(node, "models"));
        }
    }
    map.readDecimal("tolerance", defaults.tolerance, {0, m_limits.time});
}

// A case adds to the settings of the file; the later one of a name wins.
void RuleTestReader::readSettings(const YAML::Node& node, RuleDefaults& defaults) const
{
    if (!node.IsMap() || node.size() > m_limits.entries) {
        throw SceneFault{
            node.Mark(),
            fmt::format("'set' must be a mapping with at most {} entries", m_limits.entries)};
    }
    for (const auto& entry : node) {
        const std::string key = sceneText(entry.first, "set");
        const std::string value = sceneText(entry.second, "set");
        defaults.settings.emplace_back(key, isFileParameter(key) ? resolved(value) : value);
    }
}

RuleCase RuleTestReader::readCase(const YAML::Node& node, RuleDefaults defaults)
{
    const SceneMap map(
        node,
        "a case",
        {{"name", true},
         {"params"},
         {"set"},
         {"tracks"},
         {"scene"},
         {"fps"},
         {"scale"},
         {"models"},
         {"tolerance"},
         {"events"},
         {"absent"}});
    readCommon(map, defaults);
    RuleCase ruleCase;
    ruleCase.place = placeOf(node.Mark());
    map.readText("name", ruleCase.name);
    ruleCase.parameterFile = std::move(defaults.parameterFile);
    ruleCase.settings = std::move(defaults.settings);
    ruleCase.models = std::move(defaults.models);
    ruleCase.tolerance = defaults.tolerance;
    if (ruleCase.parameterFile.empty()) {
        throw SceneFault{node.Mark(), "the case needs 'params', of its own or of the file"};
    }
    readTracks(map, node, ruleCase.tracks);
    if (map.has("events")) {
        ruleCase.events = readEvents(map.at("events"), "events");
        ruleCase.eventsPlace = placeOf(map.at("events").Mark());
    }
    if (map.has("absent")) {
        ruleCase.absent = readEvents(map.at("absent"), "absent");
    }
    if (!ruleCase.events && ruleCase.absent.empty()) {
        throw SceneFault{node.Mark(), "the case needs 'events' or 'absent'"};
    }
    checkModels(ruleCase);
    return ruleCase;
}

void RuleTestReader::readTracks(const SceneMap& map, const YAML::Node& node, RuleTracks& tracks)
{
    if (map.has("tracks") == map.has("scene")) {
        throw SceneFault{node.Mark(), "the case needs either 'tracks' or 'scene'"};
    }
    const bool isFile = map.has("tracks") && map.at("tracks").IsScalar();
    for (const char* key : {"fps", "scale"}) {
        if (map.has(key) && !isFile) {
            throw SceneFault{
                map.at(key).Mark(), fmt::format("'{}' is for tracks from a file", key)};
        }
    }
    if (isFile) {
        map.readText("tracks", tracks.file);
        tracks.file = resolved(tracks.file);
        std::int64_t thousandths = 1000;
        map.readDecimal("scale", thousandths, {1, 1'000'000'000});
        tracks.scale = static_cast<double>(thousandths) / 1000;
        if (map.has("fps")) {
            map.readDecimal("fps", thousandths, {1, 1'000'000'000});
            tracks.framesPerSecond = static_cast<double>(thousandths) / 1000;
        }
        return;
    }
    tracks.scene = map.has("tracks") ? readSceneNode(map.at("tracks"), m_sceneLimits)
                                     : readSceneFile(map.at("scene"));
    countScene(*tracks.scene);
}

Scene RuleTestReader::readSceneFile(const YAML::Node& node) const
{
    const std::string name = resolved(sceneText(node, "scene"));
    const std::optional<std::string> text = readTextFile(name);
    if (!text) {
        throw SceneFault{node.Mark(), fmt::format("cannot read {}: {}", name, textFileFault(name))};
    }
    SceneReading reading = readScene(*text, name, m_sceneLimits);
    if (!reading.scene) {
        throw SceneFileFault{reading.problem};
    }
    return *std::move(reading.scene);
}

// What a scene holds is taken off what those after it may hold.
void RuleTestReader::countScene(const Scene& scene)
{
    m_sceneLimits.objects -= std::min(m_sceneLimits.objects, scene.objects.size());
    m_sceneLimits.points -= std::min(m_sceneLimits.points, pointsOf(scene));
}

std::vector<ExpectedEvent> RuleTestReader::readEvents(const YAML::Node& list, std::string_view key)
{
    std::vector<ExpectedEvent> events;
    for (const YAML::Node& node : sceneList(list, key, 0, m_limits.events)) {
        if (++m_events > m_limits.events) {
            throw SceneFault{
                node.Mark(), fmt::format("the file has more than {} events", m_limits.events)};
        }
        events.push_back(readEvent(node));
    }
    return events;
}

ExpectedEvent RuleTestReader::readEvent(const YAML::Node& node) const
{
    ExpectedEvent event;
    event.line = node.Mark().line + 1;
    if (node.IsScalar()) {
        event.model = sceneText(node, "model");
        return event;
    }
    const SceneMap map(
        node,
        "an event",
        {{"model", true}, {"objects"}, {"begin"}, {"end"}, {"tolerance"}, {"alarm"}});
    map.readText("model", event.model);
    map.readText("alarm", event.alarm);
    if (map.has("objects")) {
        readObjects(map.at("objects"), event);
    }
    readTime(map, "begin", event.begin);
    readTime(map, "end", event.end);
    readTime(map, "tolerance", event.tolerance);
    if (event.begin && event.end && *event.begin > *event.end) {
        throw SceneFault{map.at("end").Mark(), "the event ends before it begins"};
    }
    return event;
}

void RuleTestReader::readTime(
    const SceneMap& map, std::string_view key, std::optional<std::int64_t>& time) const
{
    if (map.has(key)) {
        time = sceneDecimal(map.at(key), key, {0, m_limits.time});
    }
}

void RuleTestReader::readObjects(const YAML::Node& node, ExpectedEvent& event) const
{
    if (!node.IsMap() || node.size() > m_limits.entries) {
        throw SceneFault{
            node.Mark(),
            fmt::format(
                "'objects' must be a mapping of variables to objects with at most {} entries",
                m_limits.entries)};
    }
    for (const auto& entry : node) {
        const std::string variable = sceneText(entry.first, "objects");
        if (!event.objects.emplace(variable, sceneText(entry.second, "objects")).second) {
            throw SceneFault{
                entry.first.Mark(), fmt::format("the variable '{}' stands here twice", variable)};
        }
    }
}

// An event that is expected and never looked at would be missing forever.
void RuleTestReader::checkModels(const RuleCase& ruleCase)
{
    if (ruleCase.models.empty() || !ruleCase.events) {
        return;
    }
    for (const ExpectedEvent& event : *ruleCase.events) {
        const std::vector<std::string>& models = ruleCase.models;
        if (std::find(models.begin(), models.end(), event.model) == models.end()) {
            YAML::Mark mark;
            mark.line = event.line - 1;
            throw SceneFault{
                mark, fmt::format("the model '{}' is not one of the case's 'models'", event.model)};
        }
    }
}

std::string RuleTestReader::resolved(const std::string& name) const
{
    return (m_folder / name).lexically_normal().string();
}

YAML::Node onlyDocument(const std::string& text)
{
    const YamlDocument document = readYamlDocument(text);
    if (document.next) {
        throw SceneFault{*document.next, "a test file holds one document"};
    }
    return document.root;
}

} // namespace

RuleTestReading
readRuleTest(const std::string& text, const std::string& fileName, const RuleTestLimits& limits)
{
    try {
        if (text.size() > limits.fileBytes) {
            throw SceneFault{{}, fmt::format("the file has more than {} bytes", limits.fileBytes)};
        }
        RuleTestReader reader(fileName, limits);
        return {RuleTestFile{fileName, text, reader.read(onlyDocument(text))}, {}};
    } catch (const SceneFileFault& fault) {
        return {std::nullopt, fault.problem};
    } catch (const SceneFault& fault) {
        return {std::nullopt, describeFault(text, fileName, fault)};
    } catch (const YAML::Exception& error) {
        return {std::nullopt, describeFault(text, fileName, {error.mark, error.msg})};
    }
}

} // namespace scenariomatch
