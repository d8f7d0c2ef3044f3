#include "engine/CSEngine.h"
#include "plugin/BoundAgent.h"
#include "plugin/CurrentInstances.h"
#include "plugin/EventXml.h"
#include "plugin/FeedWatch.h"
#include "plugin/ScenarioMatchProcess.h"

#include <algorithm>
#include <string_view>

using scenariomatch::BoundAgent;
using scenariomatch::DateTime;
using scenariomatch::forEachCurrentInstance;
using scenariomatch::StreamText;

namespace
{

DateTime dateTime(const CSTimeStamp& time)
{
    return {
        .year = time.m_year,
        .month = time.m_month,
        .day = time.m_day,
        .hour = time.m_hour,
        .minute = time.m_minute,
        .second = time.m_second,
        .millisecond = time.m_millisecond};
}

CSynchronizer synchronizer(const CSTimeStamp& time)
{
    CSynchronizer result;
    result.setDateTime(dateTime(time));
    result.setFrameNumber(time.m_frameID);
    return result;
}

void setInvolvedActors(rhmDataEvent& event, const CSScenarioInstance& instance)
{
    bool isAnyone = false;
    for (const auto& [variable, agent] : instance.m_bindings) {
        if (scenariomatch::typeOf(agent) == "Person") {
            event.setInvolvedActorId(scenariomatch::identifierOf(agent));
            isAnyone = true;
        }
    }
    if (!isAnyone) {
        event.setInvolvedActorId(-1);
    }
}

// Text shorter than two characters is one name, even when it is a comma.
std::vector<std::string_view> splitNames(std::string_view text)
{
    if (text.size() < 2) {
        return {text};
    }
    std::vector<std::string_view> names;
    std::size_t begin = 0;
    for (std::size_t comma = text.find(','); comma != std::string_view::npos;
         comma = text.find(',', begin)) {
        names.push_back(text.substr(begin, comma - begin));
        begin = comma + 1;
    }
    names.push_back(text.substr(begin));
    return names;
}

void appendNotifiedTime(StreamText& text, const CSTimeStamp& time)
{
    text << ',' << time.m_year << '-' << time.m_month << '-' << time.m_day << ',' << time.m_hour
         << ':' << time.m_minute << ':' << time.m_second << '.' << time.m_millisecond;
}

scenariomatch::RecognisedEvent describe(const CSScenarioInstance& instance)
{
    const CSScenario& model = *instance.m_scenario;
    scenariomatch::RecognisedEvent event;
    event.id = instance.m_id;
    event.name = model.m_name;
    event.kind = model.m_kind;
    event.alarmLevel = model.m_alarmLevelName;
    event.alarm = model.m_alarmLevel;
    event.text = model.m_alarmText;
    event.confidence = instance.m_confidence;
    event.begin = {.frame = instance.m_start->m_frameID, .clock = dateTime(*instance.m_start)};
    event.end = {.frame = instance.m_end->m_frameID, .clock = dateTime(*instance.m_end)};
    event.duration = instance.m_start->duration(*instance.m_end);
    return event;
}

} // namespace

bool ScenarioMatchProcess::isReported(const CSScenarioInstance& instance) const
{
    return instance.m_scenario->m_alarmLevel >= m_reportLevel;
}

QSharedPointer<rhmDataEvent> ScenarioMatchProcess::record(const CSScenarioInstance& instance) const
{
    const CSScenario& model = *instance.m_scenario;
    auto event = QSharedPointer<rhmDataEvent>::create();
    event->setTRXId(static_cast<unsigned>(instance.m_id));
    event->setTRXName(model.m_name);
    event->setTRXType(model.m_kind);
    event->setTRXAlarmLevel(model.m_alarmLevelName);
    event->setTRXConfidence(instance.m_confidence);
    event->setTRXBegin(synchronizer(*instance.m_start));
    event->setTRXEnd(synchronizer(*instance.m_end));
    event->setTRXDuration(instance.m_start->duration(*instance.m_end));
    event->setTRXLatency(0.0);
    setInvolvedActors(*event, instance);
    return event;
}

ScenarioMatchProcess::Events ScenarioMatchProcess::getCurrentFrameEvents() const
{
    Events events;
    forEachCurrentInstance(*m_engine, m_clockIsPlain, [&](const CSScenarioInstance& instance) {
        if (isReported(instance)) {
            events.append(record(instance));
        }
    });
    return events;
}

ScenarioMatchProcess::Events ScenarioMatchProcess::getAllFramesEvents() const
{
    Events events;
    for (const auto& instance : m_engine->recognisedScenarios()) {
        if (isReported(*instance)) {
            events.append(record(*instance));
        }
    }
    return events;
}

std::string ScenarioMatchProcess::generateEventListStreamToNotify() const
{
    const auto names = splitNames(m_eventsToNotify);
    StreamText text;
    forEachCurrentInstance(*m_engine, m_clockIsPlain, [&](const CSScenarioInstance& instance) {
        const std::string& name = instance.m_scenario->m_name;
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            return;
        }
        text << instance.m_id << ',' << name;
        appendNotifiedTime(text, *instance.m_start);
        appendNotifiedTime(text, *instance.m_end);
        text << '\n';
    });
    return text.text();
}

std::string ScenarioMatchProcess::generateEventListStorageStream() const
{
    StreamText text;
    appendFrame(text);
    return text.text();
}

void ScenarioMatchProcess::appendFrame(StreamText& text) const
{
    if (m_engine->currentTime() == nullptr) {
        return;
    }
    scenariomatch::appendFrameStart(text, *m_engine->currentTime());
    forEachCurrentInstance(*m_engine, m_clockIsPlain, [&](const CSScenarioInstance& instance) {
        if (isReported(instance)) {
            scenariomatch::appendActivity(text, instance);
        }
    });
    scenariomatch::appendFrameEnd(text);
}

void ScenarioMatchProcess::visitEvents(const EventVisitor& visit) const
{
    forEachCurrentInstance(*m_engine, m_clockIsPlain, [&](const CSScenarioInstance& instance) {
        if (!isReported(instance)) {
            return;
        }
        m_objects.clear();
        m_parts.clear();
        for (const auto& [variable, agent] : instance.m_bindings) {
            const int id = scenariomatch::identifierOf(agent);
            const auto name = scenariomatch::nameOf(agent);
            if (scenariomatch::isSubEvent(agent)) {
                m_parts.push_back({variable, id, name});
            } else {
                m_objects.push_back({variable, scenariomatch::typeOf(agent), id, name});
            }
        }
        auto event = describe(instance);
        event.isNew = instance.m_id >= m_firstNewId;
        event.objects = m_objects;
        event.parts = m_parts;
        visit(event);
    });
}

scenariomatch::RecognitionCounters ScenarioMatchProcess::counters() const
{
    const auto& statistics = m_engine->statistics();
    scenariomatch::RecognitionCounters counters;
    counters.tested = statistics.tested;
    counters.accepted = statistics.accepted;
    counters.completions = statistics.completions;
    counters.liveInstances = m_engine->recognisedScenarios().size();
    counters.operatorFailures = m_engine->operatorFailures();
    counters.candidateCuts = m_engine->candidateCuts();
    counters.feed = m_feedWatch->counters();
    visitModels([&counters](const CSScenario& /*model*/) { ++counters.models; });
    return counters;
}

int ScenarioMatchProcess::nextEventId() const
{
    return m_engine->nextInstanceId();
}

void ScenarioMatchProcess::setNextEventId(int id)
{
    m_engine->setNextInstanceId(id);
}

void ScenarioMatchProcess::visitModels(const ModelVisitor& visit) const
{
    if (m_engine->m_allScenarios == nullptr) {
        return;
    }
    for (const auto& [kind, models] : m_engine->m_allScenarios->m_scenariosByKind) {
        for (const auto& model : models) {
            if (model->m_used) {
                visit(*model);
            }
        }
    }
}

void ScenarioMatchProcess::printPlans(std::ostream& out) const
{
    m_engine->printPlans(out);
}

void ScenarioMatchProcess::setObserver(scenariomatch::RecognitionObserver* observer)
{
    m_engine->setObserver(observer);
}
