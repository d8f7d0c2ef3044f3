#include "engine/Expression.h"

#include "types/CSAllTypes.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace scenariomatch
{

Expression::Expression(
    const CConstraint& constraint, OperatorPromises& promises, const Numbering& numbering)
{
    m_nodes.emplace_back();
    fill(0, constraint, promises, numbering);
}

void Expression::fill(
    std::size_t index,
    const CConstraint& constraint,
    OperatorPromises& promises,
    const Numbering& numbering)
{
    Node node;
    node.source = &constraint;
    if (constraint.m_operatorName == "->") {
        node.kind = Kind::Attribute;
        node.slot = constraint.m_slot;
        node.attribute = numbering.attribute(constraint.m_attribute);
        m_nodes[index] = node;
        return;
    }
    if (constraint.isLeaf() || constraint.m_operator == nullptr) {
        fillConstant(node, constraint);
        m_nodes[index] = node;
        return;
    }
    node.op = constraint.m_operator;
    if (numbering.shared) {
        node.shared = numbering.shared(constraint);
        const std::vector<std::int32_t> slots = slotsOf(constraint);
        std::copy_n(slots.begin(), std::min(slots.size(), kMostSharers), node.sharers.begin());
    }
    const bool isCall =
        promises.of(node.op).isPlain && constraint.m_children.size() <= kMostChildren;
    node.kind = isCall ? Kind::Call : Kind::Objects;
    node.resultKinds = promises.of(node.op).resultKinds;
    node.firstChild = static_cast<std::uint32_t>(m_nodes.size());
    node.children = isCall ? static_cast<std::uint32_t>(constraint.m_children.size()) : 0;
    m_nodes[index] = node;
    m_nodes.resize(m_nodes.size() + node.children);
    for (std::size_t i = 0; i < node.children; ++i) {
        fill(node.firstChild + i, *constraint.m_children[i], promises, numbering);
    }
}

// An operator that is not loaded is false.
void Expression::fillConstant(Node& node, const CConstraint& constraint)
{
    node.kind = Kind::Constant;
    if (!constraint.isLeaf()) {
        node.constant = CSPlainValue::boolean(false);
    } else if (constraint.m_isNumeric) {
        node.constant = CSPlainValue::number(constraint.m_numericValue);
    } else {
        m_words.push_back(std::make_shared<CSString>(constraint.m_value));
        node.constant = CSPlainValue(m_words.back().get());
    }
}

std::vector<std::int32_t> Expression::slots() const
{
    return slotsOf(*m_nodes.front().source);
}

namespace
{

void addSlots(std::vector<std::int32_t>& slots, const CConstraint& constraint)
{
    const bool isBound = constraint.m_operatorName == "->" && constraint.m_slot >= 0;
    if (isBound && std::find(slots.begin(), slots.end(), constraint.m_slot) == slots.end()) {
        slots.push_back(constraint.m_slot);
    }
    for (const auto& child : constraint.m_children) {
        addSlots(slots, *child);
    }
}

std::string numberText(double number)
{
    constexpr std::size_t kLongest = 32;
    std::array<char, kLongest> text{};
    char* const end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

bool isInfix(const CConstraint& constraint)
{
    const std::string& name = constraint.m_operatorName;
    const bool isWordy = std::any_of(
        name.begin(), name.end(), [](unsigned char letter) { return std::isalnum(letter) != 0; });
    return constraint.m_children.size() == 2 && !isWordy;
}

std::string sideText(const CConstraint& side, const VariableNames& nameOf)
{
    return isInfix(side) ? "(" + textOf(side, nameOf) + ")" : textOf(side, nameOf);
}

} // namespace

void assignSlots(CConstraint& constraint, std::span<const std::string> variables)
{
    const auto found = std::lower_bound(variables.begin(), variables.end(), constraint.m_value);
    const bool isBound = found != variables.end() && *found == constraint.m_value;
    constraint.m_slot = isBound ? static_cast<std::int32_t>(found - variables.begin()) : -1;
    for (const auto& child : constraint.m_children) {
        assignSlots(*child, variables);
    }
}

std::vector<std::int32_t> slotsOf(const CConstraint& constraint)
{
    std::vector<std::int32_t> slots;
    addSlots(slots, constraint);
    return slots;
}

std::string textOf(const CConstraint& constraint, const VariableNames& nameOf)
{
    if (constraint.m_operatorName == "->") {
        return nameOf(constraint) + "->" + constraint.m_attribute;
    }
    if (constraint.isLeaf()) {
        return constraint.m_isNumeric ? numberText(constraint.m_numericValue) : constraint.m_value;
    }
    const auto& children = constraint.m_children;
    if (isInfix(constraint)) {
        return sideText(*children[0], nameOf) + " " + constraint.m_operatorName + " " +
               sideText(*children[1], nameOf);
    }
    std::string text = constraint.m_operatorName + "(";
    for (const auto& child : children) {
        text += (&child == &children.front() ? "" : ", ") + textOf(*child, nameOf);
    }
    return text + ")";
}

std::string textOf(const CConstraint& constraint)
{
    return textOf(constraint, [](const CConstraint& leaf) { return leaf.m_value; });
}

} // namespace scenariomatch
