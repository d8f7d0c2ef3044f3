#pragma once

#include "app/explain/Finding.h"
#include "app/explain/IntervalRelation.h"
#include "app/explain/ValueReader.h"
#include "engine/OperatorPromises.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// Measures how far a pure constraint is from the other answer.
//
// What it knows of an operator it takes from the operator's description or guesses from its name,
// and says only after the operator itself has agreed: the operator is asked again with the value
// that a margin away would have. Lengths have the unit of the positions.
//
// Example: for distance(p->Position, q->Position) < 2 and people 2.3 apart it finds a margin of
// 0.3.
class Gauge
{
public:
    // The constraint, whose leaves have their slots, outlives the gauge.
    Gauge(
        const CConstraint& constraint,
        std::size_t position,
        OperatorPromises& promises,
        const Expression::Numbering& numbering);

    // Whether the constraint holds for the reader's candidate, which all that follows speaks of
    // until the next one.
    bool holds(ValueReader& reader);

    double confidence() const { return m_confidence; }

    // How far the value is from where the answer changes; nothing where that cannot be told, or is
    // not less than the bound.
    std::optional<double> margin(double bound = std::numeric_limits<double>::infinity());
    // What such a margin is small or large against; greater than 0.
    double scale() const;

    // The whole story.
    Finding finding();

    const std::string& text() const { return m_text; }

private:
    enum class Shape : std::uint8_t {
        // left < right and the like.
        Comparison,
        // left = right, left != right.
        Equality,
        // The last argument is a number; a greater one lets more pass.
        Limit,
        // A point in or out of a zone.
        Zone,
        Relation,
        Other,
    };

    void chooseShape(const CConstraint& constraint, OperatorPromises& promises);
    bool answer(const std::vector<CSPlainValue>& arguments) const;
    bool answerWith(std::size_t argument, double number) const;
    std::optional<double> limitMargin(double bound) const;
    std::optional<double> zoneMargin() const;
    std::optional<double> relationMargin() const;
    bool isProven(double margin) const;
    bool isComparisonProven(double margin) const;
    bool isZoneProven(double margin) const;

    void describeComparison(Finding& finding) const;
    void describeEquality(Finding& finding) const;
    void describeLimit(Finding& finding) const;
    void describeZone(Finding& finding) const;
    void describeRelation(Finding& finding) const;
    std::string argumentsText() const;
    std::string nameOf(std::size_t argument) const;

    const CConstraint* m_source;
    std::size_t m_position;
    std::string m_text;
    Shape m_shape = Shape::Other;
    bool m_isNearness = false;
    bool m_isAtMost = false;
    std::string m_unit;
    std::optional<IntervalRelation> m_relation;
    std::optional<Expression> m_whole;
    std::vector<Expression> m_parts;
    // Of the candidate at hand.
    std::vector<CSPlainValue> m_arguments;
    bool m_holds = false;
    double m_confidence = 1.0;
};

} // namespace scenariomatch
