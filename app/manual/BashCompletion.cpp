#include "app/manual/Completion.h"

#include <fmt/format.h>

namespace scenariomatch
{

namespace
{

// @N is the program's name, @C its commands, @V what takes a value, @W what else may stand.
constexpr const char* kScript =
    R"(# Completes the command line of @N in bash; made from the program's own options.

_@N()
{
    local command=@N current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} word words=
    for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
        case "$command $word" in
        @C) command+=" $word" ;;
        esac
    done
    # Readline takes the sign in --option=value for a word.
    if [[ $current == "=" ]]; then
        current=
    elif [[ $previous == "=" ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case "$command:$previous" in
@V    *)
        case "$command:$current" in
@W        esac
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _@N @N
)";

// What completes a value of this kind: readline itself, which knows how to quote, or the words.
std::string completing(const OptionEntry& option)
{
    switch (option.kind) {
    case ValueKind::File:
        return "compopt -o default";
    case ValueKind::Folder:
        return "compopt -o dirnames";
    case ValueKind::Choice:
        return fmt::format("words='{}'", fmt::join(option.choices, " "));
    case ValueKind::None:
    case ValueKind::Text:
        break;
    }
    return ":";
}

std::string commandPattern(const CommandEntry& program)
{
    std::vector<std::string> paths;
    for (const CommandEntry* const command : allCommands(program)) {
        if (command != &program) {
            paths.push_back("'" + command->path(" ") + "'");
        }
    }
    return fmt::format("{}", fmt::join(paths, " | "));
}

// One for every name of an option that takes a value.
std::string armsOf(const CommandEntry& command, const OptionEntry& option)
{
    std::string text;
    for (const std::string& name : option.names) {
        text += fmt::format("    '{}:{}') {} ;;\n", command.path(" "), name, completing(option));
    }
    return text;
}

std::string valueArms(const CommandEntry& program)
{
    std::string text;
    for (const CommandEntry* const command : allCommands(program)) {
        for (const OptionEntry& option : command->options) {
            text += option.kind == ValueKind::None ? "" : armsOf(*command, option);
        }
    }
    return text;
}

std::string optionWords(const CommandEntry& command)
{
    std::vector<std::string> words;
    for (const OptionEntry& option : command.options) {
        words.insert(words.end(), option.names.begin(), option.names.end());
    }
    return fmt::format("words='{}'", fmt::join(words, " "));
}

// What may stand where no option waits for its value: commands, an argument, or options alone.
std::string plainWords(const CommandEntry& command)
{
    if (!command.arguments.empty()) {
        return completing(command.arguments.front());
    }
    if (command.commands.empty()) {
        return optionWords(command);
    }
    std::vector<std::string> words;
    for (const CommandEntry& inner : command.commands) {
        words.push_back(inner.words.back());
    }
    return fmt::format("words='{}'", fmt::join(words, " "));
}

std::string wordArms(const CommandEntry& program)
{
    std::string text;
    for (const CommandEntry* const command : allCommands(program)) {
        const std::string path = command->path(" ");
        const std::string options = optionWords(*command);
        const std::string others = plainWords(*command);
        text += options == others ? "" : fmt::format("        '{}:-'*) {} ;;\n", path, options);
        text += fmt::format("        '{}:'*) {} ;;\n", path, others);
    }
    return text;
}

} // namespace

std::string bashCompletion(const CommandEntry& program)
{
    std::string text = kScript;
    text = CLI::detail::find_and_replace(text, "@N", program.words.front());
    text = CLI::detail::find_and_replace(text, "@C", commandPattern(program));
    text = CLI::detail::find_and_replace(text, "@V", valueArms(program));
    return CLI::detail::find_and_replace(text, "@W", wordArms(program));
}

} // namespace scenariomatch
