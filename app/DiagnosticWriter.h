#pragma once

#include "lint/Diagnostic.h"

#include <cstdint>
#include <iosfwd>
#include <span>

namespace scenariomatch
{

enum class DiagnosticFormat : std::uint8_t { Text, Json, Sarif };

// Writes what was found, in the order given, in one of the formats. JSON and SARIF (2.1.0) are one
// document each, also when nothing was found.
void writeDiagnostics(
    std::ostream& out, std::span<const lint::Diagnostic> found, DiagnosticFormat format);

// The message with the source line, in the manner of compilers:
//
//     lobby.models:14:14: error: 'Bank_Zone' is no zone of this scene [unknown-object]
//        14 |   (z->Name = Bank_Zone)
//           |              ^~~~~~~~~ did you mean 'BankZone' (context.xml:31)?
void writeDiagnosticText(std::ostream& out, const lint::Diagnostic& diagnostic);

} // namespace scenariomatch
