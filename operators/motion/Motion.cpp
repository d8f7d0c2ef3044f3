#include "operators/motion/Motion.h"

#include "operators/motion/EarlierPositions.h"
#include "operators/motion/LineCrossing.h"

#include <cmath>
#include <numbers>

namespace scenariomatch
{

namespace
{

// The move that a measure is about: from an earlier position to the current one.
struct Move
{
    Point from{};
    Point to{};
    double seconds = 0.0;
};

// A finite point that is stored and so has a history; else null.
const Point* storedPoint(const CSPlainValue& value)
{
    return value.m_object != nullptr ? point(value) : nullptr;
}

std::optional<Move> fromOldest(const CSPlainValue& value, double seconds, const FrameTimes& times)
{
    const Point* current = storedPoint(value);
    if (current == nullptr) {
        return std::nullopt;
    }
    std::optional<Move> move;
    EarlierPositions earlier(*value.m_object, times);
    while (earlier.next() && earlier.age() <= seconds) {
        move = Move{earlier.position(), *current, earlier.age()};
    }
    return move;
}

std::optional<Move> fromLatest(const CSPlainValue& value, const FrameTimes& times)
{
    const Point* current = storedPoint(value);
    if (current == nullptr) {
        return std::nullopt;
    }
    EarlierPositions earlier(*value.m_object, times);
    if (!earlier.next()) {
        return std::nullopt;
    }
    return Move{earlier.position(), *current, earlier.age()};
}

// The move of (p) or (p, seconds).
std::optional<Move> lastMove(Arguments arguments, const FrameTimes& times)
{
    if (arguments.size() == 1) {
        return fromLatest(arguments[0], times);
    }
    const auto seconds = arguments.size() == 2 ? number(arguments[1]) : std::nullopt;
    return seconds ? fromOldest(arguments[0], *seconds, times) : std::nullopt;
}

std::optional<double> direction(const Move& move)
{
    const double dx = move.to.x - move.from.x;
    const double dy = move.to.y - move.from.y;
    if (dx == 0.0 && dy == 0.0) {
        return std::nullopt;
    }
    constexpr double kFullTurn = 360.0;
    const double degrees = std::atan2(dy, dx) * (kFullTurn / 2) / std::numbers::pi;
    const double positive = degrees < 0.0 ? degrees + kFullTurn : degrees;
    return positive < kFullTurn ? positive : 0.0;
}

bool staysWithin(const CSPlainValue& value, double seconds, double radius, const FrameTimes& times)
{
    const Point* current = storedPoint(value);
    if (current == nullptr) {
        return false;
    }
    EarlierPositions earlier(*value.m_object, times);
    while (earlier.next()) {
        if (!(distanceBetween(earlier.position(), *current) <= radius)) {
            return false;
        }
        if (earlier.age() >= seconds) {
            return true;
        }
    }
    return false;
}

// Passages from right to left less those from left to right; 0 without a step or a line.
int passages(Arguments arguments)
{
    if (arguments.size() != 2 && arguments.size() != 3) {
        return 0;
    }
    const Point* to = storedPoint(arguments[0]);
    const auto from = to != nullptr ? previousPosition(*arguments[0].m_object) : std::nullopt;
    if (!from) {
        return 0;
    }
    if (arguments.size() == 3) {
        const Point* begin = point(arguments[1]);
        const Point* end = point(arguments[2]);
        return begin != nullptr && end != nullptr ? passage(*from, *to, *begin, *end) : 0;
    }
    const CS3DDPoints* line = arguments[1].points();
    if (line == nullptr) {
        return 0;
    }
    // Most steps pass nothing; whether the line is one at all is looked at only where one does.
    const int found = passage(*from, *to, line->m_points);
    return found != 0 && areFinite(line->m_points) ? found : 0;
}

} // namespace

CSPlainValue speed(Arguments arguments, const FrameTimes& times)
{
    const auto move = lastMove(arguments, times);
    return move ? measure(distanceBetween(move->from, move->to) / move->seconds) : CSPlainValue();
}

CSPlainValue displacement(Arguments arguments, const FrameTimes& times)
{
    const auto move = arguments.size() == 2 ? lastMove(arguments, times) : std::nullopt;
    return move ? measure(distanceBetween(move->from, move->to)) : CSPlainValue();
}

CSPlainValue heading(Arguments arguments, const FrameTimes& times)
{
    const auto move = lastMove(arguments, times);
    return move ? measure(direction(*move)) : CSPlainValue();
}

CSPlainValue isStationary(Arguments arguments, const FrameTimes& times)
{
    if (arguments.size() != 3) {
        return relation(false);
    }
    const auto seconds = number(arguments[1]);
    const auto radius = number(arguments[2]);
    return relation(
        seconds && radius && *seconds >= 0.0 &&
        staysWithin(arguments[0], *seconds, *radius, times));
}

CSPlainValue crossed(Arguments arguments)
{
    return relation(passages(arguments) != 0);
}

CSPlainValue crossedLeft(Arguments arguments)
{
    return relation(passages(arguments) > 0);
}

CSPlainValue crossedRight(Arguments arguments)
{
    return relation(passages(arguments) < 0);
}

} // namespace scenariomatch
