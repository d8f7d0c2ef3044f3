#pragma once

#include "app/EventRecord.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// When an event counts as the label's.
struct ScoreRule
{
    // Least intersection over union of the two times.
    double overlap = 0.3;
    // Little overlap will do for those that begin within so many seconds of each other.
    double startWithin = 1.0;
    // Frames or milliseconds in a second.
    double unitsPerSecond = 1000.0;
};

// Sizes beyond which nothing is scored.
struct ScoreLimits
{
    // Labels and events that fit each other.
    std::size_t pairings = 5'000'000;
};

enum class ScoreVerdict : std::uint8_t { Hit, Miss, FalseAlarm };

// What became of a label or, for a false alarm, of an event.
struct ScoreRemark
{
    ScoreVerdict verdict = ScoreVerdict::Hit;
    const EventRecord* label = nullptr;
    const EventRecord* event = nullptr;
};

// The figures of one model, or of several that tell of the same.
struct ScoreRow
{
    std::vector<std::string> models;
    std::size_t labels = 0;
    std::size_t hits = 0;
    std::size_t falseAlarms = 0;
    // Events about others of a group that are neither.
    std::size_t ofGroup = 0;
    // In seconds, for each hit how much later the event begins than the label.
    std::vector<double> delays;
    std::vector<ScoreRemark> remarks;

    std::size_t misses() const { return labels - hits; }

    // Nothing where there is nothing to divide by.
    std::optional<double> precision() const;
    std::optional<double> recall() const;
    std::optional<double> f1() const;
    std::optional<double> medianDelay() const;
};

struct Score
{
    // In the order of the labels.
    std::vector<ScoreRow> rows;
    // Events of models that no label names.
    std::size_t unscored = 0;
    std::optional<std::string> problem;
};

// Holds events against labels, recording by recording. More models can be named, whose events are
// all false alarms. Labels and events must outlive the score, whose remarks point to them.
Score score(
    const std::vector<EventRecord>& labels,
    const std::vector<EventRecord>& events,
    const std::vector<std::string>& moreModels,
    const ScoreRule& rule,
    const ScoreLimits& limits = {});

} // namespace scenariomatch
