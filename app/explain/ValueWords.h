#pragma once

#include "types/CSPlainValue.h"

#include <string>

namespace scenariomatch
{

// A value for people: "2.31", "(1.5, 2)", "West", "no value".
std::string valueText(const CSPlainValue& value);

} // namespace scenariomatch
