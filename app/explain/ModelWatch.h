#pragma once

#include "app/explain/CompositeSearch.h"
#include "app/explain/PrimitiveSearch.h"
#include "app/explain/WhyNot.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace scenariomatch
{

// What is asked of a model's candidates: with which objects, how far recognition looks back, and
// how many are tried in a frame (0 for all).
//
// What it names outlives the watch.
struct WatchTerms
{
    const ObjectFilter& filter;
    const KnownEvents& events;
    double lookBack = 0.0;
    std::uint64_t mostCandidates = 0;
};

// Watches one model: what becomes of its candidates.
//
// Made when the engine has prepared the models.
class ModelWatch
{
public:
    // Of the objects asked for as many as `hidden` may be missing.
    ModelWatch(const CSScenario& model, const WatchTerms& terms, std::size_t hidden = 0);

    const CSScenario& model() const { return m_model; }

    bool isPrimitive() const { return m_primitive != nullptr; }

    // Tries the candidates of a primitive state; nothing for other models.
    void addFrame(FrameView& view, const CSTimeStamp& now);
    // What recognition tells of the model.
    void candidateTested();
    void constraintFalse(
        const CConstraint::Bindings& bindings, std::size_t constraint, const Moment& now);
    void notConfident(const CConstraint::Bindings& bindings, double confidence, const Moment& now);
    void recognised(const CConstraint::Bindings& bindings);

    // When the times of all events are known: judges those between two moments. Once.
    void finish(std::int64_t fromMilliseconds, std::int64_t toMilliseconds);
    // What became of the candidates; the rest of the answer is not its own.
    WhyNot answer() const;

private:
    const CSScenario& m_model;
    // One of them.
    std::unique_ptr<PrimitiveSearch> m_primitive;
    std::unique_ptr<CompositeSearch> m_composite;
    // Constraints that only recognition may ask, of a primitive state.
    std::vector<std::uint64_t> m_untold;
    std::optional<ConfidenceMiss> m_confidence;
};

} // namespace scenariomatch
