#include "tests/reference/Duel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
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

const std::map<std::string, std::vector<std::string>> kObjectTypes{
    {"Person", {"Person", "Child"}},
    {"Child", {"Child"}},
    {"Bag", {"Bag"}},
    {"Thing", {"Bag", "Child", "Person"}},
    {"Zone", {"Zone"}},
    {"Any", {"Person", "Zone"}}};

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

bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

std::string stampText(const std::shared_ptr<CSTimeStamp>& stamp)
{
    std::ostringstream text;
    if (stamp) {
        text << std::setprecision(12) << stamp->m_frameID << "@" << stamp->m_seconds << "+"
             << stamp->m_milliseconds;
    }
    return text.str();
}

bool same(const std::shared_ptr<CSTimeStamp>& a, const std::shared_ptr<CSTimeStamp>& b)
{
    return a && b ? *a == *b && a->m_frameID == b->m_frameID : a == b;
}

std::string agentText(const std::shared_ptr<CSAgent>& agent)
{
    if (!agent) {
        return "none";
    }
    return (agent->m_constant              ? "constant "
            : agent->m_type == "Component" ? "component "
                                           : "") +
           std::to_string(agent->m_ID) + "/" + std::to_string(agent->m_engineID);
}

bool sameIdentity(const std::shared_ptr<CSAgent>& a, const std::shared_ptr<CSAgent>& b)
{
    if (!a || !b) {
        return a == b;
    }
    return a->m_ID == b->m_ID && a->m_constant == b->m_constant && a->m_type == b->m_type &&
           a->m_engineID == b->m_engineID;
}

template <class Instance>
std::string instanceText(const Instance& instance)
{
    std::ostringstream text;
    text << instance.m_id << " " << instance.m_scenario->m_name << " "
         << stampText(instance.m_start) << ".." << stampText(instance.m_end) << " confidence "
         << instance.m_confidence;
    for (const auto& [variable, agent] : instance.m_bindings) {
        text << " " << variable << "=" << agentText(agent);
    }
    return text.str();
}

template <class Instances>
std::string listText(const Instances& instances)
{
    std::string text;
    for (const auto& instance : instances) {
        text += "    " + instanceText(*instance) + "\n";
    }
    return text;
}

bool sameBindings(const CConstraint::Bindings& a, const CConstraint::Bindings& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.first == y.first && sameIdentity(x.second, y.second);
    });
}

bool sameInstance(const CSScenarioInstance& a, const ReferenceInstance& b)
{
    return a.m_id == b.m_id && a.m_scenario->m_name == b.m_scenario->m_name &&
           same(a.m_start, b.m_start) && same(a.m_end, b.m_end) &&
           same(a.m_confidence, b.m_confidence) && sameBindings(a.m_bindings, b.m_bindings);
}

template <class Instances, class References>
std::string
compareInstances(const std::string& title, const Instances& engine, const References& reference)
{
    const bool equal = std::equal(
        engine.begin(),
        engine.end(),
        reference.begin(),
        reference.end(),
        [](const auto& a, const auto& b) { return sameInstance(*a, *b); });
    if (equal) {
        return "";
    }
    return title + "\n  engine:\n" + listText(engine) + "  reference:\n" + listText(reference);
}

std::string compareCandidates(
    const CSEngine::InstancesByModel& engine, const ReferenceMatcher::InstancesByModel& reference)
{
    const auto sameName = [](const auto& a, const auto& b) { return a.first == b.first; };
    if (!std::equal(engine.begin(), engine.end(), reference.begin(), reference.end(), sameName)) {
        return "models with candidates of the first level differ\n";
    }
    for (const auto& [name, instances] : engine) {
        std::string found =
            compareInstances("first level candidates of " + name, instances, reference.at(name));
        if (!found.empty()) {
            return found;
        }
    }
    return "";
}

std::string valueText(const std::shared_ptr<CSBasicType>& value)
{
    std::string text = describeValue(value);
    if (value) {
        for (const auto& [frame, earlier] : value->m_history) {
            text += " " + std::to_string(frame) + ":" + describeValue(earlier);
        }
    }
    return text;
}

bool sameContent(const CSBasicType& a, const CSBasicType& b)
{
    if (const auto* number = dynamic_cast<const CSDouble*>(&a)) {
        const auto* other = dynamic_cast<const CSDouble*>(&b);
        return other != nullptr && same(number->m_value, other->m_value);
    }
    if (const auto* text = dynamic_cast<const CSString*>(&a)) {
        const auto* other = dynamic_cast<const CSString*>(&b);
        return other != nullptr && *text == *other;
    }
    const auto* interval = dynamic_cast<const CSInterval*>(&a);
    const auto* other = dynamic_cast<const CSInterval*>(&b);
    return interval != nullptr && other != nullptr && same(interval->m_start, other->m_start) &&
           same(interval->m_end, other->m_end);
}

bool sameValue(const std::shared_ptr<CSBasicType>& a, const std::shared_ptr<CSBasicType>& b)
{
    if (!a || !b) {
        return a == b;
    }
    const auto sameEntry = [](const auto& x, const auto& y) {
        return x.first == y.first && sameValue(x.second, y.second);
    };
    return a->m_frame == b->m_frame && sameContent(*a, *b) &&
           std::equal(
               a->m_history.begin(),
               a->m_history.end(),
               b->m_history.begin(),
               b->m_history.end(),
               sameEntry);
}

std::string compareAgent(const std::string& title, const CSAgent& engine, const CSAgent& reference)
{
    std::string found;
    if (!same(engine.m_confidence, reference.m_confidence)) {
        found += " confidence";
    }
    if (engine.m_frames != reference.m_frames || engine.m_frameID != reference.m_frameID) {
        found += " frames";
    }
    if (engine.m_instances != reference.m_instances) {
        found += " instances";
    }
    if (engine.m_attributes.size() != reference.m_attributes.size()) {
        found += " attributes";
    }
    for (const auto& [name, value] : engine.m_attributes) {
        const auto other = reference.m_attributes.find(name);
        if (other == reference.m_attributes.end()) {
            found += " " + name;
        } else if (!sameValue(value, other->second)) {
            found +=
                " " + name + ": " + valueText(value) + " instead of " + valueText(other->second);
        }
    }
    return found.empty() ? found : title + " " + std::to_string(engine.m_ID) + ":" + found + "\n";
}

std::string compareAgents(
    const std::string& title,
    const std::map<int, std::shared_ptr<CSAgent>>& engine,
    const std::map<int, std::shared_ptr<CSAgent>>& reference)
{
    const bool equal = std::equal(
        engine.begin(),
        engine.end(),
        reference.begin(),
        reference.end(),
        [](const auto& a, const auto& b) {
            return a.first == b.first && sameIdentity(a.second, b.second);
        });
    if (!equal) {
        return title + " are others\n";
    }
    std::string found;
    for (const auto& [id, agent] : engine) {
        found += compareAgent(title, *agent, *reference.at(id));
    }
    return found;
}

std::string compareNumber(const std::string& title, int engine, int reference)
{
    return engine == reference ? std::string()
                               : title + ": engine " + std::to_string(engine) + ", reference " +
                                     std::to_string(reference) + "\n";
}

std::string compareCalls(const CallRecord& engine, const CallRecord& reference)
{
    if (engine.m_calls == reference.m_calls) {
        return "";
    }
    std::string text = "calls of operators\n  engine:\n";
    for (const std::string& call : engine.m_calls) {
        text += "    " + call + "\n";
    }
    text += "  reference:\n";
    for (const std::string& call : reference.m_calls) {
        text += "    " + call + "\n";
    }
    return text;
}

std::string compareTimes(
    const std::map<int, std::shared_ptr<CSTimeStamp>>& engine,
    const std::map<int, std::shared_ptr<CSTimeStamp>>& reference)
{
    const bool equal = std::equal(
        engine.begin(),
        engine.end(),
        reference.begin(),
        reference.end(),
        [](const auto& a, const auto& b) {
            return a.first == b.first && same(a.second, b.second);
        });
    return equal ? "" : "kept times differ\n";
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

} // namespace

Duel::Duel(const std::string& declarations, const std::vector<std::string>& usedModels)
    : m_operators(makeRecordingOperators())
    , m_engine(std::make_unique<CSEngine>())
    , m_models(std::make_unique<CSEngine>())
{
    const Folder folder;
    const std::filesystem::path engineFile = folder.path() / "engine.txt";
    writeFile(folder.path() / "models.txt", "Scenarios {\nduel,\n" + declarations + "}\n");
    writeFile(
        folder.path() / "settings.txt",
        "Engine {\nduel,\nUsedModels(" + joined(usedModels) + ")\n}\n");
    writeFile(
        engineFile, "List {\nduel,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n");
    const Silence noTraces(std::cout);
    const Silence noWarnings(std::cerr);
    setUp(*m_engine, engineFile.string());
    setUp(*m_models, engineFile.string());
    m_engine->setAllObjectTypes(kObjectTypes);
    m_reference = std::make_unique<ReferenceMatcher>(*m_models->m_allScenarios);
    m_reference->m_objectTypes = kObjectTypes;
    CSEngine::h_currentTime.clear();
}

Duel::~Duel()
{
    CSEngine::h_currentTime.clear();
    CConstraint::m_allOperators.clear();
    RecordingOperator::s_record = nullptr;
    m_engine->setHistorySize(1);
    m_engine->setConstTimeSearch(600.0);
}

void Duel::setUp(CSEngine& engine, const std::string& engineFile)
{
    for (const auto& op : m_operators) {
        engine.addOperator(*op);
    }
    engine.readOperatorAgent("");
    engine.read(engineFile);
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

void Duel::enterConstant(const Object& object)
{
    const int id = m_engine->getAgent(object.host, true);
    m_engine->setAgentType(id, "Type", std::make_shared<CSString>(object.type), 0);
    m_engine->setAgentAttribute(id, "P", std::make_shared<CSDouble>(object.position), 0);
    CSAgent& agent = *m_reference->m_agents.at(m_reference->agent(object.host, true));
    agent.setType(std::make_shared<CSString>(object.type), 0);
    agent.set("P", std::make_shared<CSDouble>(object.position), 0);
}

void Duel::enterActors(const Frame& frame)
{
    for (const Object& actor : frame.actors) {
        const int id = m_engine->getAgent(actor.host, false);
        m_engine->setAgentFrameID(id, frame.number);
        m_engine->setAgentType(id, "Type", std::make_shared<CSString>(actor.type), frame.number);
        CSAgent& agent = *m_reference->m_agents.at(m_reference->agent(actor.host, false));
        agent.setFrameID(frame.number);
        agent.setType(std::make_shared<CSString>(actor.type), frame.number);
        if (std::isnan(actor.position)) {
            continue;
        }
        m_engine->setAgentAttribute(
            id, "P", std::make_shared<CSDouble>(actor.position), frame.number);
        agent.set("P", std::make_shared<CSDouble>(actor.position), frame.number);
    }
}

void Duel::step(const Frame& frame)
{
    m_engine->setCurrentTime(
        std::make_shared<CSTimeStamp>(frame.number, frame.seconds, frame.milliseconds),
        frame.number);
    m_reference->setCurrentTime(
        std::make_shared<CSTimeStamp>(frame.number, frame.seconds, frame.milliseconds),
        frame.number);
    enterActors(frame);
    m_engineCalls.m_calls.clear();
    RecordingOperator::s_record = &m_engineCalls;
    m_engine->infer();
    m_referenceCalls.m_calls.clear();
    RecordingOperator::s_record = &m_referenceCalls;
    m_reference->infer();
}

std::string Duel::difference() const
{
    const CSEngine::Statistics& statistics = m_engine->statistics();
    std::string found = compareInstances(
        "recognised instances", m_engine->recognisedScenarios(), m_reference->m_recognised);
    found += compareNumber("tested", statistics.tested, m_reference->m_tested);
    found += compareNumber("accepted", statistics.accepted, m_reference->m_accepted);
    found += compareNumber("completions", statistics.completions, m_reference->m_completions);
    found += compareCalls(m_engineCalls, m_referenceCalls);
    found +=
        compareCandidates(m_engine->firstLevelCandidates(), m_reference->m_firstLevelCandidates);
    found += compareAgents("agents", m_engine->agents(), m_reference->m_agents);
    found += compareAgents("components", m_engine->components(), m_reference->m_components);
    found += compareTimes(CSEngine::h_currentTime, m_reference->m_timeHistory);
    return found;
}

} // namespace scenariomatch
