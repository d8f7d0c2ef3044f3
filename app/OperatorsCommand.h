#pragma once

#include "types/CSOperatorInterfaceAbstract.h"

#include <CLI/CLI.hpp>
#include <iosfwd>
#include <string>
#include <vector>

namespace scenariomatch
{

enum class OperatorsFormat { Text, Json };

// What the command "operators" is told.
struct OperatorsOptions
{
    // Empty for the operators that came with the program.
    std::string path;
    OperatorsFormat format = OperatorsFormat::Text;
};

// An operator module that could be used.
struct OperatorModule
{
    // Without its folder.
    std::string file;
    std::string name;
    bool isTemporal = false;
    CSOperatorDescription description;
};

// A file of the folder that could not be used.
struct SkippedModule
{
    std::string file;
    std::string reason;
};

struct OperatorModules
{
    // By name; those of one name by file.
    std::vector<OperatorModule> modules;
    // By file.
    std::vector<SkippedModule> skipped;
};

// Loads every operator module of a folder and asks it for its description. Modules stay loaded.
OperatorModules loadOperatorModules(const std::string& path);

// What recognition will find in a folder, as far as can be told without running code of it.
struct OperatorFolder
{
    // Whether a file is a plug-in that may be loaded; without a tag it may be one for another
    // purpose.
    bool hasPlugin = false;
    // By file.
    std::vector<SkippedModule> skipped;
};

OperatorFolder inspectOperatorFolder(const std::string& path);

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addOperatorsCommand(CLI::App& program, OperatorsOptions& options);

// Lists the operators of a folder. The list goes to out, what was skipped to talk, in JSON into the
// list. Returns the exit status.
int runOperators(const OperatorsOptions& options, std::ostream& out, std::ostream& talk);

} // namespace scenariomatch
