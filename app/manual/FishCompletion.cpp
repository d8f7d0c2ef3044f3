#include "app/manual/Completion.h"

#include <fmt/format.h>

namespace scenariomatch
{

namespace
{

// @N is the program's name, @C the commands.
constexpr const char* kStart =
    R"(# Completes the command line of @N in fish; made from the program's own options.

# Whether the words so far name this command.
function __@N_at
    set -l command
    for word in (commandline -opc)[2..]
        set -l longer $command $word
        if contains -- "$longer"@C
            set command $longer
        end
    end
    test "$command" = "$argv"
end

complete -c @N -f
)";

std::string quoted(const std::string& text)
{
    const std::string safe = CLI::detail::find_and_replace(text, "\\", "\\\\");
    return "'" + CLI::detail::find_and_replace(safe, "'", "\\'") + "'";
}

// The command without the program's name.
std::string innerPath(const CommandEntry& command)
{
    return fmt::format("{}", fmt::join(command.words.begin() + 1, command.words.end(), " "));
}

// "complete" for where a command has been typed.
std::string completeAt(const CommandEntry& command)
{
    const std::string& program = command.words.front();
    return fmt::format(
        "complete -c {0} -n {1}",
        program,
        quoted(fmt::format("__{}_at {}", program, innerPath(command))));
}

// How a value is completed.
std::string valueWords(const OptionEntry& option)
{
    switch (option.kind) {
    case ValueKind::None:
        return "";
    case ValueKind::Text:
        return " -x";
    case ValueKind::Choice:
        return " -x -a " + quoted(fmt::format("{}", fmt::join(option.choices, " ")));
    case ValueKind::File:
        return " -r -F";
    case ValueKind::Folder:
        break;
    }
    return " -x -a '(__fish_complete_directories)'";
}

std::string nameWords(const OptionEntry& option)
{
    std::string text;
    for (const std::string& name : option.names) {
        text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    return text;
}

std::string completionsOf(const CommandEntry& command)
{
    const std::string start = completeAt(command);
    std::string text;
    for (const CommandEntry& inner : command.commands) {
        text += fmt::format("{} -a {} -d {}\n", start, inner.words.back(), quoted(inner.summary));
    }
    for (const OptionEntry& argument : command.arguments) {
        text += argument.kind == ValueKind::File ? start + " -F\n" : "";
    }
    for (const OptionEntry& option : command.options) {
        text += start + nameWords(option) + valueWords(option) + " -d " +
                quoted(option.description) + "\n";
    }
    return text;
}

} // namespace

std::string fishCompletion(const CommandEntry& program)
{
    std::string paths;
    std::string completions;
    for (const CommandEntry* const command : allCommands(program)) {
        paths += command == &program ? "" : " " + quoted(innerPath(*command));
        completions += completionsOf(*command);
    }
    std::string text = CLI::detail::find_and_replace(kStart, "@N", program.words.front());
    text = CLI::detail::find_and_replace(text, "@C", paths);
    return text + completions;
}

} // namespace scenariomatch
