#pragma once

#include "engine/OperatorPromises.h"
#include "engine/RecognitionObserver.h"
#include "plugin/RecognitionView.h"
#include "scenario/CSScenario.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch
{

// The numbers on the left of a comparison with a number, over all candidates.
struct SeenRange
{
    double least = 0.0;
    double most = 0.0;
};

// What a sample showed of a constraint.
struct SampledConstraint
{
    std::uint64_t timesTrue = 0;
    std::uint64_t timesFalse = 0;
    // The left side of a comparison with a number, where evaluating it twice does no harm.
    const CConstraint* left = nullptr;
    std::optional<SeenRange> range;

    bool isEvaluated() const { return timesTrue + timesFalse > 0; }
};

struct SampledModel
{
    const CSScenario* model = nullptr;
    std::vector<SampledConstraint> constraints;
    std::uint64_t candidates = 0;
    bool isRecognised = false;
};

// Watches recognition in a sample of tracks and remembers what was there and what became of the
// models' constraints. Nothing else is changed by it but that every candidate is tried in full.
//
// Example:
//     SampleObserver observer(view);
//     view.setObserver(&observer);
//     ... all frames ...
//     observer.models().at("InZone").constraints[0].timesTrue
class SampleObserver : public RecognitionObserver
{
public:
    // Takes down the models. The process whose view is given outlives the observer.
    explicit SampleObserver(const RecognitionView& view);

    void frameStarted(FrameView& view, const CSTimeStamp& now) override;
    void candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings) override;
    void constraintFalse(
        const CSScenario& model,
        const CConstraint::Bindings& bindings,
        std::size_t constraint) override;
    void instanceNew(const CSScenarioInstance& instance) override;

    // By name; the first of a name alone.
    const std::map<std::string, SampledModel>& models() const { return m_models; }

    // Whether an object of the type, or of one that derives from it, was there; asked of the types
    // of the models' objects.
    bool wasSeen(const std::string& type) const { return m_seenTypes.contains(type); }

    // The names of zones, and those that a tracked object was in by its position on the ground or
    // in the picture.
    const std::set<std::string>& zones() const { return m_zones; }

    const std::set<std::string>& enteredZones() const { return m_enteredZones; }

private:
    void addModel(const CSScenario& model);
    void noteTypes(FrameView& view);
    void noteZones(FrameView& view);
    bool isEntered(const std::shared_ptr<CSAgent>& zone, FrameView& view) const;
    SampledModel* sampled(const CSScenario& model);

    OperatorPromises m_promises;
    std::map<std::string, SampledModel> m_models;
    std::set<std::string> m_types;
    std::set<std::string> m_seenTypes;
    std::set<std::string> m_zones;
    std::set<std::string> m_enteredZones;
};

} // namespace scenariomatch
