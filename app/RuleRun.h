#pragma once

#include "app/ConstraintCoverage.h"
#include "app/EventWriter.h"
#include "app/RuleTest.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace scenariomatch
{

// An event that was recognised; times are milliseconds from the first frame.
struct FoundEvent
{
    ReportedEvent report;
    std::int64_t begin = 0;
    std::int64_t end = 0;
};

// What came out of a case's run, or why there was none.
struct RuleRun
{
    std::vector<FoundEvent> events;
    // Those that take part; nothing where the process does not tell.
    std::optional<std::set<std::string>> models;
    std::optional<std::string> fault;
};

// What runs say in passing: what is wrong with the files of a case, as the command run says it, and
// with its tracks. Cases of the same files have the same faults, which are told once.
class RuleTalk
{
public:
    explicit RuleTalk(std::ostream& out);

    std::ostream& out() { return m_out; }

    // Tells the text, and empties it.
    void tellOnce(std::ostringstream& text);

private:
    std::ostream& m_out;
    std::set<std::string> m_told;
};

// Why the event was not found, in one sentence; nothing where that cannot be told, or an event of
// the model and its objects was found at that time. Runs the case once more.
std::optional<std::string> whyMissing(const RuleCase& ruleCase, const ExpectedEvent& missing);

// Recognises events in the tracks of a case, as the command run does. Counts for the coverage where
// one is given.
RuleRun runRuleCase(const RuleCase& ruleCase, ConstraintCoverage* coverage, RuleTalk& talk);

} // namespace scenariomatch
