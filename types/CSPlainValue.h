#pragma once

#include "types/CSAllTypes.h"

#include <cstdint>

// A value without its box: what an operator that promises `m_plain` computes with, so that nothing
// is allocated while candidates are tested.
//
// A view: what it points to belongs to others and lives at least as long as the evaluation of the
// constraint. Copied freely.
//
// Example, the whole of an operator `left of`:
//     CSPlainValue evaluatePlain(std::span<const CSPlainValue> arguments) override
//     {
//         const bool known = arguments.size() == 2 && arguments[0].isPoint() &&
//         arguments[1].isPoint();
//         return CSPlainValue::boolean(known && arguments[0].m_point.x < arguments[1].m_point.x);
//     }
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): one member of the union is set
class CS_EXPORT CSPlainValue
{
public:
    enum class Kind : std::uint8_t {
        // No value.
        None,
        // BOOL: m_truth, and the confidence in m_number.
        Bool,
        // INT and DOUBLE: m_number, which may be NaN.
        Number,
        // The four kinds of points: m_point.
        Point,
        // INTERVAL: m_interval.
        Interval,
        // Told by the object: STRING, TIMESTAMP, 3DDPOINTS, and all that has no kind of its own,
        // values among them whose tag is not their class's.
        Text,
        TimeStamp,
        Points,
        Other,
    };

    // A point of the plane has z = 0 and no height.
    struct Position
    {
        double x;
        double y;
        double z;
        bool hasHeight;
    };

    // Either end may be missing.
    struct Span
    {
        const CSTimeStamp* start;
        const CSTimeStamp* end;
    };

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): one member of the union is set
    CSPlainValue() = default;
    // The view of a value object; no value for null.
    explicit CSPlainValue(const CSBasicType* object);

    static CSPlainValue boolean(bool truth, double confidence = 1.0)
    {
        CSPlainValue value;
        value.m_kind = Kind::Bool;
        value.m_truth = truth;
        value.m_number = confidence;
        return value;
    }

    static CSPlainValue number(double number)
    {
        CSPlainValue value;
        value.m_kind = Kind::Number;
        value.m_number = number;
        return value;
    }

    static CSPlainValue interval(const CSTimeStamp* start, const CSTimeStamp* end)
    {
        CSPlainValue value;
        value.m_kind = Kind::Interval;
        value.m_interval = {start, end};
        return value;
    }

    bool isNone() const { return m_kind == Kind::None; }

    bool isBool() const { return m_kind == Kind::Bool; }

    bool isNumber() const { return m_kind == Kind::Number; }

    bool isPoint() const { return m_kind == Kind::Point; }

    bool isInterval() const { return m_kind == Kind::Interval; }

    // Null unless of that kind.
    const CSString* text() const { return objectOf<CSString>(Kind::Text); }

    const CSTimeStamp* timeStamp() const { return objectOf<CSTimeStamp>(Kind::TimeStamp); }

    const CS3DDPoints* points() const { return objectOf<CS3DDPoints>(Kind::Points); }

    Kind m_kind = Kind::None;
    bool m_truth = false;

    union {
        double m_number = 0.0;
        Position m_point;
        Span m_interval;
    };

    // The value object seen, with its history; null for a computed value.
    const CSBasicType* m_object = nullptr;

private:
    template <class Class>
    const Class* objectOf(Kind kind) const
    {
        return m_kind == kind ? static_cast<const Class*>(m_object) : nullptr;
    }
};
