#include "types/CSBasicType.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace scenariomatch
{
namespace
{

TEST(CSBasicType, HasNoTagAndFullConfidenceByDefault)
{
    const CSBasicType value;
    EXPECT_EQ(value.m_type, "");
    EXPECT_EQ(value.m_confidence, 1.0);
    EXPECT_FALSE(value.m_flag);
    EXPECT_EQ(value.m_frame, 0);
    EXPECT_TRUE(value.m_history.empty());
}

TEST(CSBasicType, KeepsTheTagItIsGiven)
{
    EXPECT_EQ(CSBasicType("PLAN").m_type, "PLAN");
}

TEST(CSBasicType, CopiesEverythingHistoryAndFrameIncluded)
{
    CSBasicType value("PLAN");
    value.m_confidence = 0.5;
    value.m_flag = true;
    value.m_frame = 7;
    value.m_history[3] = std::make_shared<CSBasicType>("EARLIER");

    const CSBasicType copy(value);

    EXPECT_EQ(copy.m_type, "PLAN");
    EXPECT_EQ(copy.m_confidence, 0.5);
    EXPECT_TRUE(copy.m_flag);
    EXPECT_EQ(copy.m_frame, 7);
    EXPECT_EQ(copy.m_history, value.m_history);
}

TEST(CSBasicType, IsDestroyedThroughItsBase)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<CSBasicType>);
}

} // namespace
} // namespace scenariomatch
