// What a model is made of: its components, the objects passed to them, and their order.

#include "lint/Checks.h"
#include "lint/NearNames.h"

#include <algorithm>
#include <fmt/format.h>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch::lint
{

namespace
{

class ComponentChecker
{
public:
    ComponentChecker(const Project& project, const Model& model, Diagnostics& out)
        : m_project(project)
        , m_model(model)
        , m_out(out)
    {
    }

    void check()
    {
        if (!checkPresence()) {
            return;
        }
        for (const ModelComponent& component : m_model.components) {
            checkKind(component);
            checkArguments(component);
            checkBounds(component);
        }
        checkUnbound();
        checkOrder();
    }

private:
    bool checkPresence();
    void checkKind(const ModelComponent& component);
    void checkArguments(const ModelComponent& component);
    void checkArgumentTypes(const ModelComponent& component, const Model& sub);
    void checkBounds(const ModelComponent& component);
    void checkUnbound();
    void checkOrder();
    std::vector<std::string> objectNames() const;

    const Project& m_project;
    const Model& m_model;
    Diagnostics& m_out;
    // Whether something was wrong with the arguments.
    bool m_isReported = false;
};

bool ComponentChecker::checkPresence()
{
    const bool isPrimitive = m_model.kind.text == "PrimitiveState";
    if (isPrimitive && !m_model.components.empty()) {
        m_out.add(
            "state-with-components",
            m_model.components.front().variable.range,
            "a PrimitiveState with components is never recognised",
            "make it a CompositeState");
        return false;
    }
    if (!isPrimitive && m_model.components.empty() && isModelKind(m_model.kind.text)) {
        m_out.add(
            "missing-components",
            m_model.name.range,
            fmt::format("a {} without components is never recognised", m_model.kind.text),
            "make it a PrimitiveState, or give it Components");
        return false;
    }
    return true;
}

void ComponentChecker::checkKind(const ModelComponent& component)
{
    const Model* sub = m_project.findModel(component.model.text);
    if (sub == nullptr || sub->kind.text == component.kind.text || !isModelKind(sub->kind.text)) {
        return;
    }
    auto& found = m_out.add(
        "component-kind",
        component.kind.range,
        fmt::format("{} is a {}", component.model.text, sub->kind.text),
        fmt::format("write {}", sub->kind.text));
    found.suggestion = sub->kind.text;
}

std::vector<std::string> ComponentChecker::objectNames() const
{
    std::vector<std::string> names;
    for (const Variable& object : m_model.objects) {
        names.push_back(object.name.text);
    }
    return names;
}

void ComponentChecker::checkArguments(const ModelComponent& component)
{
    if (m_model.objects.empty()) {
        return;
    }
    for (const Word& argument : component.arguments) {
        if (m_model.findObject(argument.text) != nullptr) {
            continue;
        }
        m_isReported = true;
        const std::string near = nearestName(argument.text, objectNames());
        m_out
            .add(
                "unknown-variable",
                argument.range,
                fmt::format("'{}' is no physical object of this model", argument.text),
                didYouMean(near))
            .suggestion = near;
        return;
    }
    const Model* sub = m_project.findModel(component.model.text);
    if (sub == nullptr || sub->isBroken || sub->objects.empty()) {
        m_isReported = m_isReported || sub == nullptr;
        return;
    }
    if (component.arguments.size() != sub->objects.size()) {
        m_isReported = true;
        m_out.add(
            "component-arguments",
            component.model.range,
            fmt::format(
                "{} has {} physical objects, and {} are passed",
                component.model.text,
                sub->objects.size(),
                component.arguments.size()));
        return;
    }
    checkArgumentTypes(component, *sub);
}

void ComponentChecker::checkArgumentTypes(const ModelComponent& component, const Model& sub)
{
    const ObjectTypes& types = m_project.types();
    for (std::size_t i = 0; i < component.arguments.size(); ++i) {
        const std::string& own = m_model.findObject(component.arguments[i].text)->type.text;
        const std::string& other = sub.objects[i].type.text;
        const bool isKnown = types.isDeclared(own) && types.isDeclared(other);
        if (isKnown && !types.derives(own, other) && !types.derives(other, own)) {
            m_out.add(
                "component-argument-type",
                component.arguments[i].range,
                fmt::format(
                    "'{}' is a {}, and {} takes a {} here",
                    component.arguments[i].text,
                    own,
                    component.model.text,
                    other));
            m_isReported = true;
            return;
        }
    }
}

void ComponentChecker::checkBounds(const ModelComponent& component)
{
    if (!component.bounds) {
        return;
    }
    const std::string inside = component.bounds->text.substr(1, component.bounds->text.size() - 2);
    const std::string least = inside.substr(0, inside.find(','));
    m_out.add(
        "bounds-ignored",
        component.bounds->range,
        "bounds in brackets mean nothing for recognition",
        fmt::format(
            "write a constraint: (duration({}->Interval) >= {})", component.variable.text, least));
}

void ComponentChecker::checkUnbound()
{
    if (m_isReported || m_model.components.empty()) {
        return;
    }
    for (const Variable& object : m_model.objects) {
        const bool isPassed = std::any_of(
            m_model.components.begin(),
            m_model.components.end(),
            [&](const ModelComponent& component) {
                return std::any_of(
                    component.arguments.begin(),
                    component.arguments.end(),
                    [&](const Word& argument) { return argument.text == object.name.text; });
            });
        if (!isPassed) {
            m_out.add(
                "unbound-object",
                object.name.range,
                fmt::format("no component passes '{}': it stands for nothing", object.name.text));
        }
    }
}

void collectWords(const ConstraintNode& node, std::set<std::string>& words)
{
    if (node.kind != ConstraintNode::Kind::Call) {
        words.insert(node.name.text);
    }
    for (const ConstraintNode& child : node.children) {
        collectWords(child, words);
    }
}

// Every component has to be named in a constraint together with another one.
void ComponentChecker::checkOrder()
{
    if (m_model.components.size() < 2) {
        return;
    }
    std::set<std::string> ordered;
    for (const ModelConstraint& constraint : m_model.constraints) {
        std::set<std::string> words;
        if (!constraint.meant) {
            return;
        }
        collectWords(*constraint.meant, words);
        std::erase_if(
            words, [&](const std::string& word) { return m_model.findComponent(word) == nullptr; });
        if (words.size() > 1) {
            ordered.insert(words.begin(), words.end());
        }
    }
    for (const ModelComponent& component : m_model.components) {
        if (!ordered.contains(component.variable.text)) {
            m_out.add(
                "no-order",
                component.variable.range,
                fmt::format(
                    "no constraint orders '{}' among the other components",
                    component.variable.text),
                "components are taken as written in order of time: say it, (c1 before c2)");
            return;
        }
    }
}

} // namespace

void checkComponents(const Project& project, const Model& model, Diagnostics& out)
{
    ComponentChecker(project, model, out).check();
}

} // namespace scenariomatch::lint
