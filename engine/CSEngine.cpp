#include "engine/CSEngine.h"

#include "scenario/OperatorCall.h"

std::map<int, std::shared_ptr<CSTimeStamp>> CSEngine::h_currentTime;
std::int32_t CSEngine::m_historySize = 1;

CSEngine::CSEngine()
{
    scenariomatch::setOperatorFailureHandler(
        [this](const CSOperatorInterfaceAbstract& op, const std::string& what) {
            noteOperatorFailure(op, what);
        });
}

CSEngine::~CSEngine()
{
    scenariomatch::setOperatorFailureHandler({});
}
