#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The text tools on views, for readers that walk a long text without copying its rest at every
// step. All results are parts of the text that was given. The blank is ' ' alone.
namespace scenariomatch
{

// The text without its leading blanks.
std::string_view withoutLeadingBlanks(std::string_view text);

// The text without its leading blanks, up to its next blank.
std::string_view firstWord(std::string_view text);

// What stands before and after the first such character. Both are the whole text when there is
// none.
std::string_view textBefore(std::string_view text, char separator);
std::string_view textAfter(std::string_view text, char separator);

// Counts parentheses, from the given depth until it is 0 or the text ends, and updates it. Returns
// the position after the last parenthesis counted.
std::size_t countParentheses(std::string_view text, std::size_t& depth);

// getBetweenParentheses on a view: returns the group and leaves in `rest` what follows it.
std::string_view takeGroup(std::string_view& rest);

// Takes the next line off the text, without its line break and a carriage return before it. False
// at the end.
bool takeLine(std::string_view& text, std::string_view& line);

// Appends one more line to a declaration that runs over several: the line break with the blanks
// around it counts as one blank, and as nothing at the start, after "(", and before "(", ")", ","
// or "[".
void appendLine(std::string& declaration, std::string_view line);

} // namespace scenariomatch
