#include "app/manual/CommandTable.h"

#include "app/HelpFooter.h"

#include <fmt/format.h>

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
        entry.kind = type.empty() ? ValueKind::Text : entry.kind;
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

// What a line "NAME  meaning" says.
VariableEntry describeVariable(const std::string& line)
{
    const std::size_t end = line.find("  ");
    return {line.substr(0, end), line.substr(end + 2)};
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
    const std::string footer = command.get_footer();
    entry.description = fmt::format("{}", fmt::join(linesBelow(footer, "Description"), " "));
    for (const std::string& line : linesBelow(footer, "Environment")) {
        entry.environment.push_back(describeVariable(line));
    }
    entry.examples = linesBelow(footer, "Examples");
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
