#pragma once

#include "app/Score.h"

#include <iosfwd>

namespace scenariomatch
{

// Writes a row a line for people; with the list every hit, miss and false alarm after it.
void printScore(const Score& score, RecordUnit unit, bool isList, std::ostream& out);

// Writes the same as one JSON object; figures that are not defined are null.
void printScoreJson(const Score& score, RecordUnit unit, bool isList, std::ostream& out);

} // namespace scenariomatch
