#pragma once

#include <string>
#include <yaml-cpp/mark.h>

namespace scenariomatch
{

// What is wrong with a scene file and where. Thrown while a scene is read and caught by
// readScene().
struct SceneFault
{
    YAML::Mark mark;
    std::string reason;
};

// Three lines about a fault in a file of this text: "FILE:LINE:COLUMN: REASON", the source line (of
// a long one the part around the fault), a caret. Columns count bytes from 1.
std::string
describeFault(const std::string& text, const std::string& fileName, const SceneFault& fault);

} // namespace scenariomatch
