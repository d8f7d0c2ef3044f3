#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace scenariomatch::lint
{

// The least number of letters to add, drop or replace, or of neighbours to exchange, that makes one
// word of the other.
std::size_t editDistance(std::string_view left, std::string_view right);

// The candidate nearest to the word, at most two edits away and not the word itself; of several the
// first. Empty when there is none.
std::string nearestName(std::string_view word, std::span<const std::string> candidates);

// "did you mean 'NAME'?", empty for no name.
std::string didYouMean(const std::string& name);

} // namespace scenariomatch::lint
