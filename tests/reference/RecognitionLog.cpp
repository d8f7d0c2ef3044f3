#include "tests/reference/RecognitionLog.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace scenariomatch
{

namespace
{

bool hasUnboundComponent(const CSScenario& model, const CConstraint::Bindings& bindings)
{
    const auto& components = model.m_components;
    return std::any_of(components.begin(), components.end(), [&](const auto& component) {
        const auto bound = bindings.find(component->m_variable);
        return bound == bindings.end() || !bound->second;
    });
}

} // namespace

void RecognitionLog::addStep(
    const char* step, int number, const CSScenario& model, const Bindings& bindings)
{
    m_steps += step;
    m_steps += " " + std::to_string(number) + " " + model.m_name;
    for (const auto& [variable, agent] : bindings) {
        m_steps += " " + variable + "=";
        if (agent) {
            m_steps += agent->m_constant ? "constant " : "";
            m_steps += agent->m_type == "Component" ? "component " : "";
            m_steps += std::to_string(agent->m_ID);
        }
    }
    m_steps += '\n';
}

void RecognitionLog::candidateTested(const CSScenario& model, const Bindings& bindings)
{
    addStep("test", 0, model, bindings);
}

void RecognitionLog::constraintFalse(
    const CSScenario& model, const Bindings& bindings, std::size_t constraint)
{
    addStep("false", static_cast<int>(constraint), model, bindings);
}

void RecognitionLog::notConfident(
    const CSScenario& model, const Bindings& bindings, double confidence)
{
    addStep("not confident", 0, model, bindings);
    if (!hasUnboundComponent(model, bindings)) {
        std::ostringstream number;
        number << std::setprecision(17) << confidence << '\n';
        m_steps += number.str();
    }
}

void RecognitionLog::completionRejected(
    const CSScenario& model, std::size_t component, int recognised, CompletionRejection reason)
{
    std::string& rejections = m_rejections[model.m_name];
    for (const int number : {recognised, static_cast<int>(component), static_cast<int>(reason)}) {
        rejections += std::to_string(number) + ' ';
    }
    rejections += '\n';
}

std::string RecognitionLog::text() const
{
    std::string text = m_steps;
    for (const auto& [model, rejections] : m_rejections) {
        text += model;
        text += '\n' + rejections;
    }
    for (const int id : m_expired) {
        text += "expired " + std::to_string(id) + "\n";
    }
    return text;
}

void RecognitionLog::clear()
{
    m_steps.clear();
    m_rejections.clear();
    m_expired.clear();
}

void LoggingObserver::candidateTested(
    const CSScenario& model, const CConstraint::Bindings& bindings)
{
    m_log.candidateTested(model, bindings);
}

void LoggingObserver::constraintFalse(
    const CSScenario& model, const CConstraint::Bindings& bindings, std::size_t constraint)
{
    m_log.constraintFalse(model, bindings, constraint);
}

void LoggingObserver::notConfident(
    const CSScenario& model, const CConstraint::Bindings& bindings, double confidence)
{
    m_log.notConfident(model, bindings, confidence);
}

void LoggingObserver::instanceNew(const CSScenarioInstance& instance)
{
    m_log.instanceNew(instance);
}

void LoggingObserver::instanceExtended(const CSScenarioInstance& instance)
{
    m_log.instanceExtended(instance);
}

void LoggingObserver::completionRejected(
    const CSScenarioInstance& candidate,
    std::size_t component,
    const CSScenarioInstance& recognised,
    CompletionRejection reason)
{
    m_log.completionRejected(*candidate.m_scenario, component, recognised.m_id, reason);
}

void LoggingObserver::instanceExpired(const CSScenarioInstance& instance)
{
    m_log.instanceExpired(instance.m_id);
}

} // namespace scenariomatch
