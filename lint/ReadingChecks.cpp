// Whether the engine reads a constraint as it is meant. Where the two trees differ, the first cause
// in the order of the text is told.

#include "lint/Checks.h"
#include "scenario/CConstraint.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace scenariomatch::lint
{

namespace
{

using Kind = ConstraintNode::Kind;

// The operator with its sides exchanged; empty for one that has no such.
std::string_view mirrored(std::string_view op)
{
    static const std::map<std::string_view, std::string_view> kMirrored = {
        {"<", ">"}, {"<=", ">="}, {">", "<"}, {">=", "<="}, {"=", "="}, {"!=", "!="}};
    const auto found = kMirrored.find(op);
    return found == kMirrored.end() ? std::string_view() : found->second;
}

std::string textOf(const Range& range)
{
    std::string text = range.source->text().substr(range.begin, range.end - range.begin);
    return text.substr(0, text.find('\n'));
}

bool isCall(const ConstraintNode& node)
{
    return node.kind == Kind::Call;
}

bool isInfix(const ConstraintNode& node)
{
    return isCall(node) && !node.isPrefix;
}

class CauseFinder
{
public:
    explicit CauseFinder(Diagnostics& out)
        : m_out(out)
    {
    }

    // Whether a cause was found and reported.
    bool visit(const ConstraintNode& node)
    {
        if (!isCall(node)) {
            return false;
        }
        if (node.isPrefix ? visitCall(node) : visitInfix(node)) {
            return true;
        }
        return std::any_of(
            node.children.begin(), node.children.end(), [this](const ConstraintNode& child) {
                return visit(child);
            });
    }

    bool reportBareAttribute(const ConstraintNode& node, const std::string& hint)
    {
        const std::string text = textOf(node.range);
        return report(
            "bare-attribute",
            node.range,
            fmt::format("'{}' by itself is read as the name of an operator", text),
            hint);
    }

private:
    bool report(
        std::string_view rule, const Range& range, const std::string& text, const std::string& hint)
    {
        m_out.add(rule, range, text, hint);
        return true;
    }

    bool visitCall(const ConstraintNode& call)
    {
        if (call.name.text == "!") {
            return visitNegation(call);
        }
        for (const ConstraintNode& argument : call.children) {
            if (isInfix(argument) && !argument.isGroup && !argument.children.back().isPrefix &&
                !argument.children.front().isPrefix) {
                return report(
                    "argument-cut",
                    argument.name.range,
                    "an argument ends at its first blank: this is lost",
                    "arguments are words and attributes");
            }
            if (isCall(argument)) {
                return report(
                    "nested-call",
                    argument.range,
                    "arguments are words and attributes, never calls",
                    "write a constraint for it, or an operator between two calls");
            }
        }
        return false;
    }

    bool visitNegation(const ConstraintNode& call)
    {
        const ConstraintNode& inner = call.children.front();
        if (inner.kind == Kind::Attribute) {
            return reportBareAttribute(inner, fmt::format("write !({} = 1)", textOf(inner.range)));
        }
        return report(
            "nested-call",
            inner.range,
            "'!' takes a comparison, nothing with parentheses",
            "write a comparison, or the operator that says the contrary");
    }

    bool visitInfix(const ConstraintNode& node)
    {
        const ConstraintNode& left = node.children[0];
        const ConstraintNode& right = node.children[1];
        if (left.kind == Kind::Attribute && isCall(right)) {
            return reportBareAttribute(left, fmt::format("write value({})", textOf(left.range)));
        }
        if (right.kind == Kind::Attribute && isCall(left) && !left.isGroup && left.isPrefix) {
            return reportBareAttribute(right, fmt::format("write value({})", textOf(right.range)));
        }
        if (left.kind == Kind::Word && isCall(right)) {
            const std::string_view other = mirrored(node.name.text);
            return report(
                "call-on-right",
                right.range,
                "a call or a group cannot stand to the right of a word",
                other.empty()
                    ? "write it on the left"
                    : fmt::format(
                          "write {} {} {}", textOf(right.range), other, textOf(left.range)));
        }
        return visitSides(node, left, right);
    }

    bool
    visitSides(const ConstraintNode& node, const ConstraintNode& left, const ConstraintNode& right)
    {
        const bool isConjunction = node.name.text == "and" || node.name.text == "or";
        if (isConjunction && isInfix(left)) {
            return report(
                "split-conjunction",
                node.name.range,
                fmt::format("the text is not split at '{}'", node.name.text),
                node.name.text == "and" ? "write two constraints"
                                        : "write the first side as a call: NAME(a, b)");
        }
        if (left.isGroup && right.kind != Kind::Word) {
            return report(
                "group-split",
                left.range,
                "a group does not end at its own ')' when more parentheses follow",
                right.kind == Kind::Attribute
                    ? "write the attribute as value(...) on the left of the group"
                    : "write the group to the right of a call");
        }
        if (isInfix(left) && !left.isGroup) {
            return report(
                "split-conjunction",
                left.name.range,
                fmt::format("the right side of '{}' is all that follows", left.name.text),
                "put the left side into parentheses");
        }
        return false;
    }

    Diagnostics& m_out;
};

} // namespace

void checkReading(const ModelConstraint& constraint, Diagnostics& out)
{
    if (constraint.isReported || !constraint.meant) {
        return;
    }
    if (!constraint.read) {
        out.add(
            "malformed",
            constraint.range,
            fmt::format("the constraint nests more than {} deep", CConstraint::kMaximumDepth));
        return;
    }
    if (isSameTree(*constraint.meant, *constraint.read)) {
        return;
    }
    CauseFinder finder(out);
    const bool isBare = constraint.meant->kind == Kind::Attribute;
    const bool isFound =
        isBare ? finder.reportBareAttribute(*constraint.meant, "compare it to a value")
               : finder.visit(*constraint.meant);
    if (!isFound) {
        out.add(
            "misread",
            constraint.range,
            fmt::format("this is read as a call of '{}'", constraint.read->name.text),
            "split it into several constraints");
    }
}

} // namespace scenariomatch::lint
