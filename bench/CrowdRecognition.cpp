#include "bench/CrowdRecognition.h"

#include "app/FrameClock.h"
#include "app/InstalledFiles.h"
#include "app/StreamRedirection.h"
#include "engine/CSEngine.h"
#include "plugin/ActorAgents.h"
#include "plugin/ScenarioMatchProcess.h"

#include <iostream>
#include <stdexcept>

namespace scenariomatch
{

namespace
{

// The class-wide tables outlive an engine; the next one begins with empty ones.
void clearClassWideTables()
{
    CSAgent::m_allObjectTypes.clear();
    CSAgent::m_allAttributes.clear();
    CSAgent::m_constantObjects.clear();
    CSEngine::h_currentTime.clear();
    CConstraint::m_allOperators.clear();
}

} // namespace

CrowdRecognition::CrowdRecognition(
    const std::string& engineFile, const std::vector<CrowdZone>& zones)
    : m_context("scenariomatch-bench-", ".xml", crowdContext(zones))
    , m_zones(static_cast<int>(zones.size()))
{
    clearClassWideTables();
    const StreamRedirection silence(std::cout, nullptr);
    m_process = std::make_unique<ScenarioMatchProcess>();
    m_process->setParamOperatorPluginPath(installedOperatorFolder().string());
    m_process->setParamScenarioRecognitionOperatorDescription(installedVocabulary().string());
    m_process->setParamScenarioRecognitionObjectDescription(crowdFile("objects.txt"));
    m_process->setParamScenarioRecognitionModelFileName(engineFile);
    m_process->setRhmContextFilename(m_context.path());
    m_process->setParamConstProlongation(1);
    m_process->setParamConstTimeSearch(60);
    if (!m_process->init() || m_process->engine()->operators().empty()) {
        throw std::runtime_error("the engine cannot be prepared from " + engineFile);
    }
    m_engine = m_process->engine();
    m_agents = std::make_unique<ActorAgents>(*m_engine);
    m_agents->setNamedAttributes(namedAttributes(*m_engine->m_allScenarios));
}

CrowdRecognition::~CrowdRecognition() = default;

void CrowdRecognition::nameAllAttributes()
{
    std::set<std::string> names;
    for (std::size_t i = 0; i < kActorAttributes; ++i) {
        names.insert(nameOf(static_cast<ActorAttribute>(i)));
    }
    m_agents->setNamedAttributes(names);
}

void CrowdRecognition::enter(const TrackFrame& frame)
{
    enterTime(frame);
    enterScene(frame);
    setActors(frame);
    enterActors(frame.number);
}

void CrowdRecognition::enterTime(const TrackFrame& frame)
{
    const TrackClock& clock = frame.clock;
    m_engine->setCurrentTime(
        std::make_shared<CSTimeStamp>(
            frame.number,
            clock.year,
            clock.month,
            clock.day,
            clock.hour,
            clock.minute,
            clock.second,
            clock.millisecond),
        frame.number);
}

void CrowdRecognition::enterScene(const TrackFrame& frame)
{
    const int agent = m_engine->getAgent(m_zones, true);
    m_engine->setAgentType(agent, "Type", std::make_shared<CSString>("Scene"), 0);
    m_engine->setAgentAttribute(agent, "Name", std::make_shared<CSString>("Scene0"), 0);
    m_engine->setAgentAttribute(
        agent, "NumberOfActors", std::make_shared<CSInt>(static_cast<int>(frame.actors.size())), 0);
}

void CrowdRecognition::setActors(const TrackFrame& frame)
{
    m_actors.resize(frame.actors.size());
    for (std::size_t i = 0; i < m_actors.size(); ++i) {
        const TrackedActor& tracked = frame.actors[i];
        const TrackPoint position = tracked.position.value_or(TrackPoint());
        const TrackSize size = tracked.size.value_or(TrackSize());
        const TrackBox& box = tracked.box;
        rhmDataActor& actor = m_actors[i];
        actor.setIdent(tracked.id);
        actor.setType(tracked.type);
        actor.setBoundingBox2D({box.x, box.y, box.width, box.height});
        actor.setCurrentPosition({position.x, position.y, position.z});
        actor.setInformation3D(Information3D(size.height, size.width, size.depth));
    }
}

void CrowdRecognition::enterActors(int frame)
{
    m_agents->startFrame();
    for (const rhmDataActor& actor : m_actors) {
        m_agents->enter(stateOf(actor, frame));
    }
}

ActorState CrowdRecognition::stateOf(const rhmDataActor& actor, int frame)
{
    const bool isPerson = actor.getType() == "PERSON";
    ActorState state;
    state.frame = frame;
    state.id = actor.getIdent();
    state.box = actor.getBoundingBox2D();
    state.position = actor.getCurrentPosition();
    state.size = actor.getInformation3D();
    state.type = isPerson ? "Person" : "Mobile";
    if (isPerson) {
        state.posture = m_process->performPostureRecognition(
            static_cast<double>(state.size.getHeight()),
            static_cast<double>(state.size.getWidth()),
            static_cast<double>(state.size.getDepth()));
    }
    return state;
}

std::string crowdFile(const std::string& name)
{
    return SCENARIOMATCH_BENCH_FILES "/" + name;
}

FloorZone floorZone(const CrowdZone& zone)
{
    return {zone.left, zone.right, zone.bottom, zone.top};
}

void FloorInput::enter(const TrackFrame& frame)
{
    m_now = clockToMilliseconds(frame.clock);
    m_people.resize(frame.actors.size());
    for (std::size_t i = 0; i < m_people.size(); ++i) {
        const TrackedActor& actor = frame.actors[i];
        const TrackPoint place = actor.position.value_or(TrackPoint());
        FloorPerson& person = m_people[i];
        person.wasThere = person.id == actor.id;
        person.lastX = person.x;
        person.lastY = person.y;
        person.id = actor.id;
        person.x = static_cast<double>(place.x);
        person.y = static_cast<double>(place.y);
    }
}

} // namespace scenariomatch
