#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

// Refuses what is no number, not finite, or not within the bounds; least is allowed.
CLI::Validator numberBetween(double least, double most, const std::string& range);

// Refuses what is none of the names.
CLI::Validator oneOf(const std::vector<std::string>& names);

// Refuses a name of no characters, which no file or folder can have.
CLI::Validator notEmpty();

// The names and values that an option chooses from.
template <typename Value>
using Choices = std::vector<std::pair<std::string, Value>>;

// Adds an option that takes one of the names and stores its value. Help shows the names, with a bar
// between them, in the value's place.
template <typename Value>
CLI::Option* addChoice(
    CLI::App& command,
    const std::string& option,
    Value& chosen,
    const Choices<Value>& choices,
    const std::string& description)
{
    std::vector<std::string> names;
    for (const auto& choice : choices) {
        names.push_back(choice.first);
    }
    const auto store = [&chosen, choices](const std::string& name) {
        for (const auto& choice : choices) {
            if (choice.first == name) {
                chosen = choice.second;
            }
        }
    };
    return command.add_option_function<std::string>(option, store, description)
        ->type_name(CLI::detail::join(names, "|"))
        ->check(oneOf(names));
}

} // namespace scenariomatch
