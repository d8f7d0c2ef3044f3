#include "engine/RecognitionSequence.h"

#include "engine/RecognisedScenarios.h"

#include <algorithm>

namespace scenariomatch
{

// They are few: comparing them in place is cheaper than a call.
bool hasParticipants(const RecognisedEntry& entry, std::span<const int> participants)
{
    const std::span<const int> identifiers = entry.identifiers.all();
    if (identifiers.size() != participants.size()) {
        return false;
    }
    for (std::size_t i = 0; i < participants.size(); ++i) {
        if (identifiers[i] != participants[i]) {
            return false;
        }
    }
    return true;
}

void RecognitionSequence::startTurn(std::uint64_t turn)
{
    if (turn == m_turn) {
        return;
    }
    m_expected.swap(m_noted);
    m_noted.clear();
    m_next = 0;
    m_turnBefore = m_turn;
    m_turn = turn;
}

RecognisedEntry* RecognitionSequence::expect(std::span<const int> participants)
{
    // As many may have ended between two that go on.
    constexpr std::size_t kPassedOver = 2;
    const std::size_t end = std::min(m_expected.size(), m_next + kPassedOver + 1);
    for (std::size_t place = m_next; place < end; ++place) {
        RecognisedEntry& entry = *m_expected[place];
        if (hasParticipants(entry, participants)) {
            m_next = place + 1;
            return &entry;
        }
    }
    return nullptr;
}

void RecognitionSequence::resumeBehind(const RecognisedEntry& entry)
{
    if (entry.notedTurn == m_turnBefore && entry.notedPlace < m_expected.size()) {
        m_next = entry.notedPlace + 1;
    }
}

void RecognitionSequence::note(RecognisedEntry& entry)
{
    entry.notedTurn = m_turn;
    entry.notedPlace = m_noted.size();
    m_noted.push_back(&entry);
}

// Hardly ever is one of these among them: what goes has not been recognised for a while.
void RecognitionSequence::forget(const RecognisedEntry& entry)
{
    if (entry.notedTurn == m_turn || entry.notedTurn == m_turnBefore) {
        m_noted.clear();
        m_expected.clear();
    }
}

} // namespace scenariomatch
