#include "app/RuleVerdict.h"

#include "app/Matching.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <tuple>
#include <utility>

namespace scenariomatch
{

namespace
{

using Expected = std::vector<ExpectedEvent>;

bool hasObject(const FoundEvent& found, const std::string& variable, const std::string& value)
{
    const std::vector<EventObject>& objects = found.report.objects;
    return std::any_of(objects.begin(), objects.end(), [&](const EventObject& object) {
        return object.variable == variable && objectText(object) == value;
    });
}

// Whether all that is said is so, times apart.
bool isSame(const ExpectedEvent& expected, const FoundEvent& found)
{
    return expected.model == found.report.name &&
           (expected.alarm.empty() || expected.alarm == found.report.alarmLevel) &&
           std::all_of(
               expected.objects.begin(), expected.objects.end(), [&found](const auto& object) {
                   return hasObject(found, object.first, object.second);
               });
}

// How far the time is off; nothing is said of one that is not expected.
std::int64_t distance(std::optional<std::int64_t> expected, std::int64_t found)
{
    return std::abs(expected.value_or(found) - found);
}

std::int64_t farthest(const ExpectedEvent& expected, const FoundEvent& found)
{
    return std::max(distance(expected.begin, found.begin), distance(expected.end, found.end));
}

// Whether the event lies at least partly in the time in which there must be none.
bool isForbidden(const ExpectedEvent& absent, const FoundEvent& found)
{
    return isSame(absent, found) && found.end >= absent.begin.value_or(found.end) &&
           found.begin <= absent.end.value_or(found.begin);
}

std::string timesText(std::optional<std::int64_t> begin, std::optional<std::int64_t> end)
{
    const auto text = [](std::optional<std::int64_t> time) {
        return time ? secondsText(*time) : std::string("any");
    };
    return begin || end ? fmt::format("  {} to {} s", text(begin), text(end)) : "";
}

std::string textOf(const ExpectedEvent& event)
{
    std::string text = event.model;
    std::string separator = "  ";
    for (const auto& [variable, value] : event.objects) {
        text += fmt::format("{}{}={}", std::exchange(separator, " "), variable, value);
    }
    text += timesText(event.begin, event.end);
    return event.alarm.empty() ? text : text + "  " + event.alarm;
}

std::string textOf(const FoundEvent& event)
{
    std::string text = event.report.name;
    std::string separator = "  ";
    for (const EventObject& object : event.report.objects) {
        text += fmt::format(
            "{}{}={}", std::exchange(separator, " "), object.variable, objectText(object));
    }
    text += timesText(event.begin, event.end);
    return event.report.alarmLevel.empty() ? text : text + "  " + event.report.alarmLevel;
}

// A line of the difference and when it is about.
struct DifferenceLine
{
    std::int64_t time = 0;
    std::string text;
    // The expected event that is missing.
    std::optional<std::size_t> missing = std::nullopt;
};

// The lines of events that are expected and were not found, and the other way round.
void compareEvents(
    const RuleCase& ruleCase, RuleVerdict& verdict, std::vector<DifferenceLine>& lines)
{
    const Expected& expected = *ruleCase.events;
    std::vector<Pairing> pairings;
    for (std::size_t i = 0; i < verdict.found.size(); ++i) {
        for (std::size_t k = 0; k < expected.size(); ++k) {
            const std::int64_t off = farthest(expected[k], verdict.found[i]);
            if (isSame(expected[k], verdict.found[i]) &&
                off <= expected[k].tolerance.value_or(ruleCase.tolerance)) {
                pairings.push_back({i, k, -static_cast<double>(off)});
            }
        }
    }
    verdict.expectedOf = largestMatching(pairings, verdict.found.size(), expected.size());
    std::vector<bool> isFound(expected.size());
    for (const std::optional<std::size_t>& match : verdict.expectedOf) {
        if (match) {
            isFound[*match] = true;
        }
    }
    for (std::size_t k = 0; k < expected.size(); ++k) {
        if (!isFound[k]) {
            lines.push_back(
                {expected[k].begin.value_or(expected[k].end.value_or(0)),
                 fmt::format("- {}  (line {})", textOf(expected[k]), expected[k].line),
                 k});
        }
    }
    for (std::size_t i = 0; i < verdict.found.size(); ++i) {
        if (!verdict.expectedOf[i]) {
            lines.push_back({verdict.found[i].begin, "+ " + textOf(verdict.found[i])});
        }
    }
}

// The model that does not take part, or nothing.
std::optional<std::string> unknownModel(const RuleCase& ruleCase, const RuleRun& run)
{
    const auto judgeName = [&run](const std::string& name, int line) {
        return run.models && !run.models->contains(name)
                   ? std::optional(
                         fmt::format("line {}: there is no model '{}' in use", line, name))
                   : std::nullopt;
    };
    std::optional<std::string> unknown;
    for (const std::string& model : ruleCase.models) {
        unknown = unknown ? unknown : judgeName(model, ruleCase.line());
    }
    for (const ExpectedEvent& event : ruleCase.events.value_or(Expected())) {
        unknown = unknown ? unknown : judgeName(event.model, event.line);
    }
    for (const ExpectedEvent& event : ruleCase.absent) {
        unknown = unknown ? unknown : judgeName(event.model, event.line);
    }
    return unknown;
}

void sortByTime(std::vector<FoundEvent>& events)
{
    std::stable_sort(events.begin(), events.end(), [](const FoundEvent& a, const FoundEvent& b) {
        return std::tie(a.begin, a.end, a.report.name) < std::tie(b.begin, b.end, b.report.name);
    });
}

} // namespace

RuleVerdict judge(const RuleCase& ruleCase, RuleRun run)
{
    RuleVerdict verdict;
    verdict.fault = run.fault ? std::move(run.fault) : unknownModel(ruleCase, run);
    if (verdict.fault) {
        return verdict;
    }
    sortByTime(run.events);
    std::vector<DifferenceLine> lines;
    for (const ExpectedEvent& absent : ruleCase.absent) {
        for (const FoundEvent& found : run.events) {
            if (isForbidden(absent, found)) {
                verdict.forbidden.push_back(
                    fmt::format("+ {}  (must be absent, line {})", textOf(found), absent.line));
                lines.push_back({found.begin, verdict.forbidden.back()});
            }
        }
    }
    if (ruleCase.events) {
        const std::vector<std::string>& models = ruleCase.models;
        std::copy_if(
            std::make_move_iterator(run.events.begin()),
            std::make_move_iterator(run.events.end()),
            std::back_inserter(verdict.found),
            [&models](const FoundEvent& event) {
                return models.empty() ||
                       std::find(models.begin(), models.end(), event.report.name) != models.end();
            });
        compareEvents(ruleCase, verdict, lines);
    }
    std::stable_sort(
        lines.begin(), lines.end(), [](const auto& a, const auto& b) { return a.time < b.time; });
    for (DifferenceLine& line : lines) {
        if (line.missing) {
            verdict.missing.push_back({verdict.differences.size(), *line.missing});
        }
        verdict.differences.push_back(std::move(line.text));
    }
    return verdict;
}

std::string secondsText(std::int64_t milliseconds)
{
    return fmt::format("{}", static_cast<double>(milliseconds) / 1000);
}

std::string objectText(const EventObject& object)
{
    return object.name.empty() ? fmt::format("{}", object.id) : object.name;
}

} // namespace scenariomatch
