#include "app/manual/CommandTable.h"

#include <fmt/format.h>
#include <sstream>

namespace scenariomatch
{

namespace
{

ValueKind kindOf(const std::string& value)
{
    if (value.empty()) {
        return ValueKind::None;
    }
    if (value.find('|') != std::string::npos) {
        return ValueKind::Choice;
    }
    if (value == "FILE") {
        return ValueKind::File;
    }
    return value == "FOLDER" || value == "PREFIX" ? ValueKind::Folder : ValueKind::Text;
}

OptionEntry describeOption(const CLI::Option& option)
{
    OptionEntry entry;
    const std::string type = option.get_type_size() == 0 ? "" : option.get_type_name();
    entry.kind = kindOf(type);
    if (option.nonpositional()) {
        entry.names = CLI::detail::split(option.get_name(false, true), ',');
        entry.value = type;
    } else {
        entry.value = option.get_name(true);
    }
    if (entry.kind == ValueKind::Choice) {
        entry.choices = CLI::detail::split(type, '|');
    }
    entry.defaultValue = option.get_default_str();
    entry.description = option.get_description();
    entry.isRequired = option.get_required();
    entry.isRepeated = option.get_expected_max() > 1;
    return entry;
}

// The indented lines below "Examples:".
std::vector<std::string> examplesOf(const std::string& footer)
{
    std::vector<std::string> examples;
    std::istringstream lines(footer);
    bool isBelow = false;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("  ")) {
            isBelow = line == "Examples:";
        } else if (isBelow) {
            examples.push_back(line.substr(2));
        }
    }
    return examples;
}

CommandEntry describeCommand(const CLI::App& command, std::vector<std::string> words)
{
    words.push_back(command.get_name());
    CommandEntry entry;
    entry.words = words;
    entry.summary = command.get_description();
    for (const CLI::Option* const option : command.get_options()) {
        OptionEntry described = describeOption(*option);
        (described.names.empty() ? entry.arguments : entry.options).push_back(std::move(described));
    }
    for (const CLI::App* const inner : command.get_subcommands({})) {
        entry.commands.push_back(describeCommand(*inner, words));
    }
    entry.examples = examplesOf(command.get_footer());
    return entry;
}

} // namespace

std::string CommandEntry::path(const std::string& separator) const
{
    return fmt::format("{}", fmt::join(words, separator));
}

CommandEntry describeProgram(const CLI::App& program)
{
    return describeCommand(program, {});
}

std::vector<const CommandEntry*> allCommands(const CommandEntry& program)
{
    std::vector<const CommandEntry*> all{&program};
    for (const CommandEntry& command : program.commands) {
        const std::vector<const CommandEntry*> inner = allCommands(command);
        all.insert(all.end(), inner.begin(), inner.end());
    }
    return all;
}

} // namespace scenariomatch
