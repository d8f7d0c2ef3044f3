#include "scenario/ModelTree.h"

#include "scenario/CSAllScenarios.h"
#include "scenario/OperatorCall.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

using Edges = std::vector<std::vector<std::size_t>>;

Edges transposed(const Edges& edges)
{
    Edges result(edges.size());
    for (std::size_t node = 0; node < edges.size(); ++node) {
        for (const std::size_t next : edges[node]) {
            result[next].push_back(node);
        }
    }
    return result;
}

// Takes away, with their edges, the nodes from which every way comes to an end.
Edges withoutEnds(Edges edges)
{
    const Edges origins = transposed(edges);
    std::vector<std::size_t> left(edges.size());
    std::vector<std::size_t> ends;
    for (std::size_t node = 0; node < edges.size(); ++node) {
        left[node] = edges[node].size();
        if (left[node] == 0) {
            ends.push_back(node);
        }
    }
    while (!ends.empty()) {
        const std::size_t end = ends.back();
        ends.pop_back();
        for (const std::size_t origin : origins[end]) {
            if (--left[origin] == 0) {
                ends.push_back(origin);
            }
        }
    }
    for (std::vector<std::size_t>& nexts : edges) {
        std::erase_if(nexts, [&](std::size_t next) { return left[next] == 0; });
    }
    return edges;
}

// Which models a model contains. The nodes are the models, followed by the names of models: a model
// leads to the names of its components, a name to all used models of that name.
class ContainmentGraph
{
public:
    using Node = std::size_t;

    explicit ContainmentGraph(const std::vector<std::shared_ptr<CSScenario>>& models)
        : m_edges(models.size())
    {
        for (Node model = 0; model < models.size(); ++model) {
            if (!models[model]->m_used) {
                continue;
            }
            m_edges[nameNode(models[model]->m_name)].push_back(model);
            for (const std::unique_ptr<CComponent>& component : models[model]->m_components) {
                const Node name = nameNode(component->m_modelName);
                m_edges[model].push_back(name);
            }
        }
        // What neither leads to a circle nor comes from one is of no interest.
        m_edges = transposed(withoutEnds(transposed(withoutEnds(std::move(m_edges)))));
    }

    // The shortest way from a node back to itself, with the node at both ends; empty when there is
    // none.
    std::vector<Node> circleThrough(Node start) const
    {
        std::map<Node, Node> cameFrom;
        std::deque<Node> pending = {start};
        while (!pending.empty()) {
            const Node node = pending.front();
            pending.pop_front();
            for (const Node next : m_edges[node]) {
                if (!cameFrom.emplace(next, node).second) {
                    continue;
                }
                if (next == start) {
                    return wayBack(cameFrom, start);
                }
                pending.push_back(next);
            }
        }
        return {};
    }

private:
    Node nameNode(const std::string& name)
    {
        const auto [entry, isNew] = m_names.emplace(name, m_edges.size());
        if (isNew) {
            m_edges.emplace_back();
        }
        return entry->second;
    }

    static std::vector<Node> wayBack(const std::map<Node, Node>& cameFrom, Node start)
    {
        std::vector<Node> circle = {start};
        Node node = start;
        do {
            node = cameFrom.at(node);
            circle.push_back(node);
        } while (node != start);
        std::reverse(circle.begin(), circle.end());
        return circle;
    }

    Edges m_edges;
    std::map<std::string, Node> m_names;
};

// A model's place on a circle of models.
struct CirclePlace
{
    std::size_t m_circle = 0;
    std::size_t m_position = 0;
};

constexpr std::size_t kMaximumSpelled = 20;

// The names of a circle's models, beginning and ending with the one at the position; of a very long
// circle only the first ones.
std::string spelledOut(const std::vector<const CSScenario*>& circle, std::size_t position)
{
    std::string text = circle[position]->m_name;
    for (std::size_t i = 1; i <= circle.size(); ++i) {
        text += " -> ";
        if (i == kMaximumSpelled && i < circle.size()) {
            text += "... -> ";
            i = circle.size();
        }
        text += circle[(position + i) % circle.size()]->m_name;
    }
    return text;
}

// Finds the pairs of components of which a model's constraints say that one ends before the other.
class EndOrder
{
public:
    explicit EndOrder(const CSScenario& model)
        : m_endsFirst(model.m_components.size())
    {
        for (std::size_t i = 0; i < model.m_components.size(); ++i) {
            m_components.emplace(model.m_components[i]->m_variable, i);
        }
    }

    // Goes down from a constraint's root through operators, except those that may turn a relation
    // around.
    void visit(const CConstraint& node)
    {
        if (node.isLeaf() || node.m_operatorName == "!" || node.m_operatorName == "or") {
            return;
        }
        if (node.m_operator != nullptr && node.m_operator->m_isTemporal) {
            visitRelation(node);
        }
        for (const std::unique_ptr<CConstraint>& child : node.m_children) {
            visit(*child);
        }
    }

    bool endsFirst(std::size_t component) const { return m_endsFirst[component]; }

private:
    void visitRelation(const CConstraint& node)
    {
        const std::optional<std::size_t> first = describeOperator(*node.m_operator).m_endsFirst;
        if (!first || *first > 1 || node.m_children.size() < 2) {
            return;
        }
        const std::optional<std::size_t> left = component(*node.m_children[0]);
        const std::optional<std::size_t> right = component(*node.m_children[1]);
        if (left && right && *left != *right) {
            m_endsFirst[*first == 0 ? *left : *right] = true;
        }
    }

    // The component that a leaf names, itself or by its interval.
    std::optional<std::size_t> component(const CConstraint& leaf) const
    {
        const bool isInterval = leaf.m_operatorName == "->" && leaf.m_attribute == "Interval";
        const bool isBare = leaf.m_operatorName == "NULL" && !leaf.m_isNumeric;
        const auto component = m_components.find(leaf.m_value);
        if ((!isInterval && !isBare) || component == m_components.end()) {
            return std::nullopt;
        }
        return component->second;
    }

    std::map<std::string, std::size_t> m_components;
    std::vector<bool> m_endsFirst;
};

std::unique_ptr<CConstraint> copyOf(const CConstraint& node)
{
    auto copy = std::make_unique<CConstraint>();
    copy->m_operator = node.m_operator;
    copy->m_operatorName = node.m_operatorName;
    copy->m_value = node.m_value;
    copy->m_numericValue = node.m_numericValue;
    copy->m_isNumeric = node.m_isNumeric;
    copy->m_isTemporal = node.m_isTemporal;
    copy->m_attribute = node.m_attribute;
    for (const std::unique_ptr<CConstraint>& child : node.m_children) {
        copy->m_children.push_back(copyOf(*child));
    }
    return copy;
}

// All models that are in use, in reading order.
std::vector<std::shared_ptr<CSScenario>> usedModels(const CSAllScenarios& scenarios)
{
    std::vector<std::shared_ptr<CSScenario>> used;
    for (const auto& [kind, models] : scenarios.m_scenariosByKind) {
        std::copy_if(models.begin(), models.end(), std::back_inserter(used), [](const auto& model) {
            return model->m_used;
        });
    }
    std::stable_sort(
        used.begin(), used.end(), [](const auto& a, const auto& b) { return a->m_id < b->m_id; });
    return used;
}

} // namespace

void dropCircles(const std::vector<std::shared_ptr<CSScenario>>& models)
{
    const ContainmentGraph graph(models);
    std::vector<std::vector<const CSScenario*>> circles;
    std::map<std::size_t, CirclePlace> places;
    for (std::size_t model = 0; model < models.size(); ++model) {
        if (places.contains(model)) {
            continue;
        }
        std::vector<const CSScenario*> circle;
        for (const std::size_t node : graph.circleThrough(model)) {
            // The last node is the first one again; the nodes between are names and models in turn.
            if (node < models.size() && (node != model || circle.empty())) {
                places.try_emplace(node, CirclePlace{circles.size(), circle.size()});
                circle.push_back(models[node].get());
            }
        }
        circles.push_back(std::move(circle));
    }
    for (const auto& [model, place] : places) {
        std::cerr << "Warning: the scenario model " << models[model]->m_name
                  << " contains itself: " << spelledOut(circles[place.m_circle], place.m_position)
                  << ". It will not be used!\n";
        models[model]->m_used = false;
    }
}

void chooseTrigger(CSScenario& model, const AgentOperators& declared)
{
    EndOrder order(model);
    for (const std::unique_ptr<CConstraint>& constraint : model.m_constraints) {
        const std::unique_ptr<CConstraint> rewritten = copyOf(*constraint);
        rewriteCalls(*rewritten, declared, model.m_variableTypes);
        order.visit(*rewritten);
    }
    const auto components = static_cast<std::int32_t>(model.m_components.size());
    model.m_triggerIndex = components - 1;
    for (std::int32_t i = components - 1; i >= 0; --i) {
        if (!order.endsFirst(static_cast<std::size_t>(i))) {
            model.m_triggerIndex = i;
            break;
        }
    }
    model.m_skipIndex = -1;
    if (components > 1) {
        model.m_skipIndex = model.m_triggerIndex == 0 ? 1 : 0;
    }
}

} // namespace scenariomatch

void CSAllScenarios::createModelTree(const scenariomatch::AgentOperators& declared)
{
    scenariomatch::dropCircles(scenariomatch::usedModels(*this));
    m_parents.clear();
    for (const std::shared_ptr<CSScenario>& model : scenariomatch::usedModels(*this)) {
        scenariomatch::chooseTrigger(*model, declared);
        m_parents[model->m_name];
        for (const std::unique_ptr<CComponent>& component : model->m_components) {
            std::vector<std::shared_ptr<CSScenario>>& parents = m_parents[component->m_modelName];
            if (parents.empty() || parents.back() != model) {
                parents.push_back(model);
            }
        }
    }
}
