#pragma once

#include "engine/OperatorPromises.h"
#include "scenario/ConstraintEvaluation.h"
#include "types/CSPlainValue.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace scenariomatch
{

// A pure constraint, or a part of one, made ready for evaluation without value objects.
//
// Keeps to its constraint tree, which must outlive it. Operators that promise plain values are
// called with them; what stands below an operator that is pure alone is evaluated with value
// objects, as any other constraint is.
//
// Example:
//     const Expression expression(constraint, promises, numbering);
//     const CSPlainValue value = expression.evaluate(reader);
class CS_EXPORT Expression
{
public:
    enum class Kind : std::uint8_t {
        Constant,
        Attribute,
        Call,
        // Evaluated with value objects.
        Objects,
    };

    // At most two agents decide a value that is remembered for all.
    static constexpr std::size_t kMostSharers = 2;

    struct Node
    {
        Kind kind = Kind::Constant;
        // Children stand next to each other.
        std::uint32_t firstChild = 0;
        std::uint32_t children = 0;
        // Of an attribute; slot -1 where the variable is not bound.
        std::int32_t slot = -1;
        std::int32_t attribute = -1;
        // Where the value is remembered; -1 where it is not. The slots of the agents that decide
        // it, -1 for none.
        std::int32_t shared = -1;
        std::array<std::int32_t, kMostSharers> sharers = {-1, -1};
        // The kinds of values that the operator may give.
        std::uint32_t resultKinds = kAnyKind;
        CSOperatorInterfaceAbstract* op = nullptr;
        const CConstraint* source = nullptr;
        CSPlainValue constant;
    };

    // Numbers that an evaluation works with; they are asked for while an expression is made.
    struct Numbering
    {
        std::function<std::int32_t(const std::string& attribute)> attribute;
        // Where the value of this part is remembered, -1 for nowhere. Null for never.
        std::function<std::int32_t(const CConstraint& part)> shared;
    };

    Expression(
        const CConstraint& constraint, OperatorPromises& promises, const Numbering& numbering);

    // The slots of the agents that decide the value, each once, in order of appearance; bound ones
    // only.
    std::vector<std::int32_t> slots() const;

    // Calls visit(slot, attribute number) for each attribute that is read as a plain value.
    template <class Visit>
    void forEachAttribute(Visit&& visit) const;

    // The value. The reader gives
    //     attribute(node)        the plain value of an attribute,
    //     objects(constraint)    the value of a constraint evaluated with value objects, which it
    //                            keeps as long as the result is used,
    //     shared(node, compute)  the remembered value of a node, computed where it is not yet.
    template <class Reader>
    CSPlainValue evaluate(Reader& reader) const
    {
        return valueOf(m_nodes.front(), reader);
    }

    // Calls visit(part) for each part that is remembered.
    template <class Visit>
    void forEachShared(Visit&& visit) const
    {
        for (const Node& node : m_nodes) {
            if (node.shared >= 0) {
                visit(*node.source);
            }
        }
    }

private:
    static constexpr std::size_t kMostChildren = 8;

    void fill(
        std::size_t index,
        const CConstraint& constraint,
        OperatorPromises& promises,
        const Numbering& numbering);
    void fillConstant(Node& node, const CConstraint& constraint);

    template <class Reader>
    CSPlainValue valueOf(const Node& node, Reader& reader) const;
    template <class Reader>
    CSPlainValue compute(const Node& node, Reader& reader) const;
    static CSPlainValue call(const Node& node, std::span<const CSPlainValue> arguments);

    std::vector<Node> m_nodes;
    // The words that the constants refer to.
    std::vector<std::shared_ptr<CSBasicType>> m_words;
};

// Gives the leaves of the constraint the slots of their variables, which are sorted by name; -1
// where a variable is not among them.
CS_EXPORT void assignSlots(CConstraint& constraint, std::span<const std::string> variables);

// The slots of the variables that the constraint reads, each once, in order of appearance; bound
// ones only.
CS_EXPORT std::vector<std::int32_t> slotsOf(const CConstraint& constraint);

// The constraint as a person would write it, with variables named by the function.
using VariableNames = std::function<std::string(const CConstraint& leaf)>;
CS_EXPORT std::string textOf(const CConstraint& constraint, const VariableNames& nameOf);
CS_EXPORT std::string textOf(const CConstraint& constraint);

template <class Visit>
void Expression::forEachAttribute(Visit&& visit) const
{
    for (const Node& node : m_nodes) {
        if (node.kind == Kind::Attribute && node.slot >= 0) {
            visit(node.slot, node.attribute);
        }
    }
}

// Leaves, which are most of the nodes, are read in place.
template <class Reader>
inline CSPlainValue Expression::valueOf(const Node& node, Reader& reader) const
{
    if (node.kind == Kind::Constant) {
        return node.constant;
    }
    if (node.kind == Kind::Attribute) {
        return node.slot < 0 ? CSPlainValue() : reader.attribute(node);
    }
    if (node.shared >= 0) {
        return reader.shared(node, [&] { return compute(node, reader); });
    }
    return compute(node, reader);
}

inline CSPlainValue Expression::call(const Node& node, std::span<const CSPlainValue> arguments)
{
    const CSPlainValue value = callOperatorPlain(*node.op, arguments);
    if (!isAmong(node.resultKinds, value.m_kind)) [[unlikely]] {
        reportWrongResult(*node.op, value);
    }
    return value;
}

// Arguments are made where they are read: one, two and three are what nearly all operators take.
template <class Reader>
CSPlainValue Expression::compute(const Node& node, Reader& reader) const
{
    if (node.kind == Kind::Objects) {
        return CSPlainValue(reader.objects(*node.source));
    }
    const Node* child = m_nodes.data() + node.firstChild;
    switch (node.children) {
    case 1: {
        const std::array arguments{valueOf(child[0], reader)};
        return call(node, arguments);
    }
    case 2: {
        const std::array arguments{valueOf(child[0], reader), valueOf(child[1], reader)};
        return call(node, arguments);
    }
    case 3: {
        const std::array arguments{
            valueOf(child[0], reader), valueOf(child[1], reader), valueOf(child[2], reader)};
        return call(node, arguments);
    }
    default:
        std::array<CSPlainValue, kMostChildren> arguments;
        for (std::size_t i = 0; i < node.children; ++i) {
            arguments[i] = valueOf(child[i], reader);
        }
        return call(node, std::span(arguments).first(node.children));
    }
}

} // namespace scenariomatch
