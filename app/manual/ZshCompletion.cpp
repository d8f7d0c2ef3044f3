#include "app/manual/Completion.h"

#include <fmt/format.h>

namespace scenariomatch
{

namespace
{

// The text with a backslash before each of the characters.
std::string escaped(const std::string& text, const std::string& characters)
{
    std::string result;
    for (const char c : text) {
        result += characters.find(c) == std::string::npos ? "" : "\\";
        result += c;
    }
    return result;
}

std::string quoted(const std::string& text)
{
    return "'" + CLI::detail::find_and_replace(text, "'", "'\\''") + "'";
}

std::string functionOf(const CommandEntry& command)
{
    return "_" + command.path("_");
}

// ":FILE:_files": what the value is called, and how it is completed.
std::string valueSpec(const OptionEntry& option)
{
    const std::string start = ":" + escaped(option.value, "\\:") + ":";
    switch (option.kind) {
    case ValueKind::None:
        return "";
    case ValueKind::Text:
        return start + " ";
    case ValueKind::Choice:
        return fmt::format("{}({})", start, fmt::join(option.choices, " "));
    case ValueKind::File:
        return start + "_files";
    case ValueKind::Folder:
        break;
    }
    return start + "_files -/";
}

// Two names of one option rule each other out.
std::string optionSpec(const OptionEntry& option)
{
    const std::string names = fmt::format("{}", fmt::join(option.names, " "));
    const std::string before = option.isRepeated ? "*" : "(" + names + ")";
    const std::string after = (option.kind == ValueKind::None ? "[" : "=[") +
                              escaped(option.description, "\\[]") + "]" + valueSpec(option);
    std::string text;
    for (const std::string& name : option.names) {
        text += fmt::format(" \\\n        {}", quoted(fmt::format("{}{}{}", before, name, after)));
    }
    return text;
}

// "((run\:"Recognise events in tracks"))": each command with what it does.
std::string commandSpec(const CommandEntry& command)
{
    std::vector<std::string> choices;
    for (const CommandEntry& inner : command.commands) {
        choices.push_back(inner.words.back() + "\\:\"" + escaped(inner.summary, "\\\"$`") + "\"");
    }
    return " \\\n        " + quoted(fmt::format("1:COMMAND:(({}))", fmt::join(choices, " "))) +
           " \\\n        '*:: :->inner'";
}

std::string functionFor(const CommandEntry& command)
{
    std::string text = functionOf(command) + "() {\n";
    text += "    local curcontext=$curcontext state line result=1\n    _arguments -C";
    for (const OptionEntry& option : command.options) {
        text += optionSpec(option);
    }
    for (const OptionEntry& argument : command.arguments) {
        text += " \\\n        " + quoted(valueSpec(argument));
    }
    text += command.commands.empty() ? "" : commandSpec(command);
    text += " && result=0\n";
    if (!command.commands.empty()) {
        text += "    [[ $state == inner ]] && _call_function result " + functionOf(command) +
                "_${line[1]}\n";
    }
    return text + "    return result\n}\n\n";
}

} // namespace

std::string zshCompletion(const CommandEntry& program)
{
    std::string text = fmt::format(
        "#compdef {0}\n"
        "# Completes the command line of {0} in zsh; made from the program's own options.\n\n",
        program.words.front());
    for (const CommandEntry* const command : allCommands(program)) {
        text += functionFor(*command);
    }
    return text + functionOf(program) + " \"$@\"\n";
}

} // namespace scenariomatch
