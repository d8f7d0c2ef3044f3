#include "bench/CrowdRecognition.h"

#include "app/FrameClock.h"
#include "app/InstalledFiles.h"
#include "app/StreamRedirection.h"
#include "engine/CSEngine.h"
#include "plugin/ScenarioMatchProcess.h"

#include <iostream>
#include <stdexcept>
#include <utility>

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

std::shared_ptr<CSInt> whole(int value)
{
    return std::make_shared<CSInt>(value);
}

std::shared_ptr<CSDouble> real(float value)
{
    return std::make_shared<CSDouble>(static_cast<double>(value));
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
}

CrowdRecognition::~CrowdRecognition() = default;

void CrowdRecognition::enter(const TrackFrame& frame)
{
    enterTime(frame);
    enterScene(frame);
    enterActors(frame);
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
        agent, "NumberOfActors", whole(static_cast<int>(frame.actors.size())), 0);
}

void CrowdRecognition::enterActors(const TrackFrame& frame)
{
    for (const TrackedActor& actor : frame.actors) {
        enterActor(actor, frame.number);
    }
}

void CrowdRecognition::enterActor(const TrackedActor& actor, int frame)
{
    const int agent = m_engine->getAgent(actor.id, false);
    const auto set = [&](const char* name, std::shared_ptr<CSBasicType> value) {
        m_engine->setAgentAttribute(agent, name, std::move(value), frame);
    };
    set("ID", whole(actor.id));
    m_engine->setAgentFrameID(agent, frame);
    const TrackBox& box = actor.box;
    set("Position2D", std::make_shared<CS2DDPoint>(box.x + box.width / 2, box.y + box.height - 1));
    set("XMin", whole(box.x));
    set("XMax", whole(box.x + box.width - 1));
    set("YMin", whole(box.y));
    set("YMax", whole(box.y + box.height - 1));
    const TrackPoint position = actor.position.value_or(TrackPoint());
    const TrackSize size = actor.size.value_or(TrackSize());
    set("Position",
        std::make_shared<CS3DDPoint>(
            static_cast<double>(position.x),
            static_cast<double>(position.y),
            static_cast<double>(position.z)));
    set("Width", real(size.width));
    set("Height", real(size.height));
    set("Depth", real(size.depth));
    set("Speed", real(0.0F));
    const bool isPerson = actor.type == "PERSON";
    m_engine->setAgentType(
        agent, "Type", std::make_shared<CSString>(isPerson ? "Person" : "Mobile"), frame);
    if (isPerson) {
        const int posture = m_process->performPostureRecognition(
            static_cast<double>(size.height),
            static_cast<double>(size.width),
            static_cast<double>(size.depth));
        set("Posture", whole(posture));
    }
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
