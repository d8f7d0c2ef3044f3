#pragma once

#include "engine/CSScenarioInstance.h"
#include "scenario/CSAllScenarios.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch
{
class AgentOperator;
class PrimitivePlan;
class RecognitionObserver;
struct Candidate;
struct Candidates;
struct RecognisedEntry;
enum class CompletionRejection : std::uint8_t;
} // namespace scenariomatch

// The number of ordered selections of k out of n, in unsigned 32-bit arithmetic that wraps; 0
// unless n >= k >= 0.
CS_EXPORT unsigned permutation(int n, int k);

// All ordered selections of k distinct positions of the values, as lists of the selected values:
// position by position in ascending order, each followed by the selections from the others.
CS_EXPORT std::vector<std::vector<int>> createPermutationList(std::vector<int> values, int k);

// All index tuples with 0 <= tuple[j] < sizes[j], the first position varying slowest.
CS_EXPORT std::vector<std::vector<int>> createPermutationList(std::vector<int> sizes);

// The order of recognised instances: latest end first.
CS_EXPORT bool compare_scenario_end(
    const std::shared_ptr<CSScenarioInstance>& a, const std::shared_ptr<CSScenarioInstance>& b);

// The recognition engine: holds models, operators, agents and what has been recognised.
//
// Use: configure (operators, thresholds, alarm levels, time constants, object types), read the
// engine file, enter the constant agents; then per frame set the current time, enter the mobile
// agents, call infer() and read recognisedScenarios(). One engine per process, all calls from one
// thread.
class CS_EXPORT CSEngine
{
public:
    using Instances = std::vector<std::shared_ptr<CSScenarioInstance>>;
    using InstancesByModel = std::map<std::string, Instances>;

    // What the last infer() did.
    struct Statistics
    {
        int tested = 0;
        int accepted = 0;
        // Completions of composite candidates that were tried.
        int completions = 0;
    };

    CSEngine();
    CSEngine(const CSEngine&) = delete;
    CSEngine(CSEngine&&) = delete;
    CSEngine& operator=(const CSEngine&) = delete;
    CSEngine& operator=(CSEngine&&) = delete;
    virtual ~CSEngine();

    // Configuration (CSEngineConfiguration.cpp)

    // Reads the engine file and prepares the models. Unreadable files are skipped; what is wrong
    // with a model is reported on standard error. Throws std::out_of_range where text is cut at a
    // position that does not exist.
    void read(const std::string& fileName);
    // Reads a settings file: the constants files, used models and interested objects that it names.
    void readEngine(const std::string& fileName);
    // Reads constants from a file of them.
    void readEnvVars(const std::string& fileName);
    // Keeps the models that are used; a name without a model is reported on standard error.
    void chooseScenarioModels();
    // Drops models with an operator that is not loaded, and reports them.
    void checkScenarioModelsConstraints();
    // Takes the mark of use from models with a component that is no model, and reports them.
    void checkScenarioModels();
    // Replaces calls of declared agent operators in all models.
    void rewriteAgentOperator();
    // Stores a threshold for a kind of model; models take theirs from their constants.
    void setThresholdByEventType(const std::string& type, double value);
    // Gives an alarm level that models may name its rank.
    void setLevelAlarm(const std::string& name, int level);
    // How many earlier values of an attribute, and times of frames, are kept.
    void setHistorySize(int size);
    // How long an instance is remembered after its end.
    void setConstTimeSearch(double seconds);
    // Every type with all that derive from it, itself first.
    void setAllObjectTypes(std::map<std::string, std::vector<std::string>> types);
    // Reads an object-type file into the tables of CSAgent.
    void readAllObjects(const std::string& fileName);

    // Operators (CSEngineOperators.cpp)

    // Loads every operator plug-in of m_operatorPluginPath and files the operators by name.
    void setAllOperators();
    // Files one operator that lives at least as long as the engine's models.
    void addOperator(CSOperatorInterfaceAbstract& op);
    // Reads the operator description, then copies the operator table into
    // CConstraint::m_allOperators.
    void readOperatorAgent(const std::string& fileName);
    // Is told, once per operator, that it threw or gave another value than its description says,
    // and that it is slow, and once per model that it had too many candidates; null by default.
    void setFailureReport(std::function<void(const std::string& message)> report);

    // When a frame takes longer than this (1 s), the operators of the next one are timed, and those
    // that take half as long are reported.
    void setSlowFrame(std::chrono::milliseconds bound);

    // How often operators have thrown or given another value than their descriptions say.
    std::uint64_t operatorFailures() const { return m_operatorFailures; }

    const CConstraint::OperatorTable& operators() const { return m_operators; }

    // Agents and time (CSEngineAgents.cpp)

    // The engine's identifier of the host's object, which is entered when it is new.
    int getAgent(int hostId, bool isConstant);
    // These three ignore an identifier that is not in the table.
    void setAgentFrameID(int agentId, int frame);
    void setAgentType(
        int agentId,
        const std::string& attributeName,
        const std::shared_ptr<CSString>& type,
        int frame);
    void setAgentAttribute(
        int agentId,
        const std::string& attributeName,
        std::shared_ptr<CSBasicType> value,
        int frame);
    // Appends the identifiers of the agents of the type that are constant or seen in the current
    // frame.
    void getAllAgent(const std::string& type, std::vector<int>& ids) const;
    // Makes sure that the pseudo-agent of a recognised instance exists.
    int getComponent(int id);
    // Marks the constant agents that the settings call interesting; reports names without an agent.
    void chooseConstantObjects();
    // Begins a frame without entering its time into the history of times.
    void setCurrentTime(std::shared_ptr<CSTimeStamp> time);
    // Begins a frame.
    void setCurrentTime(std::shared_ptr<CSTimeStamp> time, int frame);
    // Drops the oldest time of a frame where there are too many.
    void cleanHistory();
    // Removes the mobile agents that are not in the current frame and take part in no instance.
    void removeAgents();
    // Removes all constant agents.
    void removeConstAgents();
    // Writes the identifiers of all agents to standard output.
    void printAgents() const;

    const std::map<int, std::shared_ptr<CSAgent>>& agents() const { return m_agents; }

    // The pseudo-agents of recognised instances, by instance id, with all their attributes.
    const std::map<int, std::shared_ptr<CSAgent>>& components() const;

    const std::shared_ptr<CSTimeStamp>& currentTime() const { return m_currentTime; }

    // Recognition (CSEnginePrimitive.cpp, CSEngineComposite.cpp, CSEngineInference.cpp)

    // Recognises everything that happens in the current frame, level by level.
    void infer();
    // The first level: adds candidates of the models above what it recognises to newInstances.
    void recognisePrimitiveState(InstancesByModel& newInstances);
    // Completes the candidates that were seeded with what has been recognised.
    void createComplexEvent(InstancesByModel& candidates, const InstancesByModel& seeded);
    // A further level: verifies complete candidates, and adds those above what it recognises.
    void recogniseComplexEvent(const InstancesByModel& candidates, InstancesByModel& newInstances);
    // Extends an earlier recognition of the same model and participants or adds the instance.
    // Returns the id of the one that now stands for it and writes its start.
    int addRecognisedEvent(
        const std::shared_ptr<CSScenarioInstance>& instance,
        std::shared_ptr<CSTimeStamp>& startOut);
    // Multiplies in the confidences of the components, divides by m_bayesianRatio, and compares
    // with the model's threshold. An instance with an unbound component is not confident.
    bool isConfident(const std::shared_ptr<CSScenarioInstance>& instance) const;
    // Forgets instances that ended longer ago than they are remembered.
    void cleanRecognisedScenario();
    // Writes the instances of a kind that end now to standard output; of every kind for "".
    void printRecognisedScenario(const std::string& type) const;
    // Writes all instances to standard output.
    void printAllRecognisedScenario() const;
    // Brings the recognised instances into the order of compare_scenario_end, stably.
    void sortRecognisedScenarios();
    // What is recognised and still alive, latest end first. Who looks on leaves the bindings as
    // they are.
    const std::list<std::shared_ptr<CSScenarioInstance>>& recognisedScenarios() const;

    // The id of the next instance. Whoever goes on for an engine that has ended sets it, before the
    // first frame, to one that the other has not used.
    int nextInstanceId() const { return m_nextInstanceId; }

    void setNextInstanceId(int id) { m_nextInstanceId = id; }

    // Composite candidates that the first composite level built, by model name. Ask in each frame.
    const InstancesByModel& firstLevelCandidates() const;

    const Statistics& statistics() const { return m_statistics; }

    // How many candidates of a model are tried in a frame, counted with each agent or recognised
    // instance that is tried for a variable; the others are left out. 0 for all, the default.
    void setCandidateLimit(std::uint64_t most) { m_candidateLimit = most; }

    // How often a model has had too many candidates in a frame.
    std::uint64_t candidateCuts() const { return m_candidateCuts; }

    // The observer must outlive its use; null for none.
    void setObserver(scenariomatch::RecognitionObserver* observer) { m_observer = observer; }

    // Writes for people how the models are matched: in which order variables are bound, where each
    // constraint is tested, what is computed once for all.
    void printPlans(std::ostream& out);

    // Settings that the host writes.
    std::string m_operatorPluginPath;
    bool m_debug = false;
    double m_bayesianRatio = 1.0;
    // Seconds after its last recognition in which an instance may still be extended.
    double m_constProlongation = 0.0;
    // Alarm level name to number, and threshold by kind (stored only).
    std::map<std::string, int> m_levelAlarm;
    std::map<std::string, double> m_thresholdByEventType;
    // What the engine file and its settings name.
    std::vector<std::string> m_usedModels;
    std::vector<std::string> m_interestedObjects;
    std::map<std::string, double> m_envVars;
    std::unique_ptr<CSAllScenarios> m_allScenarios;

    // Time stamps of the most recent frames, by frame number, and how many of them are kept.
    static std::map<int, std::shared_ptr<CSTimeStamp>> h_currentTime;
    static std::int32_t m_historySize;

private:
    // Configuration
    void readEngineFile(const std::string& fileName);
    void announce(const char* step) const;

    // Operators
    void installFailureHandler();
    void noteOperatorFailure(const CSOperatorInterfaceAbstract& op, const std::string& what);

    // Agents
    bool isPresent(const CSAgent& agent) const;

    // What recognition works with (Recognition.h).
    struct Recognition;
    struct Outcome;
    struct Seeds;
    Recognition& preparedRecognition();

    void noteCut(const std::string& modelName, std::uint64_t candidates);

    // Primitive states
    void recognisePrimitives(Seeds& seeds);
    void
    recogniseCandidate(const scenariomatch::PrimitivePlan& plan, Outcome& outcome, Seeds& seeds);
    bool isAccepted(const scenariomatch::PrimitivePlan& plan, double& confidence);
    bool holdsRest(const scenariomatch::PrimitivePlan& plan, double& confidence);
    scenariomatch::RecognisedEntry&
    recordCandidate(const scenariomatch::PrimitivePlan& plan, Outcome& outcome, double confidence);
    void seedParents(scenariomatch::RecognisedEntry& recognised, Outcome& likely, Seeds& seeds);
    const std::shared_ptr<CSAgent>& refreshComponent(
        scenariomatch::RecognisedEntry& recognised, const std::shared_ptr<CSTimeStamp>& end);

    // Composites
    struct Attempt;
    void completeSeeds(scenariomatch::Candidates& candidates, scenariomatch::Candidates& seeded);
    int countRecent(const std::string& modelName) const;
    bool isTooOld(const CSScenarioInstance& recognised) const;
    void completePending(const Instances& pending, Instances& completed);
    void completeRest(std::shared_ptr<CSScenarioInstance> candidate, Instances& completed);
    std::shared_ptr<CSScenarioInstance> tryCompletion(
        const CSScenarioInstance& candidate,
        std::size_t component,
        scenariomatch::RecognisedEntry& entry,
        bool isFirst);
    std::optional<scenariomatch::CompletionRejection> joinParticipants(
        CSScenarioInstance& candidate,
        const CComponent& component,
        const CSScenarioInstance& recognised) const;
    void recogniseComposites(scenariomatch::Candidates& candidates, Seeds& seeds);
    void recogniseComposite(scenariomatch::Candidate& candidate, Seeds& seeds);
    std::size_t verifyComposite(scenariomatch::Candidate& candidate);
    bool isConfident(scenariomatch::Candidate& candidate) const;

    // Recognised instances
    scenariomatch::RecognisedEntry&
    recordComposite(scenariomatch::Candidate& candidate, Outcome& outcome);
    scenariomatch::RecognisedEntry&
    recordInstance(const std::shared_ptr<CSScenarioInstance>& instance, Outcome& outcome);
    void extendRecognised(scenariomatch::RecognisedEntry& entry, double confidence);
    scenariomatch::RecognisedEntry&
    addNew(const std::shared_ptr<CSScenarioInstance>& instance, Outcome& outcome);
    bool isAboveThreshold(const CSScenario& model, double& confidence) const;

    CConstraint::OperatorTable m_operators;
    std::vector<std::shared_ptr<scenariomatch::AgentOperator>> m_agentOperators;
    std::function<void(const std::string&)> m_reportFailure;
    std::set<std::string> m_failedOperators;
    std::uint64_t m_operatorFailures = 0;

    std::map<int, std::shared_ptr<CSAgent>> m_agents;
    std::map<int, int> m_mobileIds;
    std::map<int, int> m_constantIds;
    int m_nextAgentId = 0;
    std::map<int, std::shared_ptr<CSAgent>> m_components;
    std::map<std::string, std::vector<std::string>> m_objectTypes;
    std::shared_ptr<CSTimeStamp> m_currentTime;
    double m_constTimeSearch = CSScenarioInstance::m_const_TimeSearch;

    std::unique_ptr<Recognition> m_recognition;
    std::uint64_t m_candidateLimit = 0;
    std::uint64_t m_candidateCuts = 0;
    std::set<std::string> m_cutModels;
    int m_nextInstanceId = 0;
    Statistics m_statistics;
    scenariomatch::RecognitionObserver* m_observer = nullptr;
};
