#include "types/CSOperatorInterfaceAbstract.h"

#include <gtest/gtest.h>

#include <string>

namespace scenariomatch
{
namespace
{

class CountsArguments : public CSOperatorInterfaceAbstract
{
public:
    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override
    {
        return std::make_shared<CSInt>(static_cast<int>(arguments.size()));
    }
};

TEST(CSOperatorInterfaceAbstract, HasNoNameAndIsNotTemporalByDefault)
{
    const CountsArguments counts;
    EXPECT_EQ(counts.m_name, "");
    EXPECT_FALSE(counts.m_isTemporal);
}

TEST(CSOperatorInterfaceAbstract, IsEvaluatedThroughTheInterface)
{
    CountsArguments counts;
    CSOperatorInterfaceAbstract& called = counts;
    EXPECT_EQ(toString(called.evaluate({nullptr, nullptr}).get()), "2");
}

TEST(CSOperatorInterfaceAbstract, PromisesNothingUnlessItSaysMore)
{
    const CSOperatorDescription description = CountsArguments().describe();
    EXPECT_EQ(description.m_summary, "");
    EXPECT_TRUE(description.m_arguments.empty());
    EXPECT_EQ(description.m_requiredArguments, 0U);
    EXPECT_EQ(description.m_result, "");
    EXPECT_FALSE(description.m_pure);
    EXPECT_EQ(description.m_endsFirst, std::nullopt);
}

TEST(CSOperatorInterfaceAbstract, IsFoundByItsIdentifier)
{
    EXPECT_STREQ(
        qobject_interface_iid<CSOperatorInterfaceAbstract*>(),
        "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0");
}

} // namespace
} // namespace scenariomatch
