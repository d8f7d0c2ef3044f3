#pragma once

#include "lint/Diagnostic.h"

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

namespace scenariomatch
{

enum class DiagnosticFormat : std::uint8_t { Text, Json, Sarif };

// Writes what was found, in the order given, in one of the formats. JSON and SARIF (2.1.0) are one
// document each, also when nothing was found.
void writeDiagnostics(
    std::ostream& out, std::span<const lint::Diagnostic> found, DiagnosticFormat format);

// A message about a part of a file: "FILE:LINE:COLUMN: MESSAGE", the source line, and a mark below
// the part, with a hint behind it that may be empty. A very long line is left out.
void writePlacedMessage(
    std::ostream& out,
    const lint::Range& range,
    std::string_view message,
    const std::string& hint = "");

// The message with the source line, in the manner of compilers:
//
//     lobby.models:14:14: error: 'Bank_Zone' is no zone of this scene [unknown-object]
//        14 |   (z->Name = Bank_Zone)
//           |              ^~~~~~~~~ did you mean 'BankZone' (context.xml:31)?
void writeDiagnosticText(std::ostream& out, const lint::Diagnostic& diagnostic);

} // namespace scenariomatch
