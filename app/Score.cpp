#include "app/Score.h"

#include "app/Matching.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <utility>

namespace scenariomatch
{

namespace
{

using Records = std::vector<const EventRecord*>;

std::optional<double> ratio(std::size_t part, std::size_t whole)
{
    if (whole == 0) {
        return std::nullopt;
    }
    return static_cast<double>(part) / static_cast<double>(whole);
}

std::int64_t commonLength(const EventRecord& a, const EventRecord& b)
{
    return std::max<std::int64_t>(0, std::min(a.end, b.end) - std::max(a.begin, b.begin) + 1);
}

double overlapOf(const EventRecord& a, const EventRecord& b)
{
    const std::int64_t common = commonLength(a, b);
    return static_cast<double>(common) / static_cast<double>(a.length() + b.length() - common);
}

double delayOf(const EventRecord& label, const EventRecord& event, const ScoreRule& rule)
{
    return static_cast<double>(event.begin - label.begin) / rule.unitsPerSecond;
}

bool fitsInTime(const EventRecord& label, const EventRecord& event, const ScoreRule& rule)
{
    return commonLength(label, event) > 0 &&
           (overlapOf(label, event) >= rule.overlap ||
            std::abs(delayOf(label, event, rule)) <= rule.startWithin);
}

// A label that names nobody is anybody's, one that names no place is of any place.
bool hasParticipants(const EventRecord& label, const EventRecord& event)
{
    const bool isPlaceRight = label.places.empty() || label.places == event.places;
    const bool isNobody = label.ids.empty();
    const bool isPart =
        label.isGroup &&
        std::includes(label.ids.begin(), label.ids.end(), event.ids.begin(), event.ids.end());
    return isPlaceRight && (isNobody || isPart || label.ids == event.ids);
}

// One recording's labels and events of one row.
class RecordingScore
{
public:
    RecordingScore(const ScoreRule& rule, const Records& labels, const Records& events)
        : m_rule(rule)
        , m_labels(labels)
        , m_events(events)
    {
    }

    // False when more than so many fit.
    bool pair(std::size_t most)
    {
        std::vector<Pairing> pairings;
        for (std::size_t i = 0; i < m_labels.size(); ++i) {
            for (std::size_t k = 0; k < m_events.size(); ++k) {
                const EventRecord& label = *m_labels[i];
                const EventRecord& event = *m_events[k];
                if (hasParticipants(label, event) && fitsInTime(label, event, m_rule)) {
                    pairings.push_back({i, k, overlapOf(label, event)});
                }
            }
            if (pairings.size() > most) {
                return false;
            }
        }
        m_partners = largestMatching(pairings, m_labels.size(), m_events.size());
        shareEventsOfGroups(pairings);
        return true;
    }

    void addTo(ScoreRow& row) const
    {
        row.labels += m_labels.size();
        std::vector<bool> isUsed(m_events.size());
        for (std::size_t i = 0; i < m_labels.size(); ++i) {
            if (!m_partners[i]) {
                row.remarks.push_back({ScoreVerdict::Miss, m_labels[i], nullptr});
                continue;
            }
            const EventRecord& event = *m_events[*m_partners[i]];
            isUsed[*m_partners[i]] = true;
            ++row.hits;
            row.delays.push_back(delayOf(*m_labels[i], event, m_rule));
            row.remarks.push_back({ScoreVerdict::Hit, m_labels[i], &event});
        }
        for (std::size_t k = 0; k < m_events.size(); ++k) {
            if (isUsed[k]) {
                continue;
            }
            if (isOfGroup(*m_events[k])) {
                ++row.ofGroup;
            } else {
                ++row.falseAlarms;
                row.remarks.push_back({ScoreVerdict::FalseAlarm, nullptr, m_events[k]});
            }
        }
    }

private:
    // A group may be labelled anew whenever somebody comes or goes, while the event goes on.
    void shareEventsOfGroups(const std::vector<Pairing>& pairings)
    {
        for (const Pairing& pairing : pairings) {
            if (m_labels[pairing.left]->isGroup && !m_partners[pairing.left]) {
                m_partners[pairing.left] = pairing.right;
            }
        }
    }

    bool isOfGroup(const EventRecord& event) const
    {
        return std::any_of(m_labels.begin(), m_labels.end(), [&event](const EventRecord* label) {
            return label->isGroup && hasParticipants(*label, event) &&
                   2 * commonLength(*label, event) >= event.length();
        });
    }

    const ScoreRule& m_rule;
    const Records& m_labels;
    const Records& m_events;
    std::vector<std::optional<std::size_t>> m_partners;
};

// The rows, and which one each model belongs to.
struct RowTable
{
    std::vector<ScoreRow> rows;
    std::map<std::string, std::size_t> rowOfModel;

    // False when one of the models stands in another row.
    bool add(const std::vector<std::string>& models)
    {
        const auto found = rowOfModel.find(models.front());
        if (found != rowOfModel.end()) {
            return rows[found->second].models == models;
        }
        for (const std::string& model : models) {
            if (!rowOfModel.emplace(model, rows.size()).second) {
                return false;
            }
        }
        rows.emplace_back().models = models;
        return true;
    }
};

// Labels and events of one recording.
struct Recording
{
    Records labels;
    Records events;
};

} // namespace

std::optional<double> ScoreRow::precision() const
{
    return ratio(hits, hits + falseAlarms);
}

std::optional<double> ScoreRow::recall() const
{
    return ratio(hits, labels);
}

std::optional<double> ScoreRow::f1() const
{
    return ratio(2 * hits, labels + hits + falseAlarms);
}

std::optional<double> ScoreRow::medianDelay() const
{
    if (delays.empty()) {
        return std::nullopt;
    }
    std::vector<double> sorted = delays;
    std::sort(sorted.begin(), sorted.end());
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

Score score(
    const std::vector<EventRecord>& labels,
    const std::vector<EventRecord>& events,
    const std::vector<std::string>& moreModels,
    const ScoreRule& rule,
    const ScoreLimits& limits)
{
    Score result;
    RowTable table;
    // Row by row, the recordings in the order of their names.
    std::map<std::size_t, std::map<std::string, Recording>> recordings;
    for (const EventRecord& label : labels) {
        if (!table.add(label.models)) {
            result.problem = fmt::format(
                "one of the models {} is named by other labels without the rest of them",
                fmt::join(label.models, "|"));
            return result;
        }
        recordings[table.rowOfModel[label.models.front()]][label.recording].labels.push_back(
            &label);
    }
    for (const std::string& model : moreModels) {
        if (!table.rowOfModel.contains(model)) {
            table.add({model});
        }
    }
    for (const EventRecord& event : events) {
        const auto row = table.rowOfModel.find(event.models.front());
        if (row == table.rowOfModel.end()) {
            ++result.unscored;
            continue;
        }
        recordings[row->second][event.recording].events.push_back(&event);
    }
    for (const auto& [row, byName] : recordings) {
        for (const auto& [name, recording] : byName) {
            RecordingScore scored(rule, recording.labels, recording.events);
            if (!scored.pair(limits.pairings)) {
                result.problem =
                    fmt::format("more than {} labels and events fit each other", limits.pairings);
                return result;
            }
            scored.addTo(table.rows[row]);
        }
    }
    result.rows = std::move(table.rows);
    return result;
}

} // namespace scenariomatch
