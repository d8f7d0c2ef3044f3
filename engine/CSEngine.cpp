#include "engine/CSEngine.h"

#include "engine/Recognition.h"
#include "scenario/AgentOperator.h"
#include "scenario/OperatorCall.h"

#include <algorithm>

std::map<int, std::shared_ptr<CSTimeStamp>> CSEngine::h_currentTime;
std::int32_t CSEngine::m_historySize = 1;

CSEngine::CSEngine()
    : m_recognition(std::make_unique<Recognition>())
{
    installFailureHandler();
}

// Of several engines the one that is at work is told of its operators' failures.
void CSEngine::installFailureHandler()
{
    scenariomatch::setOperatorFailureHandler(
        [this](const CSOperatorInterfaceAbstract& op, const std::string& what) {
            noteOperatorFailure(op, what);
        });
}

CSEngine::~CSEngine()
{
    m_recognition->awake.replace(m_agents);
    scenariomatch::setOperatorFailureHandler({});
    scenariomatch::setOperatorTimes(nullptr);
    std::erase_if(CConstraint::m_allOperators, [this](const auto& entry) {
        return std::any_of(
            m_agentOperators.begin(), m_agentOperators.end(), [&entry](const auto& declared) {
                return declared.get() == entry.second;
            });
    });
}
