#include "plugin/MergeClauses.h"

#include "engine/CSEngine.h"
#include "plugin/BoundAgent.h"
#include "plugin/CurrentInstances.h"
#include "types/NumberText.h"

#include <optional>
#include <string>

namespace scenariomatch
{

namespace
{

// A "MergeStartEnd" clause: the earlier event's model, and the seconds since its end that are
// allowed.
struct MergeClause
{
    std::optional<std::string> start;
    double threshold = 0.0;
};

std::optional<MergeClause> mergeClauseOf(const CSScenario& model)
{
    const auto found = model.m_miscellaneous.find("MergeStartEnd");
    if (found == model.m_miscellaneous.end()) {
        return std::nullopt;
    }
    MergeClause clause;
    const auto start = found->second.find("Start");
    if (start != found->second.end()) {
        clause.start = start->second;
    }
    const auto threshold = found->second.find("Threshold");
    if (threshold != found->second.end()) {
        clause.threshold = stringToInt(threshold->second);
    }
    return clause;
}

void traceTime(StreamText& trace, std::string_view label, const CSTimeStamp& time)
{
    trace << label << time.m_frameID << ' ' << time.m_year << '-' << time.m_month << '-'
          << time.m_day << ' ' << time.m_hour << ':' << time.m_minute << ':' << time.m_second << '.'
          << time.m_millisecond << '\n';
}

void traceInstance(StreamText& trace, std::string_view title, const CSScenarioInstance& instance)
{
    trace << title << "\nID:" << instance.m_id << "\nName:" << instance.m_scenario->m_name << '\n';
    traceTime(trace, "Start:", *instance.m_start);
    traceTime(trace, "End:", *instance.m_end);
    trace << "Confidence:" << instance.m_confidence << '\n';
}

bool haveSamePhysicalObjects(
    const CSScenarioInstance& higher, const CSScenarioInstance& lower, StreamText& trace)
{
    bool isSame = true;
    for (const auto& [name, agent] : higher.m_bindings) {
        if (isSubEvent(agent)) {
            continue;
        }
        const auto other = lower.m_bindings.find(name);
        const bool isBound = other != lower.m_bindings.end();
        const int id = identifierOf(agent);
        const int otherId = isBound ? identifierOf(other->second) : -1;
        trace << "\nID.AgM1:" << name << ',' << id << "\nID.AgM2:" << otherId;
        isSame = isSame && isBound && id == otherId;
    }
    return isSame;
}

// Whether any earlier instance matched.
bool merge(
    const CSEngine& engine,
    CSScenarioInstance& higher,
    const MergeClause& clause,
    StreamText& trace)
{
    const CSTimeStamp& now = *engine.currentTime();
    bool isMerged = false;
    for (const auto& lower : engine.recognisedScenarios()) {
        if (lower->m_end->duration(now) > clause.threshold) {
            break;
        }
        if (lower->m_scenario->m_name != clause.start) {
            continue;
        }
        const bool isSame = haveSamePhysicalObjects(higher, *lower, trace);
        traceInstance(trace, "\nHigher Level Event", higher);
        traceInstance(trace, "\nLower Level Event", *lower);
        trace << "\n Is it the same?" << (isSame ? '1' : '0');
        if (isSame) {
            higher.m_start = lower->m_start;
            traceInstance(trace, "\nHigher Level Event", higher);
            isMerged = true;
        }
    }
    return isMerged;
}

} // namespace

void mergeByClauses(const CSEngine& engine, StreamText& trace)
{
    const auto& now = engine.currentTime();
    for (const auto& higher : engine.recognisedScenarios()) {
        const std::string& name = higher->m_scenario->m_name;
        if (name == "Scenario_01_started" || name == "Scenario_02_started") {
            trace << "\n Event Model check in Misc:" << name << higher->m_end->duration(*now)
                  << '\n';
        }
        if (!endsAt(*higher, *now)) {
            break;
        }
        const auto clause = mergeClauseOf(*higher->m_scenario);
        if (!clause.has_value()) {
            continue;
        }
        trace << "\n Miscellaneous case\n";
        const bool isMerged = merge(engine, *higher, *clause, trace);
        trace << "Merge was:" << (isMerged ? '1' : '0') << ";\n";
    }
}

} // namespace scenariomatch
