#pragma once

#include "app/explain/Evidence.h"
#include "app/explain/WhyNot.h"

#include <iosfwd>
#include <string>

namespace scenariomatch
{

// Writes one JSON object, see docs/explaining.md.
void writeExplanation(const WhyNot& why, std::ostream& out);
void writeExplanation(const Evidence& evidence, std::ostream& out);

// The same object in one line, without the line's end.
std::string explanationLine(const Evidence& evidence);

// What became of a model's candidates, for the lists of a report (docs/report.md), in one line.
std::string outcomeLine(const WhyNot& why);

} // namespace scenariomatch
