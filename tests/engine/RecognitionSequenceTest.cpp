#include "engine/RecognitionSequence.h"

#include "engine/RecognisedScenarios.h"

#include <gtest/gtest.h>

#include <array>

namespace scenariomatch
{

// Entries on one participant each.
class RecognitionSequenceTest : public testing::Test
{
protected:
    RecognitionSequenceTest()
    {
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            m_entries[i].identifiers = {static_cast<int>(i)};
        }
    }

    // Notes them in a turn of their own.
    void noteIn(std::uint64_t turn, std::initializer_list<std::size_t> entries)
    {
        m_sequence.startTurn(turn);
        for (const std::size_t entry : entries) {
            m_sequence.note(m_entries[entry]);
        }
    }

    RecognisedEntry* expect(int participant)
    {
        const std::array participants{participant};
        return m_sequence.expect(participants);
    }

    std::array<RecognisedEntry, 8> m_entries;
    RecognitionSequence m_sequence;
};

TEST_F(RecognitionSequenceTest, ExpectsNothingAtFirst)
{
    noteIn(1, {0, 1});
    EXPECT_EQ(expect(0), nullptr);
}

TEST_F(RecognitionSequenceTest, ExpectsTheOrderOfTheTurnBefore)
{
    noteIn(1, {2, 0, 1});
    m_sequence.startTurn(2);
    EXPECT_EQ(expect(2), &m_entries[2]);
    EXPECT_EQ(expect(0), m_entries.data());
    EXPECT_EQ(expect(1), &m_entries[1]);
    EXPECT_EQ(expect(1), nullptr);
}

TEST_F(RecognitionSequenceTest, PassesOverTwoThatDoNotGoOn)
{
    noteIn(1, {0, 1, 2, 3, 4, 5, 6});
    m_sequence.startTurn(2);
    EXPECT_EQ(expect(2), &m_entries[2]);
    EXPECT_EQ(expect(6), nullptr);
    EXPECT_EQ(expect(3), &m_entries[3]);
}

TEST_F(RecognitionSequenceTest, TellsParticipantsByNumberToo)
{
    noteIn(1, {0});
    m_sequence.startTurn(2);
    const std::array two{0, 0};
    EXPECT_EQ(m_sequence.expect(two), nullptr);
    EXPECT_EQ(expect(0), m_entries.data());
}

TEST_F(RecognitionSequenceTest, ResumesBehindWhatWasFoundOtherwise)
{
    noteIn(1, {0, 1, 2, 3, 4, 5, 6});
    m_sequence.startTurn(2);
    m_sequence.resumeBehind(m_entries[4]);
    EXPECT_EQ(expect(5), &m_entries[5]);
}

TEST_F(RecognitionSequenceTest, DoesNotResumeBehindWhatIsNotExpected)
{
    noteIn(1, {0, 1, 2, 3, 4});
    noteIn(2, {5, 6});
    m_sequence.startTurn(3);
    m_sequence.resumeBehind(m_entries[4]);
    EXPECT_EQ(expect(5), &m_entries[5]);
}

TEST_F(RecognitionSequenceTest, ExpectsTheTurnBeforeAlone)
{
    noteIn(1, {0, 1});
    noteIn(2, {1});
    m_sequence.startTurn(3);
    EXPECT_EQ(expect(0), nullptr);
    EXPECT_EQ(expect(1), &m_entries[1]);
}

TEST_F(RecognitionSequenceTest, ExpectsNothingThatIsGone)
{
    noteIn(1, {0, 1});
    m_sequence.startTurn(2);
    m_sequence.forget(m_entries[0]);
    EXPECT_EQ(expect(0), nullptr);
    EXPECT_EQ(expect(1), nullptr);

    noteIn(2, {2, 3});
    m_sequence.forget(m_entries[3]);
    m_sequence.startTurn(3);
    EXPECT_EQ(expect(2), nullptr);
}

TEST_F(RecognitionSequenceTest, GoesOnWhereSomethingIsGoneThatItDoesNotHold)
{
    noteIn(1, {0});
    noteIn(2, {1, 2});
    m_sequence.startTurn(3);
    m_sequence.forget(m_entries[0]);
    EXPECT_EQ(expect(1), &m_entries[1]);
}

} // namespace scenariomatch
