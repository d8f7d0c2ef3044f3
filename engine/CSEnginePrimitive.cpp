#include "engine/Agents.h"
#include "engine/Recognition.h"
#include "engine/RecognitionObserver.h"
#include "engine/Truth.h"

#include <algorithm>
#include <limits>
#include <utility>

using scenariomatch::agentIdentifier;
using scenariomatch::PrimitivePlan;
using scenariomatch::RecognisedEntry;

namespace
{

CConstraint::Bindings bindingsOf(const PrimitivePlan& plan)
{
    CConstraint::Bindings bindings;
    for (std::size_t slot = 0; slot < plan.variables().size(); ++slot) {
        bindings.emplace_hint(bindings.end(), plan.variables()[slot], plan.agent(slot));
    }
    return bindings;
}

// Whether the instance binds these variables, which are sorted, and no others.
bool bindsAll(const CSScenarioInstance& instance, const std::vector<std::string>& variables)
{
    return std::equal(
        instance.m_bindings.begin(),
        instance.m_bindings.end(),
        variables.begin(),
        variables.end(),
        [](const auto& binding, const std::string& variable) { return binding.first == variable; });
}

// A count that does not go beyond what an int can hold.
int added(int count, std::uint64_t more)
{
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<int>::max());
    return static_cast<int>(
        std::min(static_cast<std::uint64_t>(count) + std::min(more, kMost), kMost));
}

} // namespace

void CSEngine::recognisePrimitiveState(InstancesByModel& newInstances)
{
    scenariomatch::Candidates seeded;
    Seeds seeds{seeded};
    recognisePrimitives(seeds);
    seeded.moveTo(newInstances, m_currentTime);
}

void CSEngine::recognisePrimitives(Seeds& seeds)
{
    m_statistics = {};
    Recognition& recognition = preparedRecognition();
    if (!m_currentTime) {
        return;
    }
    recognition.awake.startFrame(m_currentTime->m_frameID, m_agents);
    recognition.context->view.begin(recognition.awake.table(), *m_currentTime, m_objectTypes);
    recognition.context->shared.beginFrame();
    recognition.startCandidates(m_candidateLimit);
    if (m_observer != nullptr) {
        m_observer->frameStarted(recognition.context->view, *m_currentTime);
    }
    for (auto& [name, primitives] : recognition.primitives) {
        for (auto& [plan, outcome] : primitives) {
            const std::uint64_t candidates = plan.enumerate([&, &plan = plan, &outcome = *outcome] {
                recogniseCandidate(plan, outcome, seeds);
            });
            m_statistics.tested = added(m_statistics.tested, candidates);
            if (plan.isCut()) {
                noteCut(name, candidates);
            }
        }
    }
}

void CSEngine::recogniseCandidate(const PrimitivePlan& plan, Outcome& outcome, Seeds& seeds)
{
    double confidence = 1.0;
    if (isAccepted(plan, confidence)) {
        ++m_statistics.accepted;
        seedParents(recordCandidate(plan, outcome, confidence), outcome, seeds);
    }
}

bool CSEngine::isAccepted(const PrimitivePlan& plan, double& confidence)
{
    const CSScenario& model = *plan.model();
    if (m_observer != nullptr) {
        m_observer->candidateTested(model, bindingsOf(plan));
    }
    for (std::size_t constraint = 0; constraint < plan.tested(); ++constraint) {
        confidence *= plan.confidence(constraint);
    }
    const bool isAllTested = plan.tested() == model.m_constraints.size();
    if (!isAllTested && !holdsRest(plan, confidence)) {
        return false;
    }
    // A component of a primitive state is never bound, and a candidate with an unbound one is not
    // confident.
    const bool isConfident = isAboveThreshold(model, confidence) && model.m_components.empty();
    if (!isConfident && m_observer != nullptr) {
        m_observer->notConfident(model, bindingsOf(plan), confidence);
    }
    return isConfident;
}

// The constraints that the plan has not tested, in order up to the first that is false.
bool CSEngine::holdsRest(const PrimitivePlan& plan, double& confidence)
{
    const CSScenario& model = *plan.model();
    const auto agentOf = [&plan](const CConstraint& leaf) -> const std::shared_ptr<CSAgent>& {
        static const std::shared_ptr<CSAgent> none;
        return leaf.m_slot < 0 ? none : plan.agent(static_cast<std::size_t>(leaf.m_slot));
    };
    for (std::size_t i = plan.tested(); i < model.m_constraints.size(); ++i) {
        const auto value = scenariomatch::evaluateConstraint(*model.m_constraints[i], agentOf);
        const scenariomatch::Truth truth(value.get());
        if (!truth.holds) {
            if (m_observer != nullptr) {
                m_observer->constraintFalse(model, bindingsOf(plan), i);
            }
            return false;
        }
        confidence *= truth.confidence;
    }
    return true;
}

RecognisedEntry&
CSEngine::recordCandidate(const PrimitivePlan& plan, Outcome& outcome, double confidence)
{
    std::vector<int>& participants = m_recognition->participants;
    participants.clear();
    for (std::size_t slot = 0; slot < plan.variables().size(); ++slot) {
        participants.push_back(agentIdentifier(plan.agent(slot)));
    }
    auto* earlier = m_recognition->recognised.findExtensible(
        *outcome.index,
        *plan.model(),
        plan.variables(),
        participants,
        {*m_currentTime, m_constProlongation});
    if (earlier != nullptr) {
        extendRecognised(*earlier, confidence);
        return *earlier;
    }
    auto instance =
        std::make_shared<CSScenarioInstance>(plan.model(), m_currentTime, m_currentTime);
    instance->m_bindings = bindingsOf(plan);
    instance->m_confidence = confidence;
    return addNew(instance, outcome);
}

// Where models share a name the extended instance may be another one's.
void CSEngine::seedParents(RecognisedEntry& recognised, Outcome& likely, Seeds& seeds)
{
    const CSScenario& model = *recognised.instance->m_scenario;
    Outcome& outcome =
        likely.model == &model ? likely : m_recognition->outcomeOf(model, *m_allScenarios);
    if (outcome.seedings.empty()) {
        return;
    }
    if (!recognised.isWhole) {
        recognised.isWhole = bindsAll(*recognised.instance, outcome.variables);
    }
    for (const scenariomatch::Seeding& seeding : outcome.seedings) {
        for (int i = 0; i < seeding.filled(); ++i) {
            refreshComponent(recognised, m_currentTime);
        }
        scenariomatch::Candidate seed(recognised.shared_from_this(), seeding);
        if (!*recognised.isWhole) {
            seed.made(m_currentTime);
        }
        seeds.add(std::move(seed));
    }
}

// The pseudo-agent of a recognised instance, as it is known in this frame.
const std::shared_ptr<CSAgent>&
CSEngine::refreshComponent(RecognisedEntry& recognised, const std::shared_ptr<CSTimeStamp>& end)
{
    const CSScenarioInstance& instance = *recognised.instance;
    if (!recognised.component) {
        recognised.component = m_components[getComponent(instance.m_id)];
        auto attributes =
            std::make_unique<scenariomatch::ComponentAttributes>(instance.m_scenario->m_name);
        recognised.attributes = attributes.get();
        recognised.component->m_late.hold(std::move(attributes));
    }
    CSAgent& component = *recognised.component;
    component.m_confidence = instance.m_confidence;
    component.m_frameID = m_currentTime->m_frameID;
    recognised.attributes->renew(component, instance.m_start, end, m_currentTime->m_frameID);
    return recognised.component;
}
