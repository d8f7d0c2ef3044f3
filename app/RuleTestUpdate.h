#pragma once

#include "app/RuleTest.h"
#include "app/RuleVerdict.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace scenariomatch
{

// The file's text with the events that were found in place of those expected, for the cases by
// their positions; all else stays as it is, comments too, but for those between the old events.
// Nothing where the text is laid out in a way that does not let itself be changed safely.
std::optional<std::string>
updatedRuleTest(const RuleTestFile& file, const std::map<std::size_t, RuleVerdict>& verdicts);

} // namespace scenariomatch
