#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace scenariomatch
{

// That a left one and a right one, by their positions, may be partners, and how well they fit.
struct Pairing
{
    std::size_t left = 0;
    std::size_t right = 0;
    double worth = 0.0;
};

// Pairs as many as can be, each one once at most: for every left one its partner.
//
// The best fitting are taken first; pairs are exchanged only where that makes one more. Between
// equals the earlier positions win, so that the result does not depend on the order of the
// pairings. All positions must be less than the sizes.
std::vector<std::optional<std::size_t>>
largestMatching(std::vector<Pairing> pairings, std::size_t leftSize, std::size_t rightSize);

} // namespace scenariomatch
