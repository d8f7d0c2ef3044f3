#pragma once

#include "types/Export.h"

#include <string>

// The four text tools that the readers of model and engine files are made of. Their exact behaviour
// is part of the model language. All work on single bytes; a blank is ' ', a tab is '\t', no other
// white space is special.

// Drops leading blanks.
CS_EXPORT void removeBeginSpaces(std::string& s);

// Drops leading blanks, then cuts the text at its first remaining blank: the first word survives.
CS_EXPORT void removeAllSpaces(std::string& s);

// The same with tabs.
CS_EXPORT void removeAllTabulation(std::string& s);

// For text that follows an opening parenthesis: returns what stands before the matching ")" and
// leaves in s what follows it. When parentheses do not balance, returns the text before the last
// ")" there is.
CS_EXPORT std::string getBetweenParentheses(std::string& s);
