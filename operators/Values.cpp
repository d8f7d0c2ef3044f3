#include "operators/Values.h"

#include <algorithm>
#include <cmath>

namespace scenariomatch
{

namespace
{

bool isFinite(const Point& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

std::optional<Point> anyPoint(const Value& value)
{
    if (const auto* space = valueAs<CS3DDPoint>(value, "3DDPOINT")) {
        return Point{space->m_x, space->m_y, space->m_z, true};
    }
    if (const auto* plane = valueAs<CS2DDPoint>(value, "2DDPOINT")) {
        return Point{plane->m_x, plane->m_y, 0.0, false};
    }
    if (const auto* space = valueAs<CS3DIPoint>(value, "3DIPOINT")) {
        return Point{
            static_cast<double>(space->m_x),
            static_cast<double>(space->m_y),
            static_cast<double>(space->m_z),
            true};
    }
    if (const auto* plane = valueAs<CS2DIPoint>(value, "2DIPOINT")) {
        return Point{static_cast<double>(plane->m_x), static_cast<double>(plane->m_y), 0.0, false};
    }
    return std::nullopt;
}

} // namespace

std::optional<double> number(const Value& value)
{
    if (const auto* decimal = valueAs<CSDouble>(value, "DOUBLE")) {
        return std::isnan(decimal->m_value) ? std::nullopt : std::optional(decimal->m_value);
    }
    if (const auto* whole = valueAs<CSInt>(value, "INT")) {
        return static_cast<double>(whole->m_value);
    }
    return std::nullopt;
}

const CSBool* truth(const Value& value)
{
    const auto* found = valueAs<CSBool>(value, "BOOL");
    return found != nullptr && !std::isnan(found->m_confidence) ? found : nullptr;
}

const CSString* text(const Value& value)
{
    return valueAs<CSString>(value, "STRING");
}

const CSTimeStamp* timeStamp(const Value& value)
{
    return valueAs<CSTimeStamp>(value, "TIMESTAMP");
}

const CSInterval* interval(const Value& value)
{
    return valueAs<CSInterval>(value, "INTERVAL");
}

std::optional<Point> point(const Value& value)
{
    const std::optional<Point> found = anyPoint(value);
    return found && isFinite(*found) ? found : std::nullopt;
}

const std::vector<CS3DDPoint>* points(const Value& value)
{
    const auto* list = valueAs<CS3DDPoints>(value, "3DDPOINTS");
    if (list == nullptr) {
        return nullptr;
    }
    const bool allFinite =
        std::all_of(list->m_points.begin(), list->m_points.end(), [](const CS3DDPoint& vertex) {
            return isFinite({vertex.m_x, vertex.m_y, vertex.m_z, true});
        });
    return allFinite ? &list->m_points : nullptr;
}

std::vector<std::string> numberTypes()
{
    return {"INT", "DOUBLE"};
}

std::vector<std::string> pointTypes()
{
    return {"3DDPOINT", "3DIPOINT", "2DDPOINT", "2DIPOINT"};
}

std::vector<std::string> placeTypes()
{
    std::vector<std::string> types = pointTypes();
    types.emplace_back("3DDPOINTS");
    return types;
}

std::vector<std::string> anyTypes()
{
    return {
        "BOOL",
        "STRING",
        "INT",
        "DOUBLE",
        "3DDPOINT",
        "3DIPOINT",
        "2DDPOINT",
        "2DIPOINT",
        "TIMESTAMP",
        "INTERVAL",
        "3DDPOINTS",
        "ACCESSORAGENT"};
}

double distanceBetween(const Point& a, const Point& b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double dz = a.hasHeight && b.hasHeight ? b.z - a.z : 0.0;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

double secondsBetween(const CSTimeStamp& from, const CSTimeStamp& to)
{
    constexpr double kMillisecondsPerSecond = 1000.0;
    const double milliseconds = (to.m_seconds - from.m_seconds) * kMillisecondsPerSecond +
                                (to.m_milliseconds - from.m_milliseconds);
    return milliseconds / kMillisecondsPerSecond;
}

Value relation(bool holds)
{
    return std::make_shared<CSBool>(holds);
}

Value measure(std::optional<double> value)
{
    return value && std::isfinite(*value) ? std::make_shared<CSDouble>(*value) : nullptr;
}

} // namespace scenariomatch
