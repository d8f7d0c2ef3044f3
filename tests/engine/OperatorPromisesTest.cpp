#include "engine/OperatorPromises.h"

#include "scenario/OperatorCall.h"
#include "tests/engine/PlanMaterial.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

// Counts how often it is asked.
class AskedOperator : public PlainOperator
{
public:
    AskedOperator()
        : PlainOperator("asked", [](const Arguments&) { return CSPlainValue::boolean(true); })
    {
    }

    CSOperatorDescription describe() const override
    {
        ++m_asked;
        if (m_throws) {
            throw std::runtime_error("no description");
        }
        return m_description;
    }

    mutable int m_asked = 0;
    bool m_throws = false;
};

} // namespace

TEST(OperatorPromises, AsksAnOperatorOnce)
{
    AskedOperator op;
    OperatorPromises promises;
    EXPECT_TRUE(promises.of(&op).isPure);
    EXPECT_TRUE(promises.of(&op).isPlain);
    EXPECT_EQ(op.m_asked, 1);
}

TEST(OperatorPromises, TakesNothingFromAnOperatorThatIsNotPure)
{
    AskedOperator op;
    op.m_description.m_pure = false;
    op.m_description.m_meaning = CSOperatorMeaning::AtMost;
    OperatorPromises promises;
    EXPECT_FALSE(promises.of(&op).isPure);
    EXPECT_FALSE(promises.of(&op).isPlain);
    EXPECT_EQ(promises.of(&op).meaning, CSOperatorMeaning::Any);
}

TEST(OperatorPromises, KeepsTheMeaningOfAPureOperator)
{
    AskedOperator op;
    op.m_description.m_plain = false;
    op.m_description.m_meaning = CSOperatorMeaning::Nearness;
    OperatorPromises promises;
    EXPECT_TRUE(promises.of(&op).isPure);
    EXPECT_FALSE(promises.of(&op).isPlain);
    EXPECT_EQ(promises.of(&op).meaning, CSOperatorMeaning::Nearness);
}

TEST(OperatorPromises, TakesAnOperatorThatIsNotLoadedForPure)
{
    OperatorPromises promises;
    EXPECT_TRUE(promises.of(nullptr).isPure);
    EXPECT_FALSE(promises.of(nullptr).isPlain);
}

TEST(OperatorPromises, ReportsADescriptionThatThrowsAndTakesNothing)
{
    AskedOperator op;
    op.m_throws = true;
    std::string report;
    setOperatorFailureHandler([&](const auto&, const std::string& what) { report += what; });
    OperatorPromises promises;
    EXPECT_FALSE(promises.of(&op).isPure);
    EXPECT_FALSE(promises.of(&op).isPure);
    setOperatorFailureHandler({});
    EXPECT_EQ(report, "no description");
}

TEST(OperatorPromises, CallsAConstraintPureWhenAllItsOperatorsAre)
{
    AskedOperator pure;
    AskedOperator impure;
    impure.m_description.m_pure = false;
    OperatorPromises promises;
    EXPECT_TRUE(promises.isPure(*attributeOf("p", "P")));
    EXPECT_TRUE(promises.isPure(*number(1.0)));
    EXPECT_TRUE(promises.isPure(*call(pure, attributeOf("p", "P"), call(pure, word("a")))));
    EXPECT_FALSE(promises.isPure(*call(impure, number(1.0))));
    EXPECT_FALSE(promises.isPure(*call(pure, number(1.0), call(impure, number(1.0)))));
    EXPECT_FALSE(promises.isPure(*unloaded("lost", call(impure, number(1.0)))));
    EXPECT_TRUE(promises.isPure(*unloaded("lost", call(pure, number(1.0)))));
}

} // namespace scenariomatch
