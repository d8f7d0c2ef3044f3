#include "engine/CSEngine.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace
{

using Lists = std::vector<std::vector<int>>;

// Appends, for each of the rests, the value followed by the rest.
void appendFollowed(Lists& lists, int value, const Lists& rests)
{
    for (const auto& rest : rests) {
        auto& list = lists.emplace_back();
        list.reserve(rest.size() + 1);
        list.push_back(value);
        std::copy(rest.begin(), rest.end(), std::back_inserter(list));
    }
}

} // namespace

unsigned permutation(int n, int k)
{
    if (k < 0 || n < k) {
        return 0;
    }
    std::uint32_t product = 1;
    for (int factor = n; factor > n - k; --factor) {
        product *= static_cast<std::uint32_t>(factor);
    }
    return product;
}

std::vector<std::vector<int>> createPermutationList(std::vector<int> values, int k)
{
    std::vector<std::vector<int>> selections;
    if (k <= 0 || static_cast<std::size_t>(k) > values.size()) {
        return selections;
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (k == 1) {
            selections.push_back({values[i]});
            continue;
        }
        std::vector<int> others = values;
        others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
        appendFollowed(selections, values[i], createPermutationList(std::move(others), k - 1));
    }
    return selections;
}

std::vector<std::vector<int>> createPermutationList(std::vector<int> sizes)
{
    std::vector<std::vector<int>> tuples;
    if (sizes.empty()) {
        return tuples;
    }
    const int first = sizes.front();
    if (sizes.size() == 1) {
        for (int i = 0; i < first; ++i) {
            tuples.push_back({i});
        }
        return tuples;
    }
    sizes.erase(sizes.begin());
    const auto rests = createPermutationList(std::move(sizes));
    for (int i = 0; i < first; ++i) {
        appendFollowed(tuples, i, rests);
    }
    return tuples;
}
