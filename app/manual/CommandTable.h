#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace scenariomatch
{

// What an option takes; told by the word that stands for its value in help.
enum class ValueKind {
    // A flag takes no value.
    None,
    // Anything: NAME, TIME, ...
    Text,
    // One of a few: on|off.
    Choice,
    // FILE.
    File,
    // FOLDER, and PREFIX, which ends in one.
    Folder
};

// An option or an argument of a command.
struct OptionEntry
{
    // "-h" and "--help"; empty for an argument, which has its place instead of a name.
    std::vector<std::string> names;
    // What stands for the value in help; an argument's name.
    std::string value;
    ValueKind kind = ValueKind::None;
    // Empty but for ValueKind::Choice.
    std::vector<std::string> choices;
    // Empty where help shows none.
    std::string defaultValue;
    std::string description;
    bool isRequired = false;
    bool isRepeated = false;
};

// An environment variable that a command heeds.
struct VariableEntry
{
    std::string name;
    std::string meaning;
};

// A command of a program, or the program itself, with everything that its help says.
struct CommandEntry
{
    // What is typed: "scenariomatch", "new", "operator".
    std::vector<std::string> words;
    std::string summary;
    // Sentences; empty where help has none.
    std::string description;
    std::vector<OptionEntry> arguments;
    std::vector<OptionEntry> options;
    std::vector<CommandEntry> commands;
    std::vector<VariableEntry> environment;
    // Command lines.
    std::vector<std::string> examples;

    // The words with something between them.
    std::string path(const std::string& separator) const;
};

// Describes a program and, inside it, its commands, in the order of its help.
CommandEntry describeProgram(const CLI::App& program);

// The program and all its commands; a command comes before those inside it. They point into the
// program.
std::vector<const CommandEntry*> allCommands(const CommandEntry& program);

} // namespace scenariomatch
