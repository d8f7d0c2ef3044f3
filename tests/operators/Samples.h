#pragma once

#include "operators/Boxes.h"
#include "operators/Values.h"

#include <initializer_list>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

// Values for the tests of operators, in a few letters each.
namespace scenariomatch
{

using Values = std::vector<Value>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

inline Value whole(int value)
{
    return std::make_shared<CSInt>(value);
}

inline Value decimal(double value)
{
    return std::make_shared<CSDouble>(value);
}

inline Value word(const std::string& value)
{
    return std::make_shared<CSString>(value);
}

inline Value fact(bool value, double confidence = 1.0)
{
    return std::make_shared<CSBool>(value, confidence);
}

inline Value at(double x, double y)
{
    return std::make_shared<CS2DDPoint>(x, y);
}

inline Value at(double x, double y, double z)
{
    return std::make_shared<CS3DDPoint>(x, y, z);
}

inline Value wholeAt(int x, int y)
{
    auto point = std::make_shared<CS2DIPoint>();
    point->m_x = x;
    point->m_y = y;
    return point;
}

inline Value wholeAt(int x, int y, int z)
{
    auto point = std::make_shared<CS3DIPoint>();
    point->m_x = x;
    point->m_y = y;
    point->m_z = z;
    return point;
}

inline Value ring(std::initializer_list<CS3DDPoint> corners)
{
    auto points = std::make_shared<CS3DDPoints>();
    for (const CS3DDPoint& corner : corners) {
        points->addPoint(corner);
    }
    return points;
}

// From (0, 0) to (10, 10).
inline Value square()
{
    return ring({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
}

// A time of day in milliseconds, split as a frame's clock is.
inline std::shared_ptr<CSTimeStamp> stamp(int milliseconds)
{
    constexpr int kMilliseconds = 1000;
    constexpr double kMidnight = 1.7e9;
    const int seconds = milliseconds / kMilliseconds;
    return std::make_shared<CSTimeStamp>(0, kMidnight + seconds, milliseconds % kMilliseconds);
}

inline Value span(int startMilliseconds, int endMilliseconds)
{
    return std::make_shared<CSInterval>(stamp(startMilliseconds), stamp(endMilliseconds));
}

// A value whose tag says one thing and whose class another.
inline Value disguised(const std::string& tag)
{
    if (tag == "STRING") {
        return std::make_shared<CSInt>(CSString("7"));
    }
    return std::make_shared<CSString>(CSBasicType(tag));
}

// What an operator makes of value objects; a motion also takes the frames' times.
template <class... More>
Value answer(
    CSPlainValue (*compute)(Arguments, More...),
    const Values& values,
    const std::type_identity_t<More>&... more)
{
    return boxed(compute(views(values), more...), values);
}

inline std::optional<double> number(const Value& value)
{
    return scenariomatch::number(CSPlainValue(value.get()));
}

inline bool isTrue(const Value& value)
{
    const CSPlainValue found(value.get());
    return isTruth(found) && found.m_truth;
}

// A truth value that is false; anything else is no answer to a relation.
inline bool isFalse(const Value& value)
{
    const CSPlainValue found(value.get());
    return isTruth(found) && !found.m_truth;
}

} // namespace scenariomatch
