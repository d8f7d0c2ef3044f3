#include "tests/reference/Scene.h"

#include "types/CSAllTypes.h"

#include <iomanip>
#include <sstream>

namespace scenariomatch
{

namespace
{

using Value = std::shared_ptr<CSBasicType>;

template <class Point>
Value wholePoint(const SceneValue& value)
{
    auto point = std::make_shared<Point>();
    point->m_x = static_cast<std::int32_t>(value.x);
    point->m_y = static_cast<std::int32_t>(value.y);
    return point;
}

Value polygon(const SceneValue& value)
{
    auto points = std::make_shared<CS3DDPoints>();
    if (value.kind == SceneValue::Kind::Polygon) {
        points->addPoint({0.0, 0.0, 0.0});
        points->addPoint({value.x, value.y, 0.0});
    }
    return points;
}

Value mistagged(Value value, const char* tag)
{
    value->m_type = tag;
    return value;
}

const char* nameOf(SceneValue::Kind kind)
{
    switch (kind) {
    case SceneValue::Kind::Number:
        return "number";
    case SceneValue::Kind::WholeNumber:
        return "whole number";
    case SceneValue::Kind::Point:
        return "point";
    case SceneValue::Kind::HighPoint:
        return "high point";
    case SceneValue::Kind::WholePoint:
        return "whole point";
    case SceneValue::Kind::WholeHighPoint:
        return "whole high point";
    case SceneValue::Kind::Polygon:
        return "polygon";
    case SceneValue::Kind::NoCorners:
        return "polygon without corners";
    case SceneValue::Kind::Text:
        return "text";
    case SceneValue::Kind::Truth:
        return "truth";
    case SceneValue::Kind::MistaggedNumber:
        return "number tagged as point";
    case SceneValue::Kind::MistaggedPoint:
        return "point tagged as number";
    }
    return "";
}

} // namespace

std::shared_ptr<CSBasicType> SceneValue::make() const
{
    switch (kind) {
    case Kind::Number:
        return std::make_shared<CSDouble>(x);
    case Kind::WholeNumber:
        return std::make_shared<CSInt>(static_cast<int>(x));
    case Kind::Point:
        return std::make_shared<CS2DDPoint>(x, y);
    case Kind::HighPoint:
        return std::make_shared<CS3DDPoint>(x, y, z);
    case Kind::WholePoint:
        return wholePoint<CS2DIPoint>(*this);
    case Kind::WholeHighPoint:
        return wholePoint<CS3DIPoint>(*this);
    case Kind::Polygon:
    case Kind::NoCorners:
        return polygon(*this);
    case Kind::Text:
        return std::make_shared<CSString>(x != 0.0 ? "yes" : "no");
    case Kind::Truth:
        return std::make_shared<CSBool>(x != 0.0, y);
    case Kind::MistaggedNumber:
        return mistagged(std::make_shared<CSDouble>(x), "2DDPOINT");
    case Kind::MistaggedPoint:
        return mistagged(std::make_shared<CS2DDPoint>(x, y), "DOUBLE");
    }
    return nullptr;
}

std::string SceneValue::text() const
{
    std::ostringstream out;
    out << std::setprecision(17) << nameOf(kind) << ' ' << x << ' ' << y << ' ' << z;
    return out.str();
}

std::string SceneObject::text() const
{
    std::string text = type + " " + std::to_string(host) + (seen ? "" : " unseen");
    for (const auto& [name, value] : attributes) {
        text += ", " + name + " " + value.text();
    }
    return text;
}

std::string SceneFrame::text() const
{
    std::ostringstream out;
    out << std::setprecision(17) << "frame " << number << " at " << seconds << " s " << milliseconds
        << " ms\n";
    for (const SceneObject& object : constants) {
        out << "  constant " << object.text() << '\n';
    }
    for (const SceneObject& object : actors) {
        out << "  " << object.text() << '\n';
    }
    return out.str();
}

} // namespace scenariomatch
