#pragma once

#include "app/TemporaryFile.h"
#include "app/TrackFrame.h"
#include "bench/Crowd.h"
#include "bench/Floors.h"
#include "host/rhmDataActor.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class CSEngine;
class ScenarioMatchProcess;

namespace scenariomatch
{

class ActorAgents;
struct ActorState;

// The engine, prepared by the recognition process from files as a user writes
// them, and fed with actors by the same code; so that its inference can be
// timed by itself.
//
// One at a time: settings of the engine are class-wide. Operators are those of
// the build.
//
// Example:
//     CrowdRecognition recognition(crowdFile("engine.txt"), {crowd.zoneA(),
//     crowd.zoneB()}); for (const TrackFrame& frame : crowd.frames()) {
//         recognition.enter(frame);
//         recognition.engine().infer();
//     }
class CrowdRecognition
{
public:
    CrowdRecognition(const std::string& engineFile, const std::vector<CrowdZone>& zones);
    CrowdRecognition(const CrowdRecognition&) = delete;
    CrowdRecognition(CrowdRecognition&&) = delete;
    CrowdRecognition& operator=(const CrowdRecognition&) = delete;
    CrowdRecognition& operator=(CrowdRecognition&&) = delete;
    ~CrowdRecognition();

    CSEngine& engine() { return *m_engine; }

    // As if the models spoke of every attribute of an actor; before the first frame.
    void nameAllAttributes();

    // Time, scene and actors of a frame.
    void enter(const TrackFrame& frame);
    void enterTime(const TrackFrame& frame);
    void enterScene(const TrackFrame& frame);
    // The platform's part, then the process's.
    void setActors(const TrackFrame& frame);
    void enterActors(int frame);

    // What a person is given in each frame.
    static constexpr std::size_t kAttributesPerPerson = 13;

private:
    ActorState stateOf(const rhmDataActor& actor, int frame);

    TemporaryFile m_context;
    int m_zones;
    std::unique_ptr<ScenarioMatchProcess> m_process;
    std::shared_ptr<CSEngine> m_engine;
    std::unique_ptr<ActorAgents> m_agents;
    std::vector<rhmDataActor> m_actors;
};

// A file of bench/crowd/.
std::string crowdFile(const std::string& name);

FloorZone floorZone(const CrowdZone& zone);

// The people of a frame as the floors want them, with where they were in the
// frame entered before.
class FloorInput
{
public:
    void enter(const TrackFrame& frame);

    FloorPeople people() const { return m_people; }

    // Milliseconds.
    std::int64_t now() const { return m_now; }

private:
    std::vector<FloorPerson> m_people;
    std::int64_t m_now = 0;
};

} // namespace scenariomatch
