#pragma once

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iosfwd>
#include <string>

namespace scenariomatch
{

// What the command "new operator" is told.
struct NewOperatorOptions
{
    // The name of the operator and of its file.
    std::string name;
    // The folder to write into; empty for a new one of that name.
    std::string output;
};

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addNewCommand(CLI::App& program, NewOperatorOptions& options);

// Writes a project with an operator and its test, made from those in the template folder under
// another name. Writes nothing where one of its files is there already. The names of the files
// written go to out, talk to talk. Returns the exit status.
int runNewOperator(
    const NewOperatorOptions& options,
    const std::filesystem::path& templateFolder,
    std::ostream& out,
    std::ostream& talk);

} // namespace scenariomatch
