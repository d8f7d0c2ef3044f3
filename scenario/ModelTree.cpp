#include "scenario/ModelTree.h"

#include "scenario/CSAllScenarios.h"
#include "scenario/OperatorCall.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iostream>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

using Edges = std::vector<std::vector<std::size_t>>;

constexpr std::size_t kNoNode = std::numeric_limits<std::size_t>::max();

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

// The nodes in the order in which a depth-first walk leaves them.
std::vector<std::size_t> finishingOrder(const Edges& edges)
{
    std::vector<std::size_t> order;
    std::vector<bool> seen(edges.size());
    // Nodes that are entered, with the position of the edge to follow next.
    std::vector<std::pair<std::size_t, std::size_t>> open;
    const auto enter = [&](std::size_t node) {
        if (!seen[node]) {
            seen[node] = true;
            open.emplace_back(node, 0);
        }
    };
    for (std::size_t start = 0; start < edges.size(); ++start) {
        enter(start);
        while (!open.empty()) {
            auto& [node, position] = open.back();
            if (position < edges[node].size()) {
                enter(edges[node][position++]);
            } else {
                order.push_back(node);
                open.pop_back();
            }
        }
    }
    return order;
}

// For every node one node, its root, that is the same for all nodes on circles with it.
std::vector<std::size_t> rootsOf(const Edges& edges)
{
    const Edges origins = transposed(edges);
    std::vector<std::size_t> order = finishingOrder(edges);
    std::vector<std::size_t> roots(edges.size(), kNoNode);
    for (; !order.empty(); order.pop_back()) {
        const std::size_t root = order.back();
        std::vector<std::size_t> pending = {root};
        while (!pending.empty()) {
            const std::size_t node = pending.back();
            pending.pop_back();
            if (roots[node] == kNoNode) {
                roots[node] = root;
                pending.insert(pending.end(), origins[node].begin(), origins[node].end());
            }
        }
    }
    return roots;
}

// For every node that edges lead to from its root, the node before it on a shortest way from there.
std::vector<std::size_t> waysFromRoots(const Edges& edges, const std::vector<std::size_t>& roots)
{
    std::vector<std::size_t> before(edges.size(), kNoNode);
    std::deque<std::size_t> pending;
    for (std::size_t node = 0; node < edges.size(); ++node) {
        if (roots[node] == node) {
            pending.push_back(node);
        }
    }
    while (!pending.empty()) {
        const std::size_t node = pending.front();
        pending.pop_front();
        for (const std::size_t next : edges[node]) {
            if (roots[next] != next && before[next] == kNoNode) {
                before[next] = node;
                pending.push_back(next);
            }
        }
    }
    return before;
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
        // An edge that is on no circle is of no interest.
        const std::vector<Node> roots = rootsOf(m_edges);
        for (Node node = 0; node < m_edges.size(); ++node) {
            std::erase_if(m_edges[node], [&](Node next) { return roots[next] != roots[node]; });
            // Of circles of one length, the one through what is read first is found.
            std::sort(m_edges[node].begin(), m_edges[node].end());
        }
        m_fromRoot = waysFromRoots(m_edges, roots);
        m_toRoot = waysFromRoots(transposed(m_edges), roots);
        m_cameFrom.assign(m_edges.size(), kNoNode);
    }

    // A way from a node back to itself, with the node at both ends; empty when there is none. It is
    // the shortest one, unless looking for that takes too long.
    std::vector<Node> circleThrough(Node start)
    {
        if (m_edges[start].empty()) {
            return {};
        }
        std::vector<Node> circle = shortestCircle(start);
        return circle.empty() ? circleByRoot(start) : circle;
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

    // Empty also when more than kMaximumSteps are needed.
    std::vector<Node> shortestCircle(Node start)
    {
        std::vector<Node> circle;
        std::vector<Node> reached = {start};
        std::size_t steps = 0;
        for (std::size_t i = 0; i < reached.size() && circle.empty(); ++i) {
            const std::vector<Node>& nexts = m_edges[reached[i]];
            steps += nexts.size();
            if (steps > kMaximumSteps) {
                break;
            }
            for (const Node next : nexts) {
                if (m_cameFrom[next] != kNoNode) {
                    continue;
                }
                m_cameFrom[next] = reached[i];
                if (next == start) {
                    circle = wayBack(start);
                    break;
                }
                reached.push_back(next);
            }
        }
        for (const Node node : reached) {
            m_cameFrom[node] = kNoNode;
        }
        return circle;
    }

    std::vector<Node> wayBack(Node start) const
    {
        std::vector<Node> circle = {start};
        Node node = start;
        do {
            node = m_cameFrom[node];
            circle.push_back(node);
        } while (node != start);
        std::reverse(circle.begin(), circle.end());
        return circle;
    }

    // Goes towards the root until it meets the way from the root to the node, and back on that.
    std::vector<Node> circleByRoot(Node start) const
    {
        std::vector<Node> circle = {start};
        if (m_toRoot[start] == kNoNode) {
            for (Node node = m_edges[start].front(); node != kNoNode; node = m_toRoot[node]) {
                circle.push_back(node);
            }
            return circle;
        }
        std::unordered_map<Node, Node> after;
        for (Node node = start; m_fromRoot[node] != kNoNode; node = m_fromRoot[node]) {
            after.emplace(m_fromRoot[node], node);
        }
        Node node = m_toRoot[start];
        for (; !after.contains(node); node = m_toRoot[node]) {
            circle.push_back(node);
        }
        for (; node != start; node = after.at(node)) {
            circle.push_back(node);
        }
        circle.push_back(start);
        return circle;
    }

    static constexpr std::size_t kMaximumSteps = 2000;

    Edges m_edges;
    std::map<std::string, Node> m_names;
    // The neighbour of a node on its way from and to its root; none for the root.
    std::vector<Node> m_fromRoot;
    std::vector<Node> m_toRoot;
    // For the search that is going on; none for all nodes between searches.
    std::vector<Node> m_cameFrom;
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
    ContainmentGraph graph(models);
    std::map<std::size_t, std::string> circles;
    for (std::size_t model = 0; model < models.size(); ++model) {
        if (circles.contains(model)) {
            continue;
        }
        std::vector<std::size_t> places;
        std::vector<const CSScenario*> circle;
        for (const std::size_t node : graph.circleThrough(model)) {
            // The last node is the first one again; the nodes between are names and models in turn.
            if (node < models.size() && (node != model || circle.empty())) {
                places.push_back(node);
                circle.push_back(models[node].get());
            }
        }
        for (std::size_t position = 0; position < places.size(); ++position) {
            if (!circles.contains(places[position])) {
                circles.emplace(places[position], spelledOut(circle, position));
            }
        }
    }
    for (const auto& [model, circle] : circles) {
        std::cerr << "Warning: the scenario model " << models[model]->m_name
                  << " contains itself: " << circle << ". It will not be used!\n";
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
