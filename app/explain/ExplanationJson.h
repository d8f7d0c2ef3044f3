#pragma once

#include "app/explain/Evidence.h"
#include "app/explain/WhyNot.h"

#include <iosfwd>

namespace scenariomatch
{

// Writes one JSON object, see docs/explaining.md.
void writeExplanation(const WhyNot& why, std::ostream& out);
void writeExplanation(const Evidence& evidence, std::ostream& out);

} // namespace scenariomatch
