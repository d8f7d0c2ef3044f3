#pragma once

#include "types/CSBasicType.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

// The value of an attribute in a test scene. Each side of a comparison is given objects of its own.
struct SceneValue
{
    enum class Kind : std::uint8_t {
        Number,
        WholeNumber,
        Point,
        HighPoint,
        WholePoint,
        WholeHighPoint,
        // Two corners: the origin and (x, y).
        Polygon,
        NoCorners,
        // "yes" where x is not 0, else "no".
        Text,
        // True where x is not 0, with confidence y.
        Truth,
        // A number and a point under the tag of the other.
        MistaggedNumber,
        MistaggedPoint,
    };

    std::shared_ptr<CSBasicType> make() const;
    std::string text() const;

    Kind kind = Kind::Number;
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

struct SceneObject
{
    int host = 0;
    std::string type;
    std::vector<std::pair<std::string, SceneValue>> attributes;
    // Whether the host says that it has seen the object.
    bool seen = true;

    std::string text() const;
};

struct SceneFrame
{
    int number = 0;
    double seconds = 0.0;
    double milliseconds = 0.0;
    std::vector<SceneObject> actors;
    // Constant objects that are entered, or entered again, before the frame.
    std::vector<SceneObject> constants;

    std::string text() const;
};

} // namespace scenariomatch
