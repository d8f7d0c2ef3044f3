// Thresholds, alarm levels, types of objects and clauses of one model.

#include "lint/Checks.h"
#include "lint/NearNames.h"
#include "types/NumberText.h"

#include <fmt/format.h>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch::lint
{

namespace
{

void checkThreshold(const Model& model, Diagnostics& out)
{
    if (!model.threshold) {
        return;
    }
    const std::optional<double> number = wholeNumber(model.threshold->text);
    if (!number || !(*number >= 0.0 && *number <= 1.0)) {
        out.add(
            "threshold-range",
            model.threshold->range,
            number ? fmt::format("the threshold {} is not from 0 to 1", model.threshold->text)
                   : fmt::format("'{}' is no number, and counts as 0", model.threshold->text));
    }
}

void checkTypes(const Project& project, const Model& model, Diagnostics& out)
{
    for (const Variable& object : model.objects) {
        if (!project.types().isRead() || project.types().isDeclared(object.type.text)) {
            continue;
        }
        const std::string near = nearestName(object.type.text, project.types().names());
        out.add(
               "unknown-type",
               object.type.range,
               fmt::format("the type '{}' is not declared: nothing is bound", object.type.text),
               didYouMean(near))
            .suggestion = near;
    }
}

void checkAlarm(const Model& model, Diagnostics& out)
{
    static const std::vector<std::string> kLevels = {
        "NOTURGENT", "URGENT", "VERYURGENT", "SUPERURGENT"};
    if (!model.alarmLevel) {
        return;
    }
    const std::string& level = model.alarmLevel->text;
    for (const std::string& known : kLevels) {
        if (level == known) {
            return;
        }
    }
    const std::string near = nearestName(level, kLevels);
    const bool hasBlank = level.ends_with(' ');
    out.add(
           "unknown-alarm-level",
           model.alarmLevel->range,
           hasBlank ? fmt::format("'{}', with the blank, is no alarm level", level)
                    : fmt::format("'{}' is no alarm level, and counts as NOTURGENT", level),
           hasBlank ? "write no blank before ')'" : didYouMean(near))
        .suggestion = near;
}

void checkShadows(const Model& model, const Word& variable, Diagnostics& out)
{
    if (const Constant* constant = model.findConstant(variable.text)) {
        const Place place = constant->name.range.place();
        out.add(
            "constant-shadows-variable",
            variable.range,
            fmt::format(
                "'{}' is a constant, too: the variable is taken for its number", variable.text),
            fmt::format(
                "the constant is at {}:{}", constant->name.range.source->name(), place.line));
    }
}

void checkPair(
    const Project& project, const std::pair<Word, Word>& pair, bool& hasStart, Diagnostics& out)
{
    static const std::vector<std::string> kKeys = {"Start", "Threshold"};
    const auto& [key, value] = pair;
    hasStart = hasStart || key.text == "Start";
    if (key.text != "Start" && key.text != "Threshold") {
        const std::string near = nearestName(key.text, kKeys);
        hasStart = hasStart || near == "Start";
        out.add(
               "unknown-keyword",
               key.range,
               fmt::format("'{}' is no key of this clause", key.text),
               didYouMean(near))
            .suggestion = near;
    } else if (key.text == "Threshold" && !wholeNumber(value.text)) {
        out.add(
            "constant-value", value.range, fmt::format("'{}' is no number of seconds", value.text));
    } else if (
        key.text == "Start" && project.findModel(value.text) == nullptr && project.hasSettings()) {
        std::vector<std::string> names;
        for (const Model& model : project.models()) {
            names.push_back(model.name.text);
        }
        const std::string near = nearestName(value.text, names);
        out.add(
               "unknown-model",
               value.range,
               fmt::format("there is no model '{}'", value.text),
               didYouMean(near))
            .suggestion = near;
    }
}

void checkClauses(const Project& project, const Model& model, Diagnostics& out)
{
    static const std::vector<std::string> kNames = {"MergeStartEnd"};
    for (const MergeClause& clause : model.clauses) {
        bool hasStart = false;
        if (clause.name.text != "MergeStartEnd") {
            const std::string near = nearestName(clause.name.text, kNames);
            out.add(
                   "unknown-keyword",
                   clause.name.range,
                   fmt::format("the clause '{}' has no effect", clause.name.text),
                   didYouMean(near))
                .suggestion = near;
            continue;
        }
        for (const auto& pair : clause.pairs) {
            checkPair(project, pair, hasStart, out);
        }
        if (!hasStart) {
            out.add(
                "ignored-clause",
                clause.name.range,
                "a clause without Start does nothing",
                "write (Start MODEL)");
        }
    }
}

} // namespace

void checkModel(const Project& project, const Model& model, Diagnostics& out)
{
    checkThreshold(model, out);
    checkTypes(project, model, out);
    checkAlarm(model, out);
    checkClauses(project, model, out);
    for (const Variable& object : model.objects) {
        checkShadows(model, object.name, out);
    }
    for (const ModelComponent& component : model.components) {
        checkShadows(model, component.variable, out);
    }
}

} // namespace scenariomatch::lint
