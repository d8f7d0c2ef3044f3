#pragma once

#include "scenario/CSAllScenarios.h"
#include "tests/reference/RecognitionLog.h"

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

// A recognised or partially recognised occurrence of a model, as the reference matcher keeps it.
struct ReferenceInstance
{
    std::shared_ptr<CSScenario> m_scenario;
    CConstraint::Bindings m_bindings;
    std::shared_ptr<CSTimeStamp> m_start;
    std::shared_ptr<CSTimeStamp> m_end;
    int m_id = 0;
    double m_confidence = 1.0;
};

// The rules of recognition, written down as plainly as they can be: lists are walked, maps are
// copied, every selection of agents is made before the first is tried, nothing is indexed or
// remembered. The engine is measured against it.
//
// Shares values, agents, constraint trees and prepared models with the engine and no code of
// recognition. Owns its agents and instances; the models must outlive it.
//
//     ReferenceMatcher matcher(models);
//     matcher.setCurrentTime(stamp, frame);
//     matcher.m_agents.at(matcher.agent(7, false))->setFrameID(frame);
//     matcher.infer();
class ReferenceMatcher
{
public:
    using InstancePointer = std::shared_ptr<ReferenceInstance>;
    using InstancesByModel = std::map<std::string, std::vector<InstancePointer>>;

    explicit ReferenceMatcher(const CSAllScenarios& models);

    // The matcher's identifier of an object, which is entered when it is new.
    int agent(int hostId, bool constant);
    void setCurrentTime(const std::shared_ptr<CSTimeStamp>& time, int frame);
    void infer();
    void removeConstAgents();

    // Settings.
    double m_constProlongation = 0.0;
    double m_constTimeSearch = 600.0;
    double m_bayesianRatio = 1.0;
    int m_historySize = 1;
    std::map<std::string, std::vector<std::string>> m_objectTypes;
    // infer() throws std::length_error, and the matcher is of no more use, when a frame takes more
    // tests and completions than this: composites of composites may grow without end.
    int m_mostWork = 1000000;
    // Is told what is done; null for none.
    RecognitionLog* m_log = nullptr;

    // State and results.
    std::map<int, std::shared_ptr<CSAgent>> m_agents;
    std::map<int, std::shared_ptr<CSAgent>> m_components;
    std::map<int, std::shared_ptr<CSTimeStamp>> m_timeHistory;
    std::list<InstancePointer> m_recognised;
    InstancesByModel m_firstLevelCandidates;
    int m_tested = 0;
    int m_accepted = 0;
    int m_completions = 0;

private:
    // Agents and time
    std::vector<int> agentsOfType(const std::string& type) const;
    std::shared_ptr<CSAgent> component(int id);
    void cleanHistory();
    void removeAgents();

    void countWork(int& counter) const;

    // Constraints
    static std::shared_ptr<CSBasicType>
    evaluate(const CConstraint& node, CConstraint::Bindings& bindings);
    bool verifyConstraints(ReferenceInstance& instance) const;

    // Primitive states
    void recognisePrimitiveStates(InstancesByModel& newInstances);
    void makeCandidates(const std::shared_ptr<CSScenario>& model, InstancesByModel& candidates);
    void makeCandidate(
        const std::shared_ptr<CSScenario>& model,
        const std::vector<std::vector<std::vector<int>>>& assignments,
        const std::vector<int>& tuple,
        InstancesByModel& candidates);
    void verifyAndSeed(const InstancePointer& instance, InstancesByModel& newInstances);
    void seed(
        const std::shared_ptr<CSScenario>& parent,
        const ReferenceInstance& recognised,
        InstancesByModel& newInstances);

    // Composites
    void createComplexEvents(InstancesByModel& candidates, const InstancesByModel& seeded);
    void recogniseComplexEvents(const InstancesByModel& candidates, InstancesByModel& newInstances);
    InstancePointer complete(
        const ReferenceInstance& pending,
        const ReferenceInstance& recognised,
        std::size_t position);
    void lookUpOthers(const InstancePointer& candidate, InstancesByModel& candidates);
    static bool passUp(ReferenceInstance& to, const ReferenceInstance& from, const CComponent& as);
    void reject(
        const ReferenceInstance& pending,
        std::size_t position,
        int id,
        CompletionRejection reason) const;
    static bool hasObjectTwice(const ReferenceInstance& instance);

    // Recognised instances
    InstancePointer addRecognised(const InstancePointer& instance);
    bool isConfident(ReferenceInstance& instance) const;
    void sortRecognised();
    void cleanRecognised();

    const CSAllScenarios& m_models;
    std::map<int, int> m_mobileIds;
    std::map<int, int> m_constantIds;
    int m_nextAgentId = 0;
    int m_nextInstanceId = 0;
    std::shared_ptr<CSTimeStamp> m_currentTime;
};

// The number of ordered selections of k out of n.
unsigned referencePermutations(int n, int k);
// All ordered selections of k of the values.
std::vector<std::vector<int>> referenceSelections(const std::vector<int>& values, int k);
// All tuples of indexes below the sizes.
std::vector<std::vector<int>> referenceTuples(const std::vector<int>& sizes);

} // namespace scenariomatch
