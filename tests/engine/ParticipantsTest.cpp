#include "engine/Participants.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace scenariomatch
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Participants, StayInTheirOrderHoweverManyTheyAre)
{
    Participants participants;
    EXPECT_THAT(participants.all(), IsEmpty());
    for (const int identifier : {7, -1, 7, 3}) {
        participants.append(identifier);
    }
    EXPECT_THAT(participants.all(), ElementsAre(7, -1, 7, 3));
    participants.append(9);
    EXPECT_THAT(participants.all(), ElementsAre(7, -1, 7, 3, 9));
    participants.append(2);
    EXPECT_THAT(participants.all(), ElementsAre(7, -1, 7, 3, 9, 2));
}

TEST(Participants, AreCopiedWhole)
{
    const Participants few{1, 2};
    const Participants many{1, 2, 3, 4, 5};
    Participants other = many;
    EXPECT_THAT(other.all(), ElementsAre(1, 2, 3, 4, 5));
    other.append(6);
    EXPECT_THAT(many.all(), ElementsAre(1, 2, 3, 4, 5));
    other = few;
    EXPECT_THAT(other.all(), ElementsAre(1, 2));
}

} // namespace scenariomatch
