#pragma once

#include "app/explain/Gauge.h"
#include "app/explain/KnownEvents.h"
#include "app/explain/NearMiss.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// Keeps what became of the candidates of a composite model: how often each constraint was the first
// to fail, and which sub-events came nearest.
//
// Where all constraints speak of the sub-events' times, candidates are judged when those are over,
// with the times that they had in the end: the one that completes the model frame by frame as it
// went on, the others whole. Else each candidate is judged as it was tested. Model and events
// outlive the search.
class CompositeSearch
{
public:
    // Sub-events are looked back at for so many seconds.
    CompositeSearch(const CSScenario& model, const KnownEvents& events, double lookBack);
    CompositeSearch(const CompositeSearch&) = delete;
    CompositeSearch(CompositeSearch&&) = delete;
    CompositeSearch& operator=(const CompositeSearch&) = delete;
    CompositeSearch& operator=(CompositeSearch&&) = delete;
    ~CompositeSearch();

    void candidateTested() { ++m_candidates; }

    void constraintFalse(
        const CConstraint::Bindings& bindings, std::size_t constraint, const Moment& now);
    // These sub-events were recognised together; they have not missed anything.
    void recognised(const CConstraint::Bindings& bindings);

    // Judges the sub-events that are kept, between two moments. Once, in the end.
    void finish(std::int64_t fromMilliseconds, std::int64_t toMilliseconds);

    std::uint64_t candidates() const { return m_candidates; }

    const std::vector<ConstraintOutcome>& outcomes() const { return m_outcomes; }

    const std::optional<NearMiss>& nearest() const { return m_nearest; }

    // How near the nearest of all came.
    const std::optional<MissRank>& nearestRank() const { return m_nearestRank; }

private:
    // The sub-events of a candidate, by component.
    struct Together
    {
        std::vector<EventObject> objects;
        std::vector<std::shared_ptr<const KnownEvent>> events;
        bool isRecognised = false;
    };

    class TimesReader;

    bool isTestedAt(const Together& together, const CSTimeStamp& time) const;
    bool readsTimesOnly(const CConstraint& constraint);
    std::vector<int> idsOf(const CConstraint::Bindings& bindings) const;
    void judgeNow(const CConstraint::Bindings& bindings, std::size_t constraint, const Moment& now);
    void judge(const Together& together, std::int64_t from, std::int64_t to);
    bool
    judgeAt(const Together& together, const std::shared_ptr<const CSTimeStamp>& time, bool isWhole);
    // Whether any constraint is false; notes how near it came.
    bool weigh(ValueReader& reader, const NearMiss& candidate);
    void noteFirst(Gauge& gauge, std::size_t constraint, const NearMiss& candidate);

    const CSScenario& m_model;
    const KnownEvents& m_events;
    double m_lookBack;
    std::size_t m_trigger = 0;
    OperatorPromises m_promises;
    std::vector<std::optional<Gauge>> m_gauges;
    bool m_isPure = true;
    bool m_isTimed = true;
    std::uint64_t m_candidates = 0;
    std::vector<ConstraintOutcome> m_outcomes;
    std::vector<double> m_nearestMargins;
    std::optional<NearMiss> m_nearest;
    std::optional<MissRank> m_nearestRank;
    // By the ids of the sub-events.
    std::map<std::vector<int>, Together> m_together;
};

} // namespace scenariomatch
