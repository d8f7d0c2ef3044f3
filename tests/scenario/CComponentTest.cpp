#include "scenario/CComponent.h"

#include "tests/types/CapturedStream.h"

#include <gtest/gtest.h>

#include <iostream>

namespace
{

TEST(CComponent, HasDurationsOfOneWhenNew)
{
    const CComponent component;
    EXPECT_EQ(component.m_minDuration, 1.0);
    EXPECT_EQ(component.m_maxDuration, 1.0);
    EXPECT_TRUE(component.m_arguments.empty());
}

TEST(CComponent, PrintsOneLine)
{
    CComponent component;
    component.m_variable = "c1";
    component.m_kind = "PrimitiveState";
    component.m_modelName = "Inside";
    component.m_arguments = {"p1", "z1"};
    component.m_maxDuration = 2.5;
    const scenariomatch::CapturedStream output(std::cout);
    component.print();
    EXPECT_EQ(output.text(), "\t\tc1 PrimitiveState Inside p1 z1 [1,2.5]\n");
}

TEST(CComponent, PrintsWithoutArguments)
{
    const scenariomatch::CapturedStream output(std::cout);
    CComponent().print();
    EXPECT_EQ(output.text(), "\t\t   [1,1]\n");
}

} // namespace
