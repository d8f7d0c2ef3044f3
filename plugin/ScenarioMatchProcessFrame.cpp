#include "engine/CSEngine.h"
#include "plugin/ActorAgents.h"
#include "plugin/CurrentInstances.h"
#include "plugin/EventFile.h"
#include "plugin/FeedWatch.h"
#include "plugin/MergeClauses.h"
#include "plugin/ScenarioMatchProcess.h"

#include <algorithm>
#include <cstdint>
#include <iostream>

namespace
{

constexpr const char* kSeparator = "_________________________________________\n";

} // namespace

bool ScenarioMatchProcess::performEventRecognition()
{
    if (m_debug) {
        std::cout << kSeparator << "Debug mode On: Extendable TRX\nBegin Apply()\n";
    }
    m_isTracing = std::cout.good();
    setTime();
    enterScene();
    enterActors();
    writeTrace();
    if (m_debug) {
        printModelsOfFrame();
    }
    m_engine->setCandidateLimit(m_maximumCandidates);
    m_engine->infer();
    processEventModelMiscellaneouClause();
    if (m_engine->recognisedScenarios().size() >= 2) {
        m_engine->sortRecognisedScenarios();
    }
    noteNewInstances();
    if (m_debug) {
        m_engine->printRecognisedScenario("");
    }
    storeEventList();
    if (m_debug) {
        std::cout << "End Apply()\n" << kSeparator << std::flush;
    }
    return true;
}

void ScenarioMatchProcess::setTime()
{
    const CSynchronizer& clock = *getSynchronizer();
    const int millisecond = clock.getMillisecond();
    m_clockIsPlain = m_clockIsPlain && millisecond >= 0 && millisecond <= 999;
    auto time = std::make_shared<CSTimeStamp>(
        clock.getFrameNumber(),
        clock.getYear(),
        clock.getMonth(),
        clock.getDay(),
        clock.getHour(),
        clock.getMinute(),
        clock.getSecond(),
        millisecond);
    m_feedWatch->addFrame(time);
    m_engine->setCurrentTime(std::move(time), clock.getFrameNumber());
}

void ScenarioMatchProcess::enterScene()
{
    const auto id = static_cast<int>(m_context.size());
    const auto count = static_cast<int>(actors().size());
    m_trace << "Scene ID:" << id;
    const int agent = m_engine->getAgent(id, true);
    m_engine->setAgentType(agent, "Type", std::make_shared<CSString>("Scene"), 0);
    m_engine->setAgentAttribute(agent, "Name", std::make_shared<CSString>("Scene0"), 0);
    m_engine->setAgentAttribute(agent, "NumberOfActors", std::make_shared<CSInt>(count), 0);
}

void ScenarioMatchProcess::enterActors()
{
    if (actors().isEmpty()) {
        return;
    }
    m_trace << "\n Starting Actor handling" << actors().size() << '\n';
    m_actorAgents->startFrame();
    for (const auto& actor : actors()) {
        if (!actor) {
            m_feedWatch->addMissingActor();
            continue;
        }
        const scenariomatch::ActorState state = stateOf(*actor);
        const bool isFirst = m_actorAgents->enter(state);
        m_feedWatch->addActor(state, isFirst);
    }
}

scenariomatch::ActorState ScenarioMatchProcess::stateOf(const rhmDataActor& actor)
{
    if (m_isTracing) {
        m_trace << "\nReached Actor/Tracked Physical Object Handling by Type";
    }
    scenariomatch::ActorState state;
    state.frame = getSynchronizer()->getFrameNumber();
    state.id = actor.getIdent();
    state.box = actor.getBoundingBox2D();
    state.position = actor.getCurrentPosition();
    state.size = actor.getInformation3D();
    const std::string& type = actor.getType();
    const bool isPerson = type == "PERSON" || type == "PERSON_DEFAULT" || type == "PERSON_HYBRID";
    state.type = isPerson ? "Person" : type == "GROUP" ? "Group" : "Mobile";
    if (isPerson) {
        state.posture = postureOf(state.size);
    }
    return state;
}

int ScenarioMatchProcess::postureOf(const Information3D& size)
{
    const auto height = static_cast<double>(size.getHeight());
    const auto width = static_cast<double>(size.getWidth());
    const auto depth = static_cast<double>(size.getDepth());
    if (m_isTracing) {
        m_trace << "Person 3D-D(W,H,D): " << width << ';' << height << ';' << depth << '\n';
    }
    return performPostureRecognition(height, width, depth);
}

int ScenarioMatchProcess::performPostureRecognition(double height, double width, double depth) const
{
    constexpr double kWidest = 1.2;
    constexpr double kHardlyMore = 1.1;
    if (width / height > kWidest || depth / height > kWidest) {
        return 401;
    }
    if (m_personSittingMaxHeight >= height) {
        return 201;
    }
    return m_personSittingMaxHeight * kHardlyMore >= height ? 301 : 104;
}

// One line for each model of which instances are recognised in the current frame: its name and how
// many.
void ScenarioMatchProcess::printModelsOfFrame() const
{
    std::map<std::string, int> counts;
    scenariomatch::forEachCurrentInstance(
        *m_engine, m_clockIsPlain, [&](const CSScenarioInstance& instance) {
            ++counts[instance.m_scenario->m_name];
        });
    for (const auto& [name, count] : counts) {
        std::cout << name << ' ' << count << '\n';
    }
}

void ScenarioMatchProcess::processEventModelMiscellaneouClause()
{
    scenariomatch::mergeByClauses(*m_engine, m_trace);
    writeTrace();
}

void ScenarioMatchProcess::noteNewInstances()
{
    m_firstNewId = m_nextId;
    scenariomatch::forEachCurrentInstance(
        *m_engine, m_clockIsPlain, [this](const CSScenarioInstance& instance) {
            m_nextId = std::max(m_nextId, std::int64_t{instance.m_id} + 1);
        });
}

void ScenarioMatchProcess::storeEventList()
{
    if (!m_saveXML3File) {
        return;
    }
    m_frameText.clear();
    appendFrame(m_frameText);
    scenariomatch::appendToFile(m_xml3FileName, m_frameText.text());
}

void ScenarioMatchProcess::writeTrace()
{
    std::cout << m_trace.text();
    m_trace.clear();
}
