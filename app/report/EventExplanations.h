#pragma once

#include "app/explain/Evidence.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

namespace scenariomatch
{

// Keeps why events were recognised, until it is too much for a page that somebody wants to open.
class EventExplanations
{
public:
    // Bytes of all explanations.
    static constexpr std::size_t kMost = std::size_t{64} << 20U;

    explicit EventExplanations(std::size_t most = kMost)
        : m_most(most)
    {
    }

    // Nothing more is kept after the first one that is too much.
    void add(const Evidence& evidence);

    // As JSON; null where the event has none or was another one: of another model, or with another
    // end. (A merge clause gives an event another begin after it has been explained.)
    const std::string& find(int id, const std::string& model, std::int64_t endMilliseconds) const;

    // How many were too much.
    std::size_t leftOut() const { return m_leftOut; }

private:
    struct Explanation
    {
        std::string model;
        std::int64_t end = 0;
        std::string text;
    };

    std::size_t m_most;
    std::size_t m_size = 0;
    std::size_t m_leftOut = 0;
    std::unordered_map<int, Explanation> m_byId;
};

} // namespace scenariomatch
