#include "app/Matching.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace scenariomatch
{

namespace
{

using Partners = std::vector<std::optional<std::size_t>>;

class Matching
{
public:
    Matching(const std::vector<Pairing>& pairings, std::size_t leftSize, std::size_t rightSize)
        : m_candidates(leftSize)
        , m_partnerOfLeft(leftSize)
        , m_partnerOfRight(rightSize)
    {
        for (const Pairing& pairing : pairings) {
            m_candidates[pairing.left].push_back(pairing.right);
            if (!m_partnerOfLeft[pairing.left] && !m_partnerOfRight[pairing.right]) {
                pair(pairing.left, pairing.right);
            }
        }
    }

    Partners complete()
    {
        for (std::size_t left = 0; left < m_candidates.size(); ++left) {
            if (!m_partnerOfLeft[left]) {
                findPartner(left);
            }
        }
        return std::move(m_partnerOfLeft);
    }

private:
    void pair(std::size_t left, std::size_t right)
    {
        m_partnerOfLeft[left] = right;
        m_partnerOfRight[right] = left;
    }

    // Looks for the shortest chain of exchanges that ends at somebody free.
    void findPartner(std::size_t start)
    {
        // For a right one that was reached the left one that it was reached from.
        Partners reachedFrom(m_partnerOfRight.size());
        std::vector<std::size_t> waiting{start};
        for (std::size_t next = 0; next < waiting.size(); ++next) {
            for (const std::size_t right : m_candidates[waiting[next]]) {
                if (reachedFrom[right]) {
                    continue;
                }
                reachedFrom[right] = waiting[next];
                if (!m_partnerOfRight[right]) {
                    exchange(right, reachedFrom);
                    return;
                }
                waiting.push_back(*m_partnerOfRight[right]);
            }
        }
    }

    void exchange(std::size_t free, const Partners& reachedFrom)
    {
        std::optional<std::size_t> right = free;
        while (right) {
            const std::size_t left = *reachedFrom[*right];
            const std::optional<std::size_t> before = m_partnerOfLeft[left];
            pair(left, *right);
            right = before;
        }
    }

    std::vector<std::vector<std::size_t>> m_candidates;
    Partners m_partnerOfLeft;
    Partners m_partnerOfRight;
};

} // namespace

std::vector<std::optional<std::size_t>>
largestMatching(std::vector<Pairing> pairings, std::size_t leftSize, std::size_t rightSize)
{
    std::sort(pairings.begin(), pairings.end(), [](const Pairing& a, const Pairing& b) {
        return std::tie(b.worth, a.left, a.right) < std::tie(a.worth, b.left, b.right);
    });
    return Matching(pairings, leftSize, rightSize).complete();
}

} // namespace scenariomatch
