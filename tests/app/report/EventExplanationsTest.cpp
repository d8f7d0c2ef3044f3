#include "app/report/EventExplanations.h"

#include "app/explain/ExplanationJson.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

Evidence evidenceOf(int id)
{
    Evidence evidence;
    evidence.id = id;
    evidence.model = "Meeting";
    evidence.end = {25, 1000};
    return evidence;
}

} // namespace

TEST(EventExplanations, AreFoundByTheEvent)
{
    EventExplanations explanations;
    explanations.add(evidenceOf(4));
    EXPECT_EQ(explanations.find(4, "Meeting", 1000), explanationLine(evidenceOf(4)));
    EXPECT_EQ(explanations.find(5, "Meeting", 1000), "null");
}

TEST(EventExplanations, AreNotThoseOfAnotherEventWithTheIdentifier)
{
    EventExplanations explanations;
    explanations.add(evidenceOf(4));
    EXPECT_EQ(explanations.find(4, "Fall", 1000), "null");
    EXPECT_EQ(explanations.find(4, "Meeting", 1040), "null");
}

TEST(EventExplanations, AreThoseOfTheFirstEventsWhereAllAreTooMuch)
{
    const std::size_t size = explanationLine(evidenceOf(1)).size();
    EventExplanations explanations(2 * size);
    for (const int id : {1, 2, 3, 4}) {
        explanations.add(evidenceOf(id));
    }
    EXPECT_EQ(explanations.leftOut(), 2U);
    EXPECT_NE(explanations.find(2, "Meeting", 1000), "null");
    EXPECT_EQ(explanations.find(3, "Meeting", 1000), "null");
}

} // namespace scenariomatch
