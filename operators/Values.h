#pragma once

#include "types/CSAllTypes.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// How the standard operators read their arguments and make their results.
//
// An argument can be anything: missing (an empty pointer), of another type, or a converted value
// whose tag is not its class's. Every reader answers "nothing" for what it cannot use, so an
// operator asks for what it needs and gives up when it does not get it: a relation is false then, a
// measure has no value.
namespace scenariomatch
{

using Value = std::shared_ptr<CSBasicType>;
using Arguments = std::vector<Value>;

// A position: in space, or in the ground plane alone (z is 0 then).
struct Point
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    bool hasHeight = false;
};

// The value as the class that belongs to the tag; null unless tag and class are both right.
template <typename Class>
const Class* valueAs(const Value& value, std::string_view tag)
{
    if (!value || value->m_type != tag) {
        return nullptr;
    }
    return dynamic_cast<const Class*>(value.get());
}

// INT and DOUBLE; NaN is no number.
std::optional<double> number(const Value& value);
// BOOL; a truth value whose confidence is NaN is none.
const CSBool* truth(const Value& value);
const CSString* text(const Value& value);
const CSTimeStamp* timeStamp(const Value& value);
const CSInterval* interval(const Value& value);
// The four kinds of points, with finite coordinates.
std::optional<Point> point(const Value& value);
// A list of points, all with finite coordinates.
const std::vector<CS3DDPoint>* points(const Value& value);

// The type tags that the readers of the same names accept.
std::vector<std::string> numberTypes();
std::vector<std::string> pointTypes();
// Points and lists of points.
std::vector<std::string> placeTypes();
// Those of all values.
std::vector<std::string> anyTypes();

// Straight distance: in space between two positions that have a height, else in the ground plane.
double distanceBetween(const Point& a, const Point& b);

// Seconds between two time stamps, as exact as their milliseconds: 0.04 is the 0.04 that a model
// says.
double secondsBetween(const CSTimeStamp& from, const CSTimeStamp& to);

// The result of a relation, with confidence 1.
Value relation(bool holds);
// The result of a measure; an empty pointer for nothing and for what is no finite number.
Value measure(std::optional<double> value);

} // namespace scenariomatch
