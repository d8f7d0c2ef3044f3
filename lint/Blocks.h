#pragma once

#include "lint/Diagnostic.h"
#include "lint/Source.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace scenariomatch::lint
{

// The body of a block: lines from the first to before the end. Counted from 1.
struct Block
{
    std::size_t firstLine = 0;
    std::size_t endLine = 0;
};

// Finds the next block from a line on, as the readers of model, engine, settings and constants
// files do:
//
//     block = ... KEYWORD ... "{" NAME "," { line } "}" ;
//
// Reports a header without its name, a remark that contains the keyword, and a missing "}". Behind
// a remark that opens a block the block that was meant is found.
std::optional<Block>
findBlock(const Source& source, std::size_t line, std::string_view keyword, Diagnostics& out);

// The line without blanks and tabs at its ends, with its place.
Word trimmedLine(const Source& source, std::size_t line);

} // namespace scenariomatch::lint
