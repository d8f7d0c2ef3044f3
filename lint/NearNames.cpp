#include "lint/NearNames.h"

#include <algorithm>
#include <vector>

namespace scenariomatch::lint
{

namespace
{

constexpr std::size_t kMostEdits = 2;

} // namespace

std::size_t editDistance(std::string_view left, std::string_view right)
{
    const std::size_t width = right.size() + 1;
    std::vector<std::size_t> cells((left.size() + 1) * width);
    const auto cell = [&](std::size_t i, std::size_t j) -> std::size_t& {
        return cells[i * width + j];
    };
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                cell(i, j) = i + j;
                continue;
            }
            const std::size_t change = left[i - 1] == right[j - 1] ? 0 : 1;
            cell(i, j) =
                std::min({cell(i - 1, j) + 1, cell(i, j - 1) + 1, cell(i - 1, j - 1) + change});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1]) {
                cell(i, j) = std::min(cell(i, j), cell(i - 2, j - 2) + 1);
            }
        }
    }
    return cell(left.size(), right.size());
}

std::string nearestName(std::string_view word, std::span<const std::string> candidates)
{
    std::string nearest;
    std::size_t least = kMostEdits + 1;
    for (const std::string& candidate : candidates) {
        const std::size_t longer = std::max(candidate.size(), word.size());
        if (longer - std::min(candidate.size(), word.size()) >= least || candidate == word) {
            continue;
        }
        const std::size_t distance = editDistance(word, candidate);
        if (distance < least) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string didYouMean(const std::string& name)
{
    return name.empty() ? "" : "did you mean '" + name + "'?";
}

} // namespace scenariomatch::lint
