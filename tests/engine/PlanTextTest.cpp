#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>

namespace scenariomatch
{

namespace
{

class PlanTextTest : public EngineFixture
{
protected:
    std::string plans()
    {
        std::ostringstream text;
        m_engine.printPlans(text);
        return text.str();
    }
};

} // namespace

TEST_F(PlanTextTest, PrintsPrimitiveStatesThenCompositesInReadingOrder)
{
    readModels(
        "PrimitiveState (Low,\nPhysicalObjects((p : Person))\nConstraints((p->P above 2))\n)\n"
        "CompositeEvent (High,\nPhysicalObjects((p : Person))\n"
        "Components((c : PrimitiveState Low(p)))\n)\n",
        "Low,High");
    EXPECT_EQ(
        plans(),
        "PrimitiveState Low\n"
        "    bind p to each Person\n"
        "    then test above(p->P, 2)\n"
        "CompositeEvent High\n"
        "    when c, a Low, is recognised\n");
}

TEST_F(PlanTextTest, LeavesOutModelsThatTakeNoPart)
{
    const CapturedStream warnings(std::cerr);
    readModels(
        "CompositeEvent (Hen,\nPhysicalObjects((p : Person))\n"
        "Components((c : CompositeEvent Egg(p)))\n)\n"
        "CompositeEvent (Egg,\nPhysicalObjects((p : Person))\n"
        "Components((c : CompositeEvent Hen(p)))\n)\n"
        "PrimitiveState (Low,\nPhysicalObjects((p : Person))\n)\n",
        "Hen,Egg,Low");
    EXPECT_EQ(plans(), "PrimitiveState Low\n    bind p to each Person\n");
}

} // namespace scenariomatch
