#pragma once

#include <functional>
#include <string>
#include <vector>

// The readers of the engine file, of settings files and of constants files.
//
//     file = { block } ;   block = ... KEYWORD ... "{" NAME "," { line } "}" ;
//     entry = WORD "(" argument ")" ;
// KEYWORD is "List" in an engine file, "Engine" in a settings file, "EnvVars" in a constants file.
// A line that contains
// "#" is dropped whole, a line without "(" is skipped, the block ends with the line that contains
// "}". All readers throw std::out_of_range for an entry whose "(" has nothing after it.
namespace scenariomatch
{

struct SettingsEntry
{
    std::string keyword;
    std::string argument;
};

using EntryVisitor = std::function<void(const SettingsEntry&)>;

// What stands before a file's own name, the last "/" included: what names in the file are relative
// to.
std::string directoryOf(const std::string& fileName);

// Engine file: one entry a line, without blanks or tabs inside it.
void readListEntries(const std::string& text, const EntryVisitor& visit);

// Settings file: an entry may run over several lines. One that is still open at the end is reported
// on standard error.
void readEngineEntries(
    const std::string& fileName, const std::string& text, const EntryVisitor& visit);

// Constants file: any word, then name and number in parentheses.
void readConstantEntries(
    const std::string& text,
    const std::function<void(const std::string& name, double value)>& visit);

// Appends the items of a comma-separated list, without the blanks around them.
void appendItems(const std::string& list, std::vector<std::string>& items);

} // namespace scenariomatch
