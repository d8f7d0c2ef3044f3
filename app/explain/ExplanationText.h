#pragma once

#include "app/explain/Evidence.h"
#include "app/explain/WhyNot.h"

#include <iosfwd>

namespace scenariomatch
{

// Writes for people: a short paragraph, then the tables.
void printExplanation(const WhyNot& why, std::ostream& out);
void printExplanation(const Evidence& evidence, std::ostream& out);

} // namespace scenariomatch
