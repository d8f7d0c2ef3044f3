#pragma once

#include "engine/FrameView.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace scenariomatch
{

// Who can be within reach of whom: for each agent of one type the agents of another whose positions
// lie at most so far apart on the ground plane, in the order of their type's list.
//
// Made at most once per frame for all models that ask for the same types, attributes and about the
// same reach. An agent whose attribute is no point with finite coordinates is near everybody.
class CS_EXPORT Neighbourhoods
{
public:
    struct Side
    {
        std::size_t type = 0;
        std::size_t attribute = 0;

        bool operator==(const Side&) const = default;
    };

    // One of the other type: its place in the type's list, and how far it is at least.
    struct Neighbour
    {
        std::uint32_t rank = 0;
        double squaredDistance = 0.0;
    };

    // A number for the question; entered when it is new. The reach is finite.
    std::size_t numberOf(const Side& from, const Side& to, double reach);

    // Those that can be within the reach of the agent with this rank. Empty optional when it could
    // be all of them, or when there are so many that looking for them saves nothing.
    struct Found
    {
        bool isAnyone = true;
        std::span<const Neighbour> neighbours;
    };

    Found near(std::size_t number, std::uint32_t rank, FrameView& view);

    // A bit above the square of the reach, so that no rounding loses a neighbour.
    static double squaredLimit(double reach);

private:
    struct Place
    {
        double x = 0.0;
        double y = 0.0;
        std::uint32_t rank = 0;
    };

    struct Question
    {
        Side from;
        Side to;
        double reach = 0.0;
        std::uint64_t frame = 0;
        bool isTooMany = false;
        // By rank of the first side: where its neighbours begin; one more at the end.
        std::vector<std::uint32_t> begins;
        std::vector<Neighbour> neighbours;
        std::vector<std::uint8_t> isAnyone;
    };

    void answer(Question& question, FrameView& view);
    void sweep(Question& question);
    void addNear(Question& question, const Place& from, std::size_t first);

    std::vector<Question> m_questions;
    // Kept to save allocations.
    std::vector<Place> m_from;
    std::vector<Place> m_to;
    std::vector<std::uint32_t> m_everywhere;
};

} // namespace scenariomatch
