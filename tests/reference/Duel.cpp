#include "tests/reference/Duel.h"

#include "tests/reference/Comparison.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace scenariomatch
{

namespace
{

// Drops what is written to a stream while it lives.
class Silence
{
public:
    explicit Silence(std::ostream& stream)
        : m_stream(stream)
        , m_before(stream.rdbuf(m_dropped.rdbuf()))
    {
    }

    Silence(const Silence&) = delete;
    Silence(Silence&&) = delete;
    Silence& operator=(const Silence&) = delete;
    Silence& operator=(Silence&&) = delete;

    ~Silence() { m_stream.rdbuf(m_before); }

private:
    std::ostringstream m_dropped;
    std::ostream& m_stream;
    std::streambuf* m_before;
};

// Subtypes in an order that is not that of their names, a type with no subtype of its own name, and
// one whose subtype is named twice.
const std::map<std::string, std::vector<std::string>> kObjectTypes{
    {"Person", {"Person", "Child"}},
    {"Child", {"Child"}},
    {"Bag", {"Bag"}},
    {"Thing", {"Bag", "Child", "Person"}},
    {"Zone", {"Zone"}},
    {"Any", {"Person", "Zone"}},
    {"Twice", {"Child", "Bag", "Child"}}};

constexpr const char* kAgentOperators =
    "operator beside(a : Person, b : Person) { apart_m(a->X, b->X) <=_m 1 }\n"
    "operator earlier(a : Component, b : Component) { a->Interval before_p b->Interval }\n";

void writeFile(const std::filesystem::path& file, const std::string& text)
{
    std::ofstream(file) << text;
}

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : ",") + word;
    }
    return text;
}

// A folder of the test's own, removed at the end.
class Folder
{
public:
    Folder()
    {
        std::string name = ::testing::TempDir() + "scenariomatch-duel-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        m_path = name;
    }

    Folder(const Folder&) = delete;
    Folder(Folder&&) = delete;
    Folder& operator=(const Folder&) = delete;
    Folder& operator=(Folder&&) = delete;

    ~Folder() { std::filesystem::remove_all(m_path); }

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

// The attributes that pure operators ask for: an engine may ask for them earlier, later or not at
// all.
void collectLookUps(const CConstraint& node, bool isPure, std::set<std::string>& names)
{
    if (node.m_operatorName == "->" && isPure) {
        names.insert(node.m_attribute);
    }
    const bool isPureHere = node.m_operator != nullptr && node.m_operator->describe().m_pure;
    for (const auto& child : node.m_children) {
        collectLookUps(*child, isPureHere, names);
    }
}

std::set<std::string> lookUpsOfPureOperators(const CSAllScenarios& scenarios)
{
    std::set<std::string> names;
    for (const auto& [kind, models] : scenarios.m_scenariosByKind) {
        for (const auto& model : models) {
            for (const auto& constraint : model->m_constraints) {
                collectLookUps(*constraint, false, names);
            }
        }
    }
    return names;
}

} // namespace

std::string Duel::Settings::text() const
{
    std::ostringstream out;
    out << "prolongation " << prolongation << ", time search " << timeSearch << ", ratio "
        << bayesianRatio << ", history " << historySize << '\n';
    return out.str();
}

Duel::Duel(const ModelSet& models)
    : m_operators(makeTestOperators(models.negation))
    , m_engine(std::make_unique<CSEngine>())
    , m_models(std::make_unique<CSEngine>())
{
    const Folder folder;
    writeFile(folder.path() / "models.txt", "Scenarios {\nduel,\n" + models.declarations + "}\n");
    writeFile(
        folder.path() / "settings.txt",
        "Engine {\nduel,\nUsedModels(" + joined(models.used) + ")\n}\n");
    writeFile(
        folder.path() / "engine.txt",
        "List {\nduel,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n");
    writeFile(folder.path() / "operators.txt", kAgentOperators);
    const Silence noTraces(std::cout);
    const Silence noWarnings(std::cerr);
    TestOperator::s_record = &m_referenceCalls;
    setUp(*m_models, folder.path().string());
    TestOperator::s_record = &m_engineCalls;
    setUp(*m_engine, folder.path().string());
    m_engine->setAllObjectTypes(kObjectTypes);
    m_reference = std::make_unique<ReferenceMatcher>(*m_models->m_allScenarios);
    m_reference->m_objectTypes = kObjectTypes;
    CSAgent::m_constantObjects["Zone"] = true;
    m_lookedUpByPureOperators = lookUpsOfPureOperators(*m_models->m_allScenarios);
    CSEngine::h_currentTime.clear();
}

Duel::~Duel()
{
    CSEngine::h_currentTime.clear();
    CConstraint::m_allOperators.clear();
    TestOperator::s_record = nullptr;
    CSAgent::m_constantObjects.clear();
    m_engine->setHistorySize(1);
    m_engine->setConstTimeSearch(600.0);
}

void Duel::setUp(CSEngine& engine, const std::string& folder)
{
    for (const auto& op : m_operators) {
        engine.addOperator(*op);
    }
    engine.readOperatorAgent(folder + "/operators.txt");
    engine.read(folder + "/engine.txt");
    engine.rewriteAgentOperator();
}

void Duel::configure(const Settings& settings)
{
    m_engine->m_constProlongation = settings.prolongation;
    m_engine->setConstTimeSearch(settings.timeSearch);
    m_engine->m_bayesianRatio = settings.bayesianRatio;
    m_engine->setHistorySize(settings.historySize);
    m_reference->m_constProlongation = settings.prolongation;
    m_reference->m_constTimeSearch = settings.timeSearch;
    m_reference->m_bayesianRatio = settings.bayesianRatio;
    m_reference->m_historySize = settings.historySize;
}

void Duel::observe(bool isObserved)
{
    m_engine->setObserver(isObserved ? &m_observer : nullptr);
    m_reference->m_log = isObserved ? &m_referenceLog : nullptr;
}

void Duel::enterConstant(const SceneObject& object)
{
    const int id = m_engine->getAgent(object.host, true);
    m_engine->setAgentType(id, "Type", std::make_shared<CSString>(object.type), 0);
    CSAgent& agent = *m_reference->m_agents.at(m_reference->agent(object.host, true));
    agent.setType(std::make_shared<CSString>(object.type), 0);
    for (const auto& [name, value] : object.attributes) {
        m_engine->setAgentAttribute(id, name, value.make(), 0);
        agent.set(name, value.make(), 0);
    }
}

void Duel::enterActor(const SceneObject& actor, int frame)
{
    const int id = m_engine->getAgent(actor.host, false);
    CSAgent& agent = *m_reference->m_agents.at(m_reference->agent(actor.host, false));
    if (actor.seen) {
        m_engine->setAgentFrameID(id, frame);
        agent.setFrameID(frame);
    }
    m_engine->setAgentType(id, "Type", std::make_shared<CSString>(actor.type), frame);
    agent.setType(std::make_shared<CSString>(actor.type), frame);
    for (const auto& [name, value] : actor.attributes) {
        m_engine->setAgentAttribute(id, name, value.make(), frame);
        agent.set(name, value.make(), frame);
    }
}

bool Duel::step(const SceneFrame& frame)
{
    m_engine->setCurrentTime(
        std::make_shared<CSTimeStamp>(frame.number, frame.seconds, frame.milliseconds),
        frame.number);
    m_reference->setCurrentTime(
        std::make_shared<CSTimeStamp>(frame.number, frame.seconds, frame.milliseconds),
        frame.number);
    for (const SceneObject& object : frame.constants) {
        enterConstant(object);
    }
    for (const SceneObject& actor : frame.actors) {
        enterActor(actor, frame.number);
    }
    m_engineLog.clear();
    m_referenceLog.clear();
    m_referenceCalls.m_calls.clear();
    TestOperator::s_record = &m_referenceCalls;
    try {
        m_reference->infer();
    } catch (const std::length_error&) {
        return false;
    }
    m_engineCalls.m_calls.clear();
    TestOperator::s_record = &m_engineCalls;
    m_engine->infer();
    return true;
}

std::string Duel::difference(Look look) const
{
    std::string found = compareRecognised(*m_engine, *m_reference);
    found += compareStatistics(*m_engine, *m_reference);
    found += compareLines("calls of operators", m_engineCalls.m_calls, m_referenceCalls.m_calls);
    found += compareLines("steps", m_engineLog.text(), m_referenceLog.text());
    found += compareAgents(
        "agents", m_engine->agents(), m_reference->m_agents, m_lookedUpByPureOperators);
    found += compareTimes(*m_reference);
    if (look == Look::Everywhere) {
        found += compareFirstLevelCandidates(*m_engine, *m_reference);
        found += compareAgents(
            "components",
            m_engine->components(),
            m_reference->m_components,
            m_lookedUpByPureOperators);
    }
    if (TestOperator::s_misuse != 0) {
        found += "an operator without plain values was asked for one\n";
        TestOperator::s_misuse = 0;
    }
    return found;
}

} // namespace scenariomatch
