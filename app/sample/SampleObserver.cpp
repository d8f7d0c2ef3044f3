#include "app/sample/SampleObserver.h"

#include "engine/FrameView.h"
#include "scenario/ConstraintEvaluation.h"
#include "types/CSPlainValue.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace scenariomatch
{

namespace
{

constexpr std::array<std::string_view, 5> kComparisons = {"<", "<=", "=", ">", ">="};

// The left side of a comparison with a number; null for another constraint.
const CConstraint* comparedSide(const CConstraint& constraint)
{
    const auto& sides = constraint.m_children;
    const bool isComparison =
        sides.size() == 2 &&
        std::find(kComparisons.begin(), kComparisons.end(), constraint.m_operatorName) !=
            kComparisons.end();
    return isComparison && sides[1]->m_isNumeric && !sides[0]->m_isNumeric ? sides[0].get()
                                                                           : nullptr;
}

void note(std::optional<SeenRange>& range, double number)
{
    if (!range) {
        range = SeenRange{number, number};
    }
    range->least = std::min(range->least, number);
    range->most = std::max(range->most, number);
}

// Null where the agent has none.
std::shared_ptr<CSBasicType> valueOf(const CSAgent& agent, const std::string& attribute)
{
    const auto found = agent.m_attributes.find(attribute);
    return found == agent.m_attributes.end() ? nullptr : found->second;
}

bool isIn(
    CSOperatorInterfaceAbstract& op,
    const std::shared_ptr<CSBasicType>& place,
    const std::shared_ptr<CSBasicType>& zone)
{
    if (!place || !zone) {
        return false;
    }
    const auto answer = callOperator(op, {place, zone});
    const CSPlainValue value(answer.get());
    return value.isBool() && value.m_truth;
}

} // namespace

SampleObserver::SampleObserver(const RecognitionView& view)
{
    view.visitModels([this](const CSScenario& model) { addModel(model); });
}

void SampleObserver::addModel(const CSScenario& model)
{
    for (const auto& [type, variables] : model.m_variablesByType) {
        m_types.insert(type);
    }
    const auto [entry, isNew] = m_models.try_emplace(model.m_name);
    if (!isNew) {
        return;
    }
    entry->second.model = &model;
    for (const auto& constraint : model.m_constraints) {
        SampledConstraint& sampled = entry->second.constraints.emplace_back();
        const CConstraint* const left = comparedSide(*constraint);
        if (left != nullptr && m_promises.isPure(*left)) {
            sampled.left = left;
        }
    }
}

void SampleObserver::frameStarted(FrameView& view, const CSTimeStamp& /*now*/)
{
    noteTypes(view);
    noteZones(view);
}

void SampleObserver::noteTypes(FrameView& view)
{
    for (const std::string& type : m_types) {
        if (!wasSeen(type) && !view.ofType(view.typeNumber(type)).empty()) {
            m_seenTypes.insert(type);
        }
    }
}

void SampleObserver::noteZones(FrameView& view)
{
    for (const FrameView::AgentIndex index : view.ofType(view.typeNumber("Zone"))) {
        const std::shared_ptr<CSAgent>& zone = view.agent(index);
        const std::string name = toString(valueOf(*zone, "Name").get());
        m_zones.insert(name);
        if (!m_enteredZones.contains(name) && isEntered(zone, view)) {
            m_enteredZones.insert(name);
        }
    }
}

// As the operator that models ask says it.
bool SampleObserver::isEntered(const std::shared_ptr<CSAgent>& zone, FrameView& view) const
{
    const auto op = CConstraint::m_allOperators.find("in");
    if (op == CConstraint::m_allOperators.end() || op->second == nullptr) {
        return true;
    }
    const auto border = valueOf(*zone, "Vertices");
    for (std::size_t i = 0; i < view.size(); ++i) {
        const auto index = static_cast<FrameView::AgentIndex>(i);
        const CSAgent& agent = *view.agent(index);
        const bool isMobile = view.constantNumber(index) < 0;
        if (isMobile && (isIn(*op->second, valueOf(agent, "Position"), border) ||
                         isIn(*op->second, valueOf(agent, "Position2D"), border))) {
            return true;
        }
    }
    return false;
}

// Null for the second model of a name.
SampledModel* SampleObserver::sampled(const CSScenario& model)
{
    const auto found = m_models.find(model.m_name);
    return found != m_models.end() && found->second.model == &model ? &found->second : nullptr;
}

// True until a constraint is said to be false.
void SampleObserver::candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings)
{
    SampledModel* const sample = sampled(model);
    if (sample == nullptr) {
        return;
    }
    ++sample->candidates;
    const auto agentOf = [&bindings](const CConstraint& leaf) -> const std::shared_ptr<CSAgent>& {
        static const std::shared_ptr<CSAgent> none;
        const auto bound = bindings.find(leaf.m_value);
        return bound == bindings.end() ? none : bound->second;
    };
    for (SampledConstraint& constraint : sample->constraints) {
        ++constraint.timesTrue;
        if (constraint.left != nullptr) {
            const auto value = evaluateConstraint(*constraint.left, agentOf);
            const CSPlainValue plain(value.get());
            if (plain.isNumber()) {
                note(constraint.range, plain.m_number);
            }
        }
    }
}

void SampleObserver::constraintFalse(
    const CSScenario& model, const CConstraint::Bindings& /*bindings*/, std::size_t constraint)
{
    SampledModel* const sample = sampled(model);
    if (sample == nullptr || constraint >= sample->constraints.size()) {
        return;
    }
    for (std::size_t i = constraint; i < sample->constraints.size(); ++i) {
        --sample->constraints[i].timesTrue;
    }
    ++sample->constraints[constraint].timesFalse;
}

void SampleObserver::instanceNew(const CSScenarioInstance& instance)
{
    SampledModel* const sample = sampled(*instance.m_scenario);
    if (sample != nullptr) {
        sample->isRecognised = true;
    }
}

} // namespace scenariomatch
