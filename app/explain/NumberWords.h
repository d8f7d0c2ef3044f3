#pragma once

#include <string>

namespace scenariomatch
{

// A number for people: six significant digits, and no more than it has.
std::string numberText(double number);

} // namespace scenariomatch
