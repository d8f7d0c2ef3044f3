// Models that are used, defined, and made of each other.

#include "lint/Checks.h"
#include "lint/NearNames.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch::lint
{

namespace
{

class UseChecker
{
public:
    UseChecker(const Project& project, Diagnostics& out)
        : m_project(project)
        , m_out(out)
    {
        for (const Word& used : project.usedModels()) {
            m_used.insert(used.text);
            ++m_mentions[used.text];
        }
        for (const Model& model : project.models()) {
            // The header of a model without a name is at fault already.
            if (!model.name.text.empty()) {
                m_names.push_back(model.name.text);
            }
            for (const ModelComponent& component : model.components) {
                ++m_mentions[component.model.text];
            }
        }
    }

    void check()
    {
        checkDuplicates();
        findMisspeltModels();
        checkUsedModels();
        for (const Model& model : m_project.models()) {
            checkSubModels(model);
        }
        checkUnused();
        checkCircles();
    }

private:
    void checkDuplicates();
    void findMisspeltModels();
    void checkUsedModels();
    void checkSubModels(const Model& model);
    void checkUnused();
    bool leadsBack(std::vector<const Model*>& reached) const;
    void checkCircles();

    bool isDefined(const std::string& name) const { return m_project.findModel(name) != nullptr; }

    void reportUnknown(const Word& name, const std::string& text);

    const Project& m_project;
    Diagnostics& m_out;
    std::vector<std::string> m_names;
    std::set<std::string> m_used;
    std::map<std::string, int> m_mentions;
    // Names about which all is said.
    std::set<std::string> m_settled;
};

void UseChecker::checkDuplicates()
{
    std::map<std::string, const Model*> first;
    for (const Model& model : m_project.models()) {
        if (model.name.text.empty()) {
            continue;
        }
        const auto [entry, isNew] = first.emplace(model.name.text, &model);
        if (!isNew) {
            const Range& other = entry->second->name.range;
            m_out.add(
                "duplicate-model",
                model.name.range,
                fmt::format("there is another model '{}'", model.name.text),
                fmt::format("it is at {}:{}", other.source->name(), other.place().line));
        }
    }
}

// A model that nothing names, while a name near to its own is named several times and means no
// model: its own name is the one that is misspelt.
void UseChecker::findMisspeltModels()
{
    for (const Model& model : m_project.models()) {
        if (model.name.text.empty() || m_mentions.contains(model.name.text)) {
            continue;
        }
        std::vector<std::string> missing;
        for (const auto& [name, count] : m_mentions) {
            if (count > 1 && !isDefined(name)) {
                missing.push_back(name);
            }
        }
        const std::string near = nearestName(model.name.text, missing);
        if (!near.empty()) {
            m_settled.insert(near);
            m_settled.insert(model.name.text);
            m_out
                .add(
                    "unknown-model",
                    model.name.range,
                    fmt::format("nothing names '{}', and there is no '{}'", model.name.text, near),
                    didYouMean(near))
                .suggestion = near;
        }
    }
}

void UseChecker::reportUnknown(const Word& name, const std::string& text)
{
    std::string near = nearestName(name.text, m_names);
    // A model that nothing else names is meant rather than one that is named already.
    std::vector<std::string> unmentioned;
    std::copy_if(
        m_names.begin(), m_names.end(), std::back_inserter(unmentioned), [&](const auto& known) {
            return !m_mentions.contains(known);
        });
    const std::string lonely = nearestName(name.text, unmentioned);
    near = lonely.empty() ? near : lonely;
    m_settled.insert(near);
    m_out.add("unknown-model", name.range, text, didYouMean(near)).suggestion = near;
}

void UseChecker::checkUsedModels()
{
    for (const Word& used : m_project.usedModels()) {
        if (isDefined(used.text) || m_settled.contains(used.text)) {
            continue;
        }
        if (used.text.find_first_of(" \t") != std::string::npos) {
            m_out.add(
                "unknown-model",
                used.range,
                fmt::format("there is no model '{}': is a comma missing?", used.text));
            m_settled.insert(used.text.substr(0, used.text.find_first_of(" \t")));
            m_settled.insert(used.text.substr(used.text.find_last_of(" \t") + 1));
            continue;
        }
        reportUnknown(used, fmt::format("there is no model '{}'", used.text));
    }
}

void UseChecker::checkSubModels(const Model& model)
{
    for (const ModelComponent& component : model.components) {
        const std::string& name = component.model.text;
        if (m_settled.contains(name)) {
            continue;
        }
        if (!isDefined(name)) {
            reportUnknown(component.model, fmt::format("there is no model '{}'", name));
        } else if (
            m_project.isUseKnown() && m_used.contains(model.name.text) && !m_used.contains(name)) {
            m_settled.insert(name);
            m_out.add(
                "component-not-used",
                component.model.range,
                fmt::format("'{}' is not among the used models, so this one is dropped", name),
                fmt::format("add UsedModels({})", name));
        }
    }
}

void UseChecker::checkUnused()
{
    for (const Model& model : m_project.models()) {
        const std::string& name = model.name.text;
        if (m_project.isUseKnown() && !m_used.contains(name) && !m_settled.contains(name) &&
            !name.empty()) {
            m_out.add(
                "unused-model",
                model.name.range,
                fmt::format("no settings file names '{}': it takes no part", name));
        }
    }
}

// Whether the components of the models reached lead back to the first of them; reaches further
// models.
bool UseChecker::leadsBack(std::vector<const Model*>& reached) const
{
    for (std::size_t i = 0; i < reached.size(); ++i) {
        for (const ModelComponent& component : reached[i]->components) {
            const Model* next = m_project.findModel(component.model.text);
            if (next == reached.front()) {
                return true;
            }
            const bool isNew = std::find(reached.begin(), reached.end(), next) == reached.end();
            if (next != nullptr && isNew) {
                reached.push_back(next);
            }
        }
    }
    return false;
}

// A circle is told of at the first of its models.
void UseChecker::checkCircles()
{
    std::set<const Model*> done;
    for (const Model& start : m_project.models()) {
        std::vector<const Model*> reached = {&start};
        if (!done.contains(&start) && leadsBack(reached)) {
            done.insert(reached.begin(), reached.end());
            m_out.add(
                "model-circle",
                start.name.range,
                fmt::format("'{}' contains itself", start.name.text));
        }
    }
}

} // namespace

void checkUse(const Project& project, Diagnostics& out)
{
    UseChecker(project, out).check();
}

} // namespace scenariomatch::lint
