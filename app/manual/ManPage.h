#pragma once

#include "app/manual/CommandTable.h"

#include <string>

namespace scenariomatch
{

// What stands at the foot of every page.
struct Edition
{
    std::string version;
    // 2026-11-21.
    std::string date;
};

// Text as a line of its own that roff prints as it is.
std::string roffLine(const std::string& text);

// Text over several lines, for roff to fill.
std::string roffText(const std::string& text);

// The page of section 1 of a program or of one of its commands, in the macros "man".
std::string manPage(const CommandEntry& command, const Edition& edition);

} // namespace scenariomatch
