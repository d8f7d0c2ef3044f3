#include "app/ConstraintCoverage.h"

#include "engine/Expression.h"
#include "scenario/CSScenario.h"

#include <algorithm>
#include <fmt/format.h>
#include <ostream>

namespace scenariomatch
{

namespace
{

// Empty when it has been seen both ways.
const char* remarkOn(const ConstraintCount& count)
{
    if (count.timesTrue + count.timesFalse == 0) {
        return "  never evaluated";
    }
    if (count.timesTrue == 0) {
        return "  never true";
    }
    return count.timesFalse == 0 ? "  never false" : "";
}

} // namespace

void ConstraintCoverage::begin(const RecognitionView& view)
{
    view.visitModels([this](const CSScenario& model) {
        std::vector<ConstraintCount>& counts = m_counts[model.m_name];
        for (std::size_t i = counts.size(); i < model.m_constraints.size(); ++i) {
            counts.push_back({textOf(*model.m_constraints[i])});
        }
    });
}

// True until a constraint is said to be false.
void ConstraintCoverage::candidateTested(
    const CSScenario& model, const CConstraint::Bindings& /*bindings*/)
{
    for (ConstraintCount& count : m_counts[model.m_name]) {
        ++count.timesTrue;
    }
}

void ConstraintCoverage::constraintFalse(
    const CSScenario& model, const CConstraint::Bindings& /*bindings*/, std::size_t constraint)
{
    std::vector<ConstraintCount>& counts = m_counts[model.m_name];
    for (std::size_t i = constraint; i < counts.size(); ++i) {
        --counts[i].timesTrue;
    }
    if (constraint < counts.size()) {
        ++counts[constraint].timesFalse;
    }
}

void ConstraintCoverage::print(std::ostream& out, const std::string& prefix) const
{
    std::size_t total = 0;
    std::size_t covered = 0;
    for (const auto& [model, counts] : m_counts) {
        if (!counts.empty()) {
            out << prefix << model << '\n';
        }
        for (const ConstraintCount& count : counts) {
            out << fmt::format(
                "{}{:>9} true {:>9} false  {}{}\n",
                prefix,
                count.timesTrue,
                count.timesFalse,
                count.text,
                remarkOn(count));
        }
        total += counts.size();
        covered += static_cast<std::size_t>(
            std::count_if(counts.begin(), counts.end(), [](const ConstraintCount& count) {
                return count.isCovered();
            }));
    }
    out << fmt::format("{}{} of {} constraints were seen true and false\n", prefix, covered, total);
}

bool ConstraintCoverage::isFull() const
{
    return std::all_of(m_counts.begin(), m_counts.end(), [](const auto& entry) {
        return std::all_of(
            entry.second.begin(), entry.second.end(), [](const ConstraintCount& count) {
                return count.isCovered();
            });
    });
}

} // namespace scenariomatch
