#pragma once

#include "app/manual/CommandTable.h"

#include <string>

namespace scenariomatch
{

// Scripts with which a shell completes a program's command line: commands, options, the values that
// an option chooses from, and the names of files and folders where one is asked for.

// For share/bash-completion/completions/NAME.
std::string bashCompletion(const CommandEntry& program);

// For share/zsh/vendor-completions/_NAME.
std::string zshCompletion(const CommandEntry& program);

// For share/fish/vendor_completions.d/NAME.fish.
std::string fishCompletion(const CommandEntry& program);

} // namespace scenariomatch
