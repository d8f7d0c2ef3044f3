#include "app/sample/SampleCheck.h"

#include "types/NumberText.h"

#include <algorithm>
#include <fmt/format.h>
#include <string_view>

namespace scenariomatch
{

namespace
{

// Whether some number from least to most passes.
bool canHold(const CConstraint& comparison, const SeenRange& range)
{
    const double limit = comparison.m_children[1]->m_numericValue;
    const std::string& op = comparison.m_operatorName;
    if (op == "<") {
        return range.least < limit;
    }
    if (op == "<=") {
        return range.least <= limit;
    }
    if (op == ">") {
        return range.most > limit;
    }
    if (op == ">=") {
        return range.most >= limit;
    }
    return range.least <= limit && limit <= range.most;
}

std::string_view textOf(const lint::Range& range)
{
    return std::string_view(range.source->text()).substr(range.begin, range.end - range.begin);
}

std::string words(const SeenRange& range)
{
    return range.least == range.most ? fmt::format("always {:.6g}", range.least)
                                     : fmt::format("{:.6g} to {:.6g}", range.least, range.most);
}

class SampleChecks
{
public:
    SampleChecks(const SampleObserver& sample, lint::Diagnostics& out)
        : m_sample(sample)
        , m_out(out)
    {
    }

    void checkZones(const lint::Project& project);
    void checkModel(const lint::Model& model);

private:
    bool checkTypes(const lint::Model& model);
    void checkCandidates(const lint::Model& model, const SampledModel& sampled);
    bool checkConstraint(
        const lint::ModelConstraint& constraint,
        const CConstraint& read,
        const SampledConstraint& sampled);

    const SampleObserver& m_sample;
    lint::Diagnostics& m_out;
};

void SampleChecks::checkZones(const lint::Project& project)
{
    if (!project.scene()) {
        return;
    }
    for (const lint::SceneElement& element : *project.scene()) {
        const bool isEmpty = element.type == "Zone" && m_sample.zones().contains(element.name) &&
                             !m_sample.enteredZones().contains(element.name);
        if (isEmpty) {
            m_out.add(
                "sample-empty-zone",
                element.range,
                fmt::format("nobody in the tracks is ever in '{}'", element.name),
                "are zones and positions in one unit?");
        }
    }
}

// The engine's model and the one that is read here have the same constraints in the same order.
void SampleChecks::checkModel(const lint::Model& model)
{
    const auto found = m_sample.models().find(model.name.text);
    if (found == m_sample.models().end() || !model.isRead || checkTypes(model)) {
        return;
    }
    const SampledModel& sampled = found->second;
    if (sampled.candidates == 0) {
        checkCandidates(model, sampled);
        return;
    }
    std::size_t i = 0;
    for (const lint::ModelConstraint& constraint : model.constraints) {
        if (!constraint.isRead) {
            continue;
        }
        if (i == sampled.constraints.size() ||
            checkConstraint(constraint, *sampled.model->m_constraints[i], sampled.constraints[i])) {
            return;
        }
        ++i;
    }
}

// Whether objects are missing. Of each type once in a model.
bool SampleChecks::checkTypes(const lint::Model& model)
{
    if (model.isComposite()) {
        return false;
    }
    std::set<std::string_view> missing;
    for (const lint::Variable& object : model.objects) {
        if (object.isRead && !m_sample.wasSeen(object.type.text) &&
            missing.insert(object.type.text).second) {
            m_out.add(
                "sample-missing-type",
                object.type.range,
                fmt::format("there is no {} in the tracks and the scene", object.type.text));
        }
    }
    return !missing.empty();
}

void SampleChecks::checkCandidates(const lint::Model& model, const SampledModel& sampled)
{
    const auto& components = sampled.model->m_components;
    const bool isFollowing =
        std::any_of(components.begin(), components.end(), [this](const auto& component) {
            const auto part = m_sample.models().find(component->m_modelName);
            return part == m_sample.models().end() || !part->second.isRecognised;
        });
    if (!isFollowing) {
        m_out.add(
            "sample-never-evaluated",
            model.name.range,
            model.isComposite()
                ? fmt::format(
                      "the components of {} never come together in the tracks", model.name.text)
                : fmt::format(
                      "there are never enough objects for {} at one time", model.name.text));
    }
}

// Whether it was never true, so that those behind it were never reached.
bool SampleChecks::checkConstraint(
    const lint::ModelConstraint& constraint,
    const CConstraint& read,
    const SampledConstraint& sampled)
{
    const std::string_view text = textOf(constraint.range);
    if (sampled.timesTrue > 0) {
        if (sampled.timesFalse == 0) {
            m_out.add(
                "sample-never-false",
                constraint.range,
                fmt::format("never false, in {} trials", sampled.timesTrue));
        }
        return false;
    }
    if (sampled.range && !canHold(read, *sampled.range)) {
        m_out.add(
            "sample-out-of-range",
            constraint.range,
            fmt::format(
                "'{}' cannot hold: the left side is {} in the tracks",
                text,
                words(*sampled.range)));
    } else {
        m_out.add(
            "sample-never-true",
            constraint.range,
            fmt::format("never true, in {} trials", sampled.timesFalse));
    }
    return true;
}

} // namespace

void checkSample(const lint::Project& project, const SampleObserver& sample, lint::Diagnostics& out)
{
    SampleChecks checks(sample, out);
    checks.checkZones(project);
    for (const lint::Model& model : project.models()) {
        checks.checkModel(model);
    }
    out.sort();
}

} // namespace scenariomatch
