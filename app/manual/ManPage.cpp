#include "app/manual/ManPage.h"

#include "app/ExitStatus.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>

namespace scenariomatch
{

namespace
{

// Leaves room for what is escaped in a line of 80 characters.
constexpr std::size_t kLineWidth = 60;

// What roff takes for something else stands for itself: a hyphen is no dash, a quote is not curled.
std::string escaped(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '\\':
            result += "\\e";
            break;
        case '-':
            result += "\\-";
            break;
        case '\'':
            result += "\\(aq";
            break;
        case '`':
            result += "\\(ga";
            break;
        case '^':
            result += "\\(ha";
            break;
        case '~':
            result += "\\(ti";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string bold(const std::string& text)
{
    return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(const std::string& text)
{
    return "\\fI" + escaped(text) + "\\fR";
}

// "--format on|off" with the names in bold and what to put in the value's place in italics.
std::string nameAndValue(const OptionEntry& option)
{
    std::string text;
    for (const std::string& name : option.names) {
        text += (text.empty() ? "" : ", ") + bold(name);
    }
    if (!option.choices.empty()) {
        text += ' ';
        for (const std::string& choice : option.choices) {
            text += (&choice == &option.choices.front() ? "" : "|") + bold(choice);
        }
    } else if (!option.value.empty()) {
        text += (text.empty() ? "" : " ") + italic(option.value);
    }
    return text + (option.isRepeated ? " ..." : "");
}

std::string synopsis(const CommandEntry& command)
{
    std::string text = bold(command.path(" "));
    for (const OptionEntry& option : command.options) {
        text += option.isRequired ? " " + nameAndValue(option) : "";
    }
    text += " [" + italic("OPTIONS") + "]";
    for (const OptionEntry& argument : command.arguments) {
        const std::string name = nameAndValue(argument);
        text += argument.isRequired ? " " + name : " [" + name + "]";
    }
    text += command.commands.empty() ? "" : " " + italic("COMMAND");
    return text + "\n";
}

std::string section(const std::string& heading)
{
    return ".SH " + heading + "\n";
}

std::string options(const std::string& heading, const std::vector<OptionEntry>& entries)
{
    std::string text = entries.empty() ? "" : section(heading);
    for (const OptionEntry& entry : entries) {
        text += ".TP\n" + nameAndValue(entry);
        text += entry.isRequired ? " (required)" : "";
        text += entry.defaultValue.empty() ? "" : " (default: " + escaped(entry.defaultValue) + ")";
        text += "\n" + roffText(entry.description);
    }
    return text;
}

std::string commands(const CommandEntry& command)
{
    std::string text = command.commands.empty() ? "" : section("COMMANDS");
    for (const CommandEntry& inner : command.commands) {
        text += ".TP\n" + bold(inner.words.back()) + "\n" + roffText(inner.summary);
    }
    return text;
}

std::string description(const CommandEntry& command)
{
    return command.description.empty() ? ""
                                       : section("DESCRIPTION") + roffText(command.description);
}

std::string environment(const CommandEntry& command)
{
    std::string text = command.environment.empty() ? "" : section("ENVIRONMENT");
    for (const VariableEntry& variable : command.environment) {
        text += ".TP\n" + bold(variable.name) + "\n" + roffText(variable.meaning);
    }
    return text;
}

std::string exitStatus()
{
    std::string text = section("EXIT STATUS");
    for (const ExitMeaning& exit : kExitMeanings) {
        text += fmt::format(".TP\n{}\n{}", exit.status, roffText(std::string(exit.meaning)));
    }
    return text;
}

std::string examples(const CommandEntry& command)
{
    std::string text = command.examples.empty() ? "" : section("EXAMPLES") + ".EX\n";
    for (const std::string& example : command.examples) {
        text += roffLine(example);
    }
    return text + (command.examples.empty() ? "" : ".EE\n");
}

// The pages of the command around this one and of those inside it.
std::string seeAlso(const CommandEntry& command)
{
    std::vector<std::string> pages;
    if (command.words.size() > 1) {
        pages.push_back(
            fmt::format("{}", fmt::join(command.words.begin(), command.words.end() - 1, "-")));
    }
    for (const CommandEntry& inner : command.commands) {
        pages.push_back(inner.path("-"));
    }
    std::string text = pages.empty() ? "" : section("SEE ALSO");
    for (const std::string& page : pages) {
        text += ".BR " + escaped(page) + (&page == &pages.back() ? " (1)\n" : " (1),\n");
    }
    return text;
}

std::string upperCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
        return static_cast<char>(std::toupper(c));
    });
    return text;
}

} // namespace

std::string roffLine(const std::string& text)
{
    // A line that begins with a dot is a request.
    return (text.starts_with('.') ? "\\&" : "") + escaped(text) + "\n";
}

std::string roffText(const std::string& text)
{
    std::string lines;
    std::string line;
    for (const std::string& word : CLI::detail::split(text, ' ')) {
        if (!line.empty() && line.size() + word.size() >= kLineWidth) {
            lines += roffLine(line);
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return lines + roffLine(line);
}

std::string manPage(const CommandEntry& command, const Edition& edition)
{
    std::string text = fmt::format(
        ".TH {} 1 {} \"ScenarioMatch {}\" \"User Commands\"\n",
        escaped(upperCase(command.path("-"))),
        edition.date,
        edition.version);
    text += section("NAME") + escaped(command.path("-")) + " \\- " + roffLine(command.summary);
    text += section("SYNOPSIS") + synopsis(command);
    text += description(command);
    text += commands(command);
    text += options("ARGUMENTS", command.arguments);
    text += options("OPTIONS", command.options);
    text += environment(command);
    text += exitStatus();
    text += examples(command);
    text += seeAlso(command);
    return text;
}

} // namespace scenariomatch
