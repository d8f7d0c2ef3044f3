#pragma once

#include "app/explain/KnownEvents.h"
#include "app/explain/ModelWatch.h"
#include "app/explain/ObjectFilter.h"
#include "engine/RecognitionObserver.h"
#include "plugin/RecognitionView.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace scenariomatch
{

// Watches recognition and says afterwards, for every model and every piece of time, what became of
// the model's candidates.
//
// Time is cut from the first frame on into bins of one width; the last one takes what is left. The
// process whose view is given outlives the observer.
//
// Example:
//     WhyNotBins bins(view, {.width = 60'000});
//     view.setObserver(&bins);
//     ... all frames ...
//     const auto answers = bins.answers();
class WhyNotBins : public RecognitionObserver
{
public:
    struct Terms
    {
        // Milliseconds; greater than 0.
        std::int64_t width = 0;
        std::size_t mostBins = 120;
        // For how many seconds recognition looks back at events.
        double lookBack = 0.0;
        // How many candidates of a model are tried in a frame; 0 for all.
        std::uint64_t mostCandidates = 0;
    };

    WhyNotBins(const RecognitionView& view, const Terms& terms);

    bool needsAllCandidates() const override { return false; }

    void frameStarted(FrameView& view, const CSTimeStamp& now) override;
    void candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings) override;
    void constraintFalse(
        const CSScenario& model,
        const CConstraint::Bindings& bindings,
        std::size_t constraint) override;
    void notConfident(
        const CSScenario& model, const CConstraint::Bindings& bindings, double confidence) override;
    void instanceNew(const CSScenarioInstance& instance) override;
    void instanceExtended(const CSScenarioInstance& instance) override;

    // Candidates, constraints and near misses of one model in one bin; nothing where the bin has no
    // frame.
    using Bins = std::vector<std::optional<WhyNot>>;

    // After the last frame, once: of each model of the view, in its order.
    std::vector<Bins> answers();

private:
    // A model in the bin at hand and in those before.
    struct Watched
    {
        const CSScenario* model = nullptr;
        Bins answers;
        // Composite models wait for the times of their sub-events.
        std::vector<std::optional<ModelWatch>> watches;
    };

    void startBin(std::size_t bin);
    void endBin();
    ModelWatch* watch(const CSScenario& model);

    Terms m_terms;
    ObjectFilter m_anybody;
    KnownEvents m_events;
    std::vector<Watched> m_watched;
    std::unordered_map<const CSScenario*, std::size_t> m_byModel;
    // Frames by bin.
    std::vector<std::uint64_t> m_frames;
    std::optional<Moment> m_start;
    Moment m_now;
};

} // namespace scenariomatch
