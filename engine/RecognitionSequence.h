#pragma once

#include "types/CSBasicType.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace scenariomatch
{

struct RecognisedEntry;

// Whether the entry is on these participants.
CS_EXPORT bool hasParticipants(const RecognisedEntry& entry, std::span<const int> participants);

// The order in which instances of one model were recognised in a turn and in the turn before.
//
// What is recognised in a frame was mostly recognised in the frame before too, in the same order:
// the next one is guessed from that, which spares looking it up. A guess is right or there is none.
class CS_EXPORT RecognitionSequence
{
public:
    // Turns only grow; what was noted in the one before is what is expected in this one.
    void startTurn(std::uint64_t turn);

    // The entry with these participants if it is one of the next that are expected, else null.
    RecognisedEntry* expect(std::span<const int> participants);

    // Expects what stood behind the entry, which was found otherwise.
    void resumeBehind(const RecognisedEntry& entry);

    void note(RecognisedEntry& entry);

    // Before an entry goes.
    void forget(const RecognisedEntry& entry);

private:
    std::vector<RecognisedEntry*> m_noted;
    std::vector<RecognisedEntry*> m_expected;
    std::size_t m_next = 0;
    std::uint64_t m_turn = 0;
    std::uint64_t m_turnBefore = 0;
};

} // namespace scenariomatch
