#include "app/report/ReportTables.h"

#include "app/FrameClock.h"
#include "engine/Expression.h"
#include "engine/OperatorPromises.h"
#include "scenario/CSScenario.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <tuple>
#include <utility>

namespace scenariomatch
{

namespace
{

using Json = nlohmann::ordered_json;

// Names, each with its place in their list.
class NameList
{
public:
    std::size_t add(const std::string& name)
    {
        const auto [entry, isNew] = m_places.try_emplace(name, m_names.size());
        if (isNew) {
            m_names.push_back(name);
        }
        return entry->second;
    }

    // -1 for one that is not there.
    std::ptrdiff_t find(const std::string& name) const
    {
        const auto found = m_places.find(name);
        return found == m_places.end() ? -1 : static_cast<std::ptrdiff_t>(found->second);
    }

    const std::vector<std::string>& all() const { return m_names; }

private:
    std::vector<std::string> m_names;
    std::map<std::string, std::size_t> m_places;
};

// A model of the table: one of the process, or one that only an event file tells of.
struct TableModel
{
    std::string name;
    std::string kind;
    std::string alarm;
    int alarmNumber = 0;
    std::string alarmText;
    std::string text;
    // Variables with their types; of components the models.
    std::vector<std::pair<std::string, std::string>> objects;
    std::vector<std::pair<std::string, std::string>> components;
    // Texts, and whether they are pure.
    std::vector<std::pair<std::string, bool>> constraints;
};

class TableMaker
{
public:
    explicit TableMaker(const ReportTableSources& sources)
        : m_sources(sources)
        , m_start(clockToMilliseconds(sources.start))
    {
        sources.view.visitModels([this](const CSScenario& model) { addModel(model); });
        for (const ReportedEvent& event : sources.events.all()) {
            if (indexOf(event.name) < 0) {
                addForeignModel(event);
            }
        }
        addAlarms();
    }

    std::string text();

private:
    void addModel(const CSScenario& model);
    void addForeignModel(const ReportedEvent& event);
    void addAlarms();
    // -1 for a model that there is not.
    std::ptrdiff_t indexOf(const std::string& model) const;
    Json clock() const;
    Json scene() const;
    Json actors();
    Json models();
    Json events();
    Json objectsOf(const ReportedEvent& event, std::uint64_t& fixed) const;
    void addSubEvents(const ReportedEvent& event, Json& columns) const;
    Json statistics() const;

    const ReportTableSources& m_sources;
    std::int64_t m_start;
    std::vector<TableModel> m_models;
    // The first model of a name.
    std::map<std::string, std::size_t> m_byName;
    NameList m_alarms;
    // Of each of them, the first number that it came with.
    std::vector<int> m_alarmNumbers;
    NameList m_texts;
    NameList m_kinds;
    NameList m_types;
};

void TableMaker::addModel(const CSScenario& model)
{
    TableModel entry;
    entry.name = model.m_name;
    entry.kind = model.m_kind;
    entry.alarm = model.m_alarmLevelName;
    entry.alarmNumber = model.m_alarmLevel;
    entry.alarmText = model.m_alarmText;
    const auto text = m_sources.modelTexts.find(model.m_name);
    entry.text = text == m_sources.modelTexts.end() ? "" : text->second;
    for (const auto& [position, variable] : model.m_physicalObjects) {
        const auto type = model.m_variableTypes.find(variable);
        entry.objects.emplace_back(
            variable, type == model.m_variableTypes.end() ? "" : type->second);
    }
    for (const auto& component : model.m_components) {
        entry.components.emplace_back(component->m_variable, component->m_modelName);
    }
    OperatorPromises promises;
    for (const auto& constraint : model.m_constraints) {
        entry.constraints.emplace_back(textOf(*constraint), promises.isPure(*constraint));
    }
    m_byName.try_emplace(entry.name, m_models.size());
    m_models.push_back(std::move(entry));
}

void TableMaker::addForeignModel(const ReportedEvent& event)
{
    TableModel entry;
    entry.name = event.name;
    entry.kind = event.kind;
    entry.alarm = event.alarmLevel;
    entry.alarmNumber = event.alarm;
    entry.alarmText = event.text;
    for (const EventObject& object : event.objects) {
        entry.objects.emplace_back(object.variable, object.type);
    }
    for (const SubEvent& part : event.subEvents) {
        entry.components.emplace_back(part.variable, part.name);
    }
    m_byName.try_emplace(entry.name, m_models.size());
    m_models.push_back(std::move(entry));
}

std::ptrdiff_t TableMaker::indexOf(const std::string& model) const
{
    const auto found = m_byName.find(model);
    return found == m_byName.end() ? -1 : static_cast<std::ptrdiff_t>(found->second);
}

// Rising; a model without an alarm has the least.
void TableMaker::addAlarms()
{
    std::set<std::tuple<int, bool, std::string>> levels{
        {0, true, "NOTURGENT"},
        {1, true, "URGENT"},
        {2, true, "VERYURGENT"},
        {3, true, "SUPERURGENT"}};
    const auto add = [&levels](int number, const std::string& name) {
        levels.emplace(number, !name.empty(), name);
    };
    for (const TableModel& model : m_models) {
        add(model.alarmNumber, model.alarm);
    }
    for (const ReportedEvent& event : m_sources.events.all()) {
        add(event.alarm, event.alarmLevel);
    }
    for (const auto& [number, hasName, name] : levels) {
        if (m_alarms.add(name) == m_alarmNumbers.size()) {
            m_alarmNumbers.push_back(number);
        }
    }
}

Json TableMaker::clock() const
{
    return {
        {"start", printClock(m_sources.start)},
        {"end", m_sources.end},
        {"frames", m_sources.frames}};
}

Json TableMaker::scene() const
{
    Json objects = Json::array();
    for (const PlanObject& object : m_sources.scene) {
        objects.push_back(
            {{"id", object.id},
             {"name", object.name},
             {"type", object.type},
             {"closed", object.isClosed},
             {"shape", object.shape}});
    }
    Json background;
    if (m_sources.picture) {
        background = {
            {"image", m_sources.picture->image}, {"placement", m_sources.picture->placement}};
    }
    return {
        {"objects", std::move(objects)},
        {"background", std::move(background)},
        {"unit", m_sources.isInPixels ? "px" : "m"},
        {"down", m_sources.isInPixels}};
}

Json TableMaker::actors()
{
    Json list = Json::array();
    for (const auto& [id, actor] : m_sources.tracks.actors()) {
        list.push_back(
            {{"id", id},
             {"type", m_types.add(actor.type)},
             {"first", actor.first},
             {"last", actor.last}});
    }
    return list;
}

Json TableMaker::models()
{
    Json list = Json::array();
    for (const TableModel& model : m_models) {
        Json entry{
            {"name", model.name},
            {"kind", m_kinds.add(model.kind)},
            {"alarm", m_alarms.add(model.alarm)},
            {"alarmText", model.alarmText},
            {"text", model.text}};
        entry["objects"] = Json::array();
        for (const auto& [variable, type] : model.objects) {
            entry["objects"].push_back({{"name", variable}, {"type", type}});
        }
        entry["components"] = Json::array();
        for (const auto& [variable, part] : model.components) {
            entry["components"].push_back(
                {{"name", variable}, {"model", indexOf(part)}, {"modelName", part}});
        }
        entry["constraints"] = Json::array();
        for (const auto& [text, isPure] : model.constraints) {
            entry["constraints"].push_back({{"text", text}, {"pure", isPure}});
        }
        list.push_back(std::move(entry));
    }
    return list;
}

// In the order of the model's objects; the mask tells which of them are of the scene.
Json TableMaker::objectsOf(const ReportedEvent& event, std::uint64_t& fixed) const
{
    Json ids = Json::array();
    const auto model = static_cast<std::size_t>(indexOf(event.name));
    std::uint64_t bit = 1;
    for (const auto& [variable, type] : m_models[model].objects) {
        const auto object = std::find_if(
            event.objects.begin(),
            event.objects.end(),
            [wanted = &variable](const EventObject& one) { return one.variable == *wanted; });
        const bool isBound = object != event.objects.end();
        ids.push_back(isBound ? object->id : -1);
        fixed |= isBound && object->id >= 0 && !isTracked(object->type) ? bit : 0;
        bit <<= 1U;
    }
    return ids;
}

// Also those that are no event of the report.
void TableMaker::addSubEvents(const ReportedEvent& event, Json& columns) const
{
    Json indexes = Json::array();
    Json ids = Json::array();
    const auto model = static_cast<std::size_t>(indexOf(event.name));
    for (const auto& [variable, name] : m_models[model].components) {
        const auto part = std::find_if(
            event.subEvents.begin(),
            event.subEvents.end(),
            [wanted = &variable](const SubEvent& one) { return one.variable == *wanted; });
        const bool isBound = part != event.subEvents.end();
        indexes.push_back(isBound ? m_sources.events.indexOf(part->id) : -1);
        ids.push_back(isBound ? part->id : -1);
    }
    columns["subEvents"].push_back(std::move(indexes));
    columns["subEventIds"].push_back(std::move(ids));
}

Json TableMaker::events()
{
    Json columns;
    for (const char* const name :
         {"id",
          "model",
          "begin",
          "beginFrame",
          "end",
          "endFrame",
          "confidence",
          "alarm",
          "text",
          "objects",
          "fixed",
          "subEvents",
          "subEventIds"}) {
        columns[name] = Json::array();
    }
    for (const ReportedEvent& event : m_sources.events.all()) {
        columns["id"].push_back(event.id);
        columns["model"].push_back(indexOf(event.name));
        columns["begin"].push_back(clockToMilliseconds(event.begin.clock) - m_start);
        columns["beginFrame"].push_back(event.begin.frame);
        columns["end"].push_back(clockToMilliseconds(event.end.clock) - m_start);
        columns["endFrame"].push_back(event.end.frame);
        columns["confidence"].push_back(event.confidence);
        columns["alarm"].push_back(m_alarms.find(event.alarmLevel));
        columns["text"].push_back(m_texts.add(event.text));
        std::uint64_t fixed = 0;
        columns["objects"].push_back(objectsOf(event, fixed));
        columns["fixed"].push_back(fixed);
        addSubEvents(event, columns);
    }
    return columns;
}

Json TableMaker::statistics() const
{
    Json numbers = Json::object();
    for (const RunFigure& figure : m_sources.figures) {
        numbers[figure.name] = figure.number;
    }
    return numbers;
}

std::string TableMaker::text()
{
    Json tables{
        {"version", 1},
        {"program", SCENARIOMATCH_VERSION},
        {"title", m_sources.title},
        {"clock", clock()},
        {"scene", scene()}};
    // Actors, models and events fill the lists of names before them.
    Json actorList = actors();
    Json modelList = models();
    Json eventList = events();
    tables["types"] = m_types.all();
    tables["actors"] = std::move(actorList);
    tables["alarms"] = m_alarms.all();
    tables["alarmNumbers"] = m_alarmNumbers;
    tables["texts"] = m_texts.all();
    tables["kinds"] = m_kinds.all();
    tables["models"] = std::move(modelList);
    tables["events"] = std::move(eventList);
    tables["statistics"] = statistics();
    // Names may be any bytes.
    return tables.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

std::string reportTables(const ReportTableSources& sources)
{
    return TableMaker(sources).text();
}

} // namespace scenariomatch
