#pragma once

#include "engine/RecognitionObserver.h"
#include "plugin/RecognitionView.h"

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace scenariomatch
{

// What became of one constraint over all runs. Constraints are tested in their order up to the
// first that is false.
struct ConstraintCount
{
    std::string text;
    std::uint64_t timesTrue = 0;
    std::uint64_t timesFalse = 0;

    bool isCovered() const { return timesTrue > 0 && timesFalse > 0; }
};

// Counts for every constraint of every model how often it was true and false while it observed
// recognition, in any number of runs of the same parameter file.
//
// Example:
//     ConstraintCoverage coverage;
//     coverage.begin(view);
//     view.setObserver(&coverage);
class ConstraintCoverage : public RecognitionObserver
{
public:
    // Takes down the models of a run, so that those that are never tried are known.
    void begin(const RecognitionView& view);

    void candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings) override;
    void constraintFalse(
        const CSScenario& model,
        const CConstraint::Bindings& bindings,
        std::size_t constraint) override;

    // By model.
    const std::map<std::string, std::vector<ConstraintCount>>& counts() const { return m_counts; }

    // A line for each constraint that says what has not been seen of it, and a line with the sum;
    // each after the prefix.
    void print(std::ostream& out, const std::string& prefix) const;

    bool isFull() const;

private:
    std::map<std::string, std::vector<ConstraintCount>> m_counts;
};

} // namespace scenariomatch
