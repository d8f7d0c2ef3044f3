#pragma once

#include "lint/Diagnostic.h"
#include "lint/Model.h"
#include "lint/Source.h"

#include <vector>

namespace scenariomatch::lint
{

// An entry of an engine or settings file, as its reader takes it: KEYWORD(argument).
struct SettingsEntry
{
    Word keyword;
    Word argument;
};

// The entries of an engine file ("List"); reports what its reader cuts or passes over.
std::vector<SettingsEntry> readEngineFile(const Source& source, Diagnostics& out);

// The entries of a settings file ("Engine"), which may run over several lines.
std::vector<SettingsEntry> readSettingsFile(const Source& source, Diagnostics& out);

// The constants of a constants file ("EnvVars").
std::vector<Constant> readConstantsFile(const Source& source, Diagnostics& out);

// The items of a comma-separated list, without the blanks around them.
std::vector<Word> itemsOf(const Word& list);

} // namespace scenariomatch::lint
