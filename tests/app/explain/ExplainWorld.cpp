#include "tests/app/explain/ExplainWorld.h"

#include "app/explain/EvidenceObserver.h"
#include "app/explain/Summary.h"
#include "app/StreamRedirection.h"
#include "engine/CSEngine.h"
#include "tests/app/ProgramRun.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <fstream>
#include <iostream>
#include <utility>

namespace scenariomatch
{

namespace
{

// Shows the models of an engine.
class EngineView : public RecognitionView
{
public:
    explicit EngineView(const CSEngine& engine)
        : m_engine(engine)
    {
    }

    void visitEvents(const EventVisitor& /*visit*/) const override {}

    RecognitionCounters counters() const override { return {}; }

    int nextEventId() const override { return 0; }

    void setNextEventId(int /*id*/) override {}

    void visitModels(const ModelVisitor& visit) const override
    {
        for (const auto& [kind, models] : m_engine.m_allScenarios->m_scenariosByKind) {
            for (const auto& model : models) {
                if (model->m_used) {
                    visit(*model);
                }
            }
        }
    }

    void printPlans(std::ostream& /*out*/) const override {}

    void setObserver(RecognitionObserver* /*observer*/) override {}

private:
    const CSEngine& m_engine;
};

// Writes down what is recognised, and passes everything on.
class Recorder : public RecognitionObserver
{
public:
    Recorder(WorldRun& run, RecognitionObserver* next)
        : m_run(run)
        , m_next(next)
    {
    }

    bool needsAllCandidates() const override { return false; }

    void frameStarted(FrameView& view, const CSTimeStamp& now) override
    {
        if (m_next != nullptr) {
            m_next->frameStarted(view, now);
        }
    }

    void candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings) override
    {
        if (m_next != nullptr) {
            m_next->candidateTested(model, bindings);
        }
    }

    void constraintFalse(
        const CSScenario& model,
        const CConstraint::Bindings& bindings,
        std::size_t constraint) override
    {
        if (m_next != nullptr) {
            m_next->constraintFalse(model, bindings, constraint);
        }
    }

    void notConfident(
        const CSScenario& model, const CConstraint::Bindings& bindings, double confidence) override
    {
        if (m_next != nullptr) {
            m_next->notConfident(model, bindings, confidence);
        }
    }

    void instanceNew(const CSScenarioInstance& instance) override
    {
        m_run.events.push_back(instance.m_id);
        note(instance);
        if (m_next != nullptr) {
            m_next->instanceNew(instance);
        }
    }

    void instanceExtended(const CSScenarioInstance& instance) override
    {
        note(instance);
        if (m_next != nullptr) {
            m_next->instanceExtended(instance);
        }
    }

    void instanceExpired(const CSScenarioInstance& instance) override
    {
        if (m_next != nullptr) {
            m_next->instanceExpired(instance);
        }
    }

private:
    void note(const CSScenarioInstance& instance)
    {
        m_run.recognitions.insert(
            {instance.m_scenario->m_name,
             objectsText(participantsOf(instance.m_bindings)),
             instance.m_end->m_frameID});
    }

    WorldRun& m_run;
    RecognitionObserver* m_next;
};

void prepare(CSEngine& engine, const World& world)
{
    static const RunFolder folder;
    CSEngine::h_currentTime.clear();
    CSAgent::m_constantObjects = {{"Zone", true}, {"Person", false}};
    for (const auto& [name, op] : standardOperators()) {
        engine.addOperator(*op);
    }
    for (CSOperatorInterfaceAbstract* op : world.operators) {
        engine.addOperator(*op);
    }
    engine.readOperatorAgent("");
    engine.setAllObjectTypes({{"Person", {"Person"}}, {"Zone", {"Zone"}}});
    constexpr int kHistory = 50;
    engine.setHistorySize(kHistory);
    engine.setConstTimeSearch(world.lookBack);
    engine.m_constProlongation = world.prolongation;
    engine.m_bayesianRatio = world.bayesianRatio;
    std::string models;
    std::string names;
    for (const WorldModel& model : world.models) {
        models += model.text();
        names += (names.empty() ? "" : ",") + model.name;
    }
    static std::string written;
    const std::string settings = "Engine {\nWorld,\nUsedModels(" + names + ")\n}\n";
    if (settings != std::exchange(written, settings)) {
        std::ofstream(folder.path() + "/settings.txt") << settings;
        std::ofstream(folder.path() + "/engine.txt")
            << "List {\nWorld,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n";
    }
    std::ofstream(folder.path() + "/models.txt") << "Scenarios {\nWorld,\n" << models << "}\n";
    engine.read(folder.path() + "/engine.txt");
}

void enterZones(CSEngine& engine, const World& world)
{
    int number = 0;
    for (const WorldZone& zone : world.zones) {
        const int id = engine.getAgent(number++, true);
        auto vertices = std::make_shared<CS3DDPoints>();
        vertices->addPoint({zone.left, zone.bottom, 0.0});
        vertices->addPoint({zone.right, zone.bottom, 0.0});
        vertices->addPoint({zone.right, zone.top, 0.0});
        vertices->addPoint({zone.left, zone.top, 0.0});
        engine.setAgentType(id, "Type", std::make_shared<CSString>("Zone"), 0);
        engine.setAgentAttribute(id, "Name", std::make_shared<CSString>(zone.name), 0);
        engine.setAgentAttribute(id, "Vertices", vertices, 0);
    }
}

void runFrame(CSEngine& engine, const World& world, int frame)
{
    constexpr int kMilliseconds = 40;
    constexpr int kSecond = 1000;
    const int now = frame * kMilliseconds;
    engine.setCurrentTime(
        std::make_shared<CSTimeStamp>(frame, 2026, 5, 4, 10, 0, now / kSecond, now % kSecond),
        frame);
    for (const auto& [person, places] : world.tracks) {
        const auto place = places.find(frame);
        if (place == places.end()) {
            continue;
        }
        const int id = engine.getAgent(person, false);
        engine.setAgentFrameID(id, frame);
        engine.setAgentType(id, "Type", std::make_shared<CSString>("Person"), frame);
        const auto [x, y] = place->second;
        engine.setAgentAttribute(id, "Position", std::make_shared<CS3DDPoint>(x, y, 0.0), frame);
    }
    engine.infer();
}

} // namespace

const CConstraint::OperatorTable& standardOperators()
{
    static CSEngine engine;
    if (engine.operators().empty()) {
        engine.m_operatorPluginPath =
            std::string(SCENARIOMATCH_BUILD_LIB) + "/scenariomatch/operators";
        engine.setAllOperators();
    }
    return engine.operators();
}

void WorldZone::grow(double by)
{
    left -= by;
    bottom -= by;
    right = std::max(right + by, left);
    top = std::max(top + by, bottom);
}

std::string WorldConstraint::text() const
{
    return limit ? fmt::format("{}{}{}", before, *limit, after) : before + after;
}

std::string WorldModel::text() const
{
    std::string text = fmt::format(
        "{} ({}{},\n  PhysicalObjects({})\n",
        kind,
        name,
        threshold ? fmt::format("[{}]", *threshold) : "",
        objects);
    if (!components.empty()) {
        text += fmt::format("  Components({})\n", components);
    }
    text += "  Constraints(";
    for (const WorldConstraint& constraint : constraints) {
        text += fmt::format("({})", constraint.text());
    }
    return text + "))\n";
}

WorldModel& World::model(const std::string& name)
{
    return *std::find_if(
        models.begin(), models.end(), [&](const WorldModel& one) { return one.name == name; });
}

WorldZone& World::zone(const std::string& name)
{
    return *std::find_if(
        zones.begin(), zones.end(), [&](const WorldZone& one) { return one.name == name; });
}

void World::delay(int person, int by)
{
    std::map<int, std::pair<double, double>> later;
    for (const auto& [frame, place] : tracks[person]) {
        later[frame + by] = place;
    }
    tracks[person] = later;
    frames += std::abs(by);
}

std::string World::text() const
{
    std::string text;
    for (const WorldModel& model : models) {
        text += model.text();
    }
    for (const WorldZone& zone : zones) {
        text += fmt::format(
            "zone {} {} {} to {} {}\n", zone.name, zone.left, zone.bottom, zone.right, zone.top);
    }
    for (const auto& [person, places] : tracks) {
        text += fmt::format("person {}:", person);
        for (const auto& [frame, place] : places) {
            text += fmt::format(" {}:({},{})", frame, place.first, place.second);
        }
        text += '\n';
    }
    return text + fmt::format("ratio {} look back {}\n", bayesianRatio, lookBack);
}

bool WorldRun::has(const std::string& model, const std::string& objects) const
{
    return std::any_of(
        recognitions.begin(), recognitions.end(), [&](const WorldRecognition& recognition) {
            return recognition.model == model && recognition.objects == objects;
        });
}

WorldRun
runWorld(const World& world, const std::optional<WhyNotQuestion>& whyNot, std::optional<int> why)
{
    const StreamRedirection silence(std::cout, nullptr);
    WorldRun run;
    CSEngine engine;
    prepare(engine, world);
    const EngineView view(engine);
    std::optional<WhyNotObserver> whyNotObserver;
    std::optional<EvidenceObserver> evidenceObserver;
    RecognitionObserver* asked = nullptr;
    if (whyNot) {
        WhyNotQuestion question = *whyNot;
        question.lookBack = world.lookBack;
        asked = &whyNotObserver.emplace(view, question);
    } else if (why) {
        asked = &evidenceObserver.emplace(*why);
    }
    Recorder recorder(run, asked);
    engine.setObserver(&recorder);
    enterZones(engine, world);
    for (int frame = 0; frame < world.frames; ++frame) {
        runFrame(engine, world, frame);
    }
    if (whyNotObserver) {
        run.why = whyNotObserver->answer();
    }
    if (evidenceObserver) {
        run.evidence = evidenceObserver->evidence();
    }
    engine.setObserver(nullptr);
    return run;
}

} // namespace scenariomatch
