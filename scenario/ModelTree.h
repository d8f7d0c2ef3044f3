#pragma once

#include "scenario/AgentOperator.h"
#include "scenario/CSScenario.h"

#include <memory>
#include <vector>

// The steps of CSAllScenarios::createModelTree.
namespace scenariomatch
{

// Reports every model that contains itself through its components on standard error, with the
// circle spelled out, and clears its used flag. Models whose used flag is cleared take no part.
void dropCircles(const std::vector<std::shared_ptr<CSScenario>>& models);

// Sets the model's trigger and skip index. The trigger is the last component, as written, that no
// temporal constraint makes end before another one; the last component when there is none.
void chooseTrigger(CSScenario& model, const AgentOperators& declared);

} // namespace scenariomatch
