#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace scenariomatch
{

// A hash table for numbers or addresses that grows piece by piece.
//
// A table of one piece has to put all of its entries into new places every time that it outgrows
// its room, which a frame with tens of thousands of recognised instances would feel. Here the keys
// are spread over several tables, and only one of them grows at a time. Values keep their addresses
// until they are erased.
template <typename Key, typename Value>
class SteadyMap
{
public:
    // Null for a key that is not there.
    Value* find(const Key& key)
    {
        Piece& piece = pieceOf(key);
        const auto found = piece.find(key);
        return found == piece.end() ? nullptr : &found->second;
    }

    const Value* find(const Key& key) const { return const_cast<SteadyMap*>(this)->find(key); }

    // The value of a key that is there; out_of_range otherwise.
    Value& at(const Key& key) { return pieceOf(key).at(key); }

    // The value of the key, a new one where there was none.
    Value& operator[](const Key& key) { return pieceOf(key)[key]; }

    void erase(const Key& key) { pieceOf(key).erase(key); }

    // Calls the function with every value, in no particular order.
    template <typename Function>
    void forEach(Function&& function)
    {
        for (Piece& piece : m_pieces) {
            for (auto& [key, value] : piece) {
                function(value);
            }
        }
    }

private:
    static constexpr unsigned kBits = 5;

    using Piece = std::unordered_map<Key, Value>;

    static std::uint64_t bitsOf(const Key& key)
    {
        if constexpr (std::is_pointer_v<Key>) {
            return reinterpret_cast<std::uintptr_t>(key);
        } else {
            return static_cast<std::uint64_t>(key);
        }
    }

    // By the highest bits of a product with an odd constant, which hang on all bits of the key.
    Piece& pieceOf(const Key& key)
    {
        constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;
        return m_pieces[(bitsOf(key) * kGoldenRatio) >> (64U - kBits)];
    }

    std::array<Piece, std::size_t{1} << kBits> m_pieces;
};

} // namespace scenariomatch
