#include "app/explain/Gauge.h"

#include "app/explain/NumberWords.h"
#include "app/explain/ValueWords.h"
#include "app/explain/ZoneBorder.h"
#include "engine/Truth.h"
#include "scenario/OperatorCall.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <numbers>
#include <string_view>
#include <utility>

namespace scenariomatch
{

namespace
{

// More than any margin may be taken for: a hair beyond it, for numbers of this size.
double hair(double a, double b)
{
    constexpr double kShare = 1e-9;
    return kShare * std::max({std::fabs(a), std::fabs(b), 1.0});
}

bool isNumber(const CSPlainValue& value)
{
    return value.isNumber() && std::isfinite(value.m_number);
}

bool isNumericConstant(const CConstraint& node)
{
    return node.isLeaf() && node.m_operatorName == "NULL" && node.m_isNumeric &&
           std::isfinite(node.m_numericValue);
}

bool isPoint(const CSPlainValue& value)
{
    return value.isPoint() && std::isfinite(value.m_point.x) && std::isfinite(value.m_point.y);
}

// The unit of what an expression measures; empty for lengths and numbers.
std::string unitOf(const CConstraint& node)
{
    const std::string& name = node.m_operatorName;
    if (name == "duration" || name == "gap") {
        return "s";
    }
    if (name == "heading") {
        return "degree";
    }
    constexpr std::array<std::string_view, 6> kPassing{"+", "-", "abs", "min", "max", "value"};
    if (std::find(kPassing.begin(), kPassing.end(), name) == kPassing.end()) {
        return {};
    }
    for (const auto& child : node.m_children) {
        std::string unit = unitOf(*child);
        if (!unit.empty()) {
            return unit;
        }
    }
    return {};
}

std::string withUnit(double number, const std::string& unit)
{
    return numberText(number) + (unit.empty() ? "" : " " + unit);
}

} // namespace

Gauge::Gauge(
    const CConstraint& constraint,
    std::size_t position,
    OperatorPromises& promises,
    const Expression::Numbering& numbering)
    : m_source(&constraint)
    , m_position(position)
    , m_text(textOf(constraint))
{
    constexpr std::size_t kMostParts = 8;
    const bool isPlain = !constraint.isLeaf() && constraint.m_operator != nullptr &&
                         promises.of(constraint.m_operator).isPlain &&
                         constraint.m_children.size() <= kMostParts;
    if (!isPlain) {
        m_whole.emplace(constraint, promises, numbering);
        return;
    }
    m_parts.reserve(constraint.m_children.size());
    for (const auto& child : constraint.m_children) {
        m_parts.emplace_back(*child, promises, numbering);
    }
    m_arguments.resize(m_parts.size());
    chooseShape(constraint, promises);
}

void Gauge::chooseShape(const CConstraint& constraint, OperatorPromises& promises)
{
    const std::string& name = constraint.m_operatorName;
    const CSOperatorMeaning meaning = promises.of(constraint.m_operator).meaning;
    const auto& children = constraint.m_children;
    m_isAtMost = meaning == CSOperatorMeaning::AtMost;
    m_isNearness = meaning == CSOperatorMeaning::Nearness;
    m_relation = children.size() >= 2 ? IntervalRelation::named(name) : std::nullopt;
    if ((m_isAtMost || meaning == CSOperatorMeaning::AtLeast) && children.size() == 2) {
        m_shape = Shape::Comparison;
        m_unit = unitOf(*children[0]);
        m_unit = m_unit.empty() ? unitOf(*children[1]) : m_unit;
    } else if ((name == "=" || name == "!=") && children.size() == 2) {
        m_shape = Shape::Equality;
    } else if ((name == "in" || name == "out") && children.size() == 2) {
        m_shape = Shape::Zone;
    } else if (m_relation) {
        m_shape = Shape::Relation;
        m_unit = "s";
    } else if (children.size() >= 2 && isNumericConstant(*children.back())) {
        m_shape = Shape::Limit;
    }
}

bool Gauge::holds(ValueReader& reader)
{
    if (m_whole) {
        const Truth truth(m_whole->evaluate(reader));
        m_holds = truth.holds;
        m_confidence = truth.confidence;
        return m_holds;
    }
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        m_arguments[i] = m_parts[i].evaluate(reader);
    }
    const Truth truth(callOperatorPlain(*m_source->m_operator, m_arguments));
    m_holds = truth.holds;
    m_confidence = truth.confidence;
    return m_holds;
}

bool Gauge::answer(const std::vector<CSPlainValue>& arguments) const
{
    return Truth(callOperatorPlain(*m_source->m_operator, arguments)).holds;
}

bool Gauge::answerWith(std::size_t argument, double number) const
{
    std::vector<CSPlainValue> changed = m_arguments;
    changed[argument] = CSPlainValue::number(number);
    return answer(changed);
}

std::optional<double> Gauge::margin(double bound)
{
    switch (m_shape) {
    case Shape::Comparison: {
        if (!isNumber(m_arguments[0]) || !isNumber(m_arguments[1])) {
            return std::nullopt;
        }
        const double margin = std::fabs(m_arguments[0].m_number - m_arguments[1].m_number);
        return margin < bound ? std::optional(margin) : std::nullopt;
    }
    case Shape::Limit:
        return limitMargin(bound);
    case Shape::Zone: {
        const std::optional<double> margin = zoneMargin();
        return margin && *margin < bound ? margin : std::nullopt;
    }
    case Shape::Relation: {
        const std::optional<double> margin = relationMargin();
        return margin && *margin < bound ? margin : std::nullopt;
    }
    case Shape::Equality:
    case Shape::Other:
        break;
    }
    return std::nullopt;
}

// How much greater the limit has to be for the answer to be yes, or smaller for it to be no: the
// operator is asked, with limits ever closer.
std::optional<double> Gauge::limitMargin(double bound) const
{
    constexpr double kMost = 1e12;
    constexpr double kFirst = 1e-6;
    constexpr int kHalvings = 100;
    const std::size_t last = m_arguments.size() - 1;
    const double limit = m_arguments[last].m_number;
    const double sign = m_holds ? -1.0 : 1.0;
    const auto changes = [&](double by) { return answerWith(last, limit + sign * by) != m_holds; };
    const bool isBounded = bound < kMost;
    if (isBounded && !changes(bound)) {
        return std::nullopt;
    }
    double enough = isBounded ? bound : kFirst;
    double tooLittle = 0.0;
    while (!isBounded && !changes(enough)) {
        tooLittle = enough;
        enough *= 2.0;
        if (enough > kMost) {
            return std::nullopt;
        }
    }
    for (int i = 0; i < kHalvings; ++i) {
        const double middle = tooLittle + (enough - tooLittle) / 2.0;
        if (middle <= tooLittle || middle >= enough) {
            break;
        }
        (changes(middle) ? enough : tooLittle) = middle;
    }
    return enough < bound ? std::optional(enough) : std::nullopt;
}

std::optional<double> Gauge::zoneMargin() const
{
    const CS3DDPoints* const zone = m_arguments[1].points();
    if (!isPoint(m_arguments[0]) || zone == nullptr) {
        return std::nullopt;
    }
    const auto nearest = nearestBorder(m_arguments[0].m_point, zone->m_points);
    return nearest ? std::optional(nearest->distance) : std::nullopt;
}

// All that is missing; the least that is to spare.
std::optional<double> Gauge::relationMargin() const
{
    if (m_holds) {
        return m_relation->reserve(m_arguments);
    }
    const auto misses = m_relation->misses(m_arguments);
    if (!misses || misses->empty()) {
        return std::nullopt;
    }
    double sum = 0.0;
    for (const IntervalRelation::Miss& miss : *misses) {
        sum += miss.margin;
    }
    return sum;
}

double Gauge::scale() const
{
    double scale = 0.0;
    if (m_shape == Shape::Comparison) {
        scale = std::fabs(m_arguments[1].m_number);
    } else if (m_shape == Shape::Limit) {
        scale = std::fabs(m_arguments.back().m_number);
    } else if (m_shape == Shape::Zone) {
        const CS3DDPoints* const zone = m_arguments[1].points();
        scale = zone == nullptr ? 0.0 : halfSize(zone->m_points);
    }
    return std::isfinite(scale) && scale > 0.0 ? scale : 1.0;
}

// Whether the operator gives the other answer a hair beyond the margin.
bool Gauge::isProven(double margin) const
{
    switch (m_shape) {
    case Shape::Comparison:
        return isComparisonProven(margin);
    case Shape::Limit: {
        const double limit = m_arguments.back().m_number;
        const double by = margin + hair(limit, margin);
        return answerWith(m_arguments.size() - 1, limit + (m_holds ? -by : by)) != m_holds;
    }
    case Shape::Zone:
        return isZoneProven(margin);
    case Shape::Relation: {
        const auto misses = m_relation->misses(m_arguments);
        return misses && (m_holds ? misses->empty() : misses->size() == 1);
    }
    case Shape::Equality:
    case Shape::Other:
        break;
    }
    return false;
}

bool Gauge::isComparisonProven(double margin) const
{
    const double left = m_arguments[0].m_number;
    const double right = m_arguments[1].m_number;
    const double by = margin + hair(left, right);
    return answerWith(0, left + by) != m_holds || answerWith(0, left - by) != m_holds;
}

// Somewhere a hair from the nearest place of the border.
bool Gauge::isZoneProven(double margin) const
{
    constexpr int kDirections = 32;
    const auto nearest = nearestBorder(m_arguments[0].m_point, m_arguments[1].points()->m_points);
    const double step = 10.0 * hair(nearest->x, nearest->y) + hair(margin, margin);
    std::vector<CSPlainValue> moved = m_arguments;
    for (int i = 0; i < kDirections; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / kDirections;
        moved[0].m_point.x = nearest->x + step * std::cos(angle);
        moved[0].m_point.y = nearest->y + step * std::sin(angle);
        if (answer(moved) != m_holds) {
            return true;
        }
    }
    return false;
}

Finding Gauge::finding()
{
    Finding finding;
    finding.constraint = m_position;
    finding.text = m_text;
    finding.holds = m_holds;
    finding.unit = m_unit;
    finding.margin = margin();
    finding.isMeasured = finding.margin.has_value();
    if (finding.margin && !isProven(*finding.margin)) {
        finding.margin.reset();
    }
    switch (m_shape) {
    case Shape::Comparison:
        describeComparison(finding);
        break;
    case Shape::Equality:
        describeEquality(finding);
        break;
    case Shape::Limit:
        describeLimit(finding);
        break;
    case Shape::Zone:
        describeZone(finding);
        break;
    case Shape::Relation:
        describeRelation(finding);
        break;
    case Shape::Other:
        break;
    }
    if (finding.seen.empty() && finding.note.empty()) {
        finding.note = argumentsText();
    }
    return finding;
}

void Gauge::describeComparison(Finding& finding) const
{
    finding.seen = valueText(m_arguments[0]);
    finding.required = m_source->m_operatorName + " " + valueText(m_arguments[1]);
    if (!finding.margin) {
        return;
    }
    const std::string margin = withUnit(*finding.margin, m_unit);
    if (m_holds) {
        finding.note = margin + " to spare";
    } else if (*finding.margin == 0.0) {
        finding.note = "exactly at the limit";
    } else {
        finding.note = margin + (m_isAtMost ? " too much" : " too little");
    }
}

void Gauge::describeEquality(Finding& finding) const
{
    finding.seen = valueText(m_arguments[0]);
    finding.required = m_source->m_operatorName + " " + valueText(m_arguments[1]);
}

void Gauge::describeLimit(Finding& finding) const
{
    if (!finding.margin) {
        return;
    }
    const double limit = m_arguments.back().m_number;
    double turning = m_holds ? limit - *finding.margin : limit + *finding.margin;
    turning = std::fabs(turning) < hair(limit, 0.0) ? 0.0 : turning;
    if (m_isNearness) {
        finding.seen = numberText(turning);
        finding.required = "<= " + numberText(limit);
        finding.note = numberText(*finding.margin) + (m_holds ? " to spare" : " too much");
    } else if (m_holds) {
        finding.note = fmt::format(
            "it holds with {}, and not with less than {}", numberText(limit), numberText(turning));
    } else {
        finding.note = fmt::format(
            "it would hold with {} instead of {}", numberText(turning), numberText(limit));
    }
}

void Gauge::describeZone(Finding& finding) const
{
    if (!finding.margin) {
        return;
    }
    const bool isInside = (m_source->m_operatorName == "in") == m_holds;
    finding.seen = numberText(*finding.margin) + (isInside ? " inside" : " outside");
    finding.required = m_source->m_operatorName == "in" ? "inside" : "outside";
    finding.note = numberText(*finding.margin) + " from the border";
}

void Gauge::describeRelation(Finding& finding) const
{
    const std::string a = nameOf(0);
    const std::string b = nameOf(1);
    const auto misses = m_relation->misses(m_arguments);
    // What the operator says comes first: no text where it means something else.
    if (!misses || misses->empty() != m_holds) {
        finding.margin.reset();
        return;
    }
    finding.required = m_relation->requirement(a, b, m_arguments);
    for (const IntervalRelation::Miss& miss : *misses) {
        finding.note += (finding.note.empty() ? "" : ", ") + IntervalRelation::textOf(miss, a, b);
    }
    if (m_holds && finding.margin) {
        finding.note = withUnit(*finding.margin, m_unit) + " to spare";
    }
}

// The variable of an attribute; an expression as it is written.
std::string Gauge::nameOf(std::size_t argument) const
{
    const CConstraint& child = *m_source->m_children[argument];
    return child.m_operatorName == "->" ? child.m_value : textOf(child);
}

std::string Gauge::argumentsText() const
{
    std::string text;
    for (std::size_t i = 0; i < m_arguments.size(); ++i) {
        const CConstraint& child = *m_source->m_children[i];
        if (child.m_operatorName == "NULL") {
            continue;
        }
        text += fmt::format(
            "{}{} is {}", text.empty() ? "" : ", ", textOf(child), valueText(m_arguments[i]));
    }
    return text;
}

} // namespace scenariomatch
