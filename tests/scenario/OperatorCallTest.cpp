#include "scenario/OperatorCall.h"

#include "tests/scenario/FakeOperators.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

// An operator with plain values that does what it is told.
class PlainFake : public FakeOperator
{
public:
    PlainFake()
        : FakeOperator("plain")
    {
    }

    CSPlainValue evaluatePlain(std::span<const CSPlainValue> arguments) override
    {
        return m_plain(arguments);
    }

    std::function<CSPlainValue(std::span<const CSPlainValue>)> m_plain;
};

// Keeps what is reported about operators while it lives.
class Reports
{
public:
    Reports()
    {
        setOperatorFailureHandler(
            [this](const CSOperatorInterfaceAbstract& op, const std::string& what) {
                m_reports.push_back(op.m_name + ": " + what);
            });
    }

    Reports(const Reports&) = delete;
    Reports(Reports&&) = delete;
    Reports& operator=(const Reports&) = delete;
    Reports& operator=(Reports&&) = delete;

    ~Reports() { setOperatorFailureHandler({}); }

    std::vector<std::string> m_reports;
};

} // namespace

TEST(CallOperatorPlain, GivesTheOperatorsValueOnTheArguments)
{
    PlainFake op;
    op.m_plain = [](std::span<const CSPlainValue> arguments) {
        return CSPlainValue::number(arguments[0].m_number - arguments[1].m_number);
    };
    const Reports reports;
    const std::array arguments{CSPlainValue::number(5.0), CSPlainValue::number(3.0)};
    EXPECT_EQ(callOperatorPlain(op, arguments).m_number, 2.0);
    EXPECT_TRUE(reports.m_reports.empty());
    EXPECT_EQ(op.m_calls, 0);
}

TEST(CallOperatorPlain, IsAReportedFalseWhereTheOperatorThrows)
{
    PlainFake op;
    op.m_plain = [](std::span<const CSPlainValue>) -> CSPlainValue {
        throw std::runtime_error("broken");
    };
    const Reports reports;
    const CSPlainValue value = callOperatorPlain(op, {});
    EXPECT_TRUE(value.isBool());
    EXPECT_FALSE(value.m_truth);
    EXPECT_EQ(value.m_number, 1.0);
    EXPECT_EQ(reports.m_reports, std::vector<std::string>{"plain: broken"});
}

TEST(CallOperatorPlain, ReportsWhatIsNoException)
{
    PlainFake op;
    op.m_plain = [](std::span<const CSPlainValue>) -> CSPlainValue { throw 1; };
    const Reports reports;
    EXPECT_FALSE(callOperatorPlain(op, {}).m_truth);
    EXPECT_EQ(reports.m_reports, std::vector<std::string>{"plain: unknown exception"});
}

TEST(CallOperatorPlain, LetsAFailedAllocationPass)
{
    PlainFake op;
    op.m_plain = [](std::span<const CSPlainValue>) -> CSPlainValue { throw std::bad_alloc(); };
    const Reports reports;
    EXPECT_THROW(callOperatorPlain(op, {}), std::bad_alloc);
    EXPECT_TRUE(reports.m_reports.empty());
}

TEST(CallOperatorPlain, IsFalseWithoutAHandlerToo)
{
    PlainFake op;
    op.m_plain = [](std::span<const CSPlainValue>) -> CSPlainValue {
        throw std::runtime_error("broken");
    };
    setOperatorFailureHandler({});
    EXPECT_TRUE(callOperatorPlain(op, {}).isBool());
    EXPECT_FALSE(callOperatorPlain(op, {}).m_truth);
}

TEST(DescribeOperator, PromisesNothingAndReportsWhereTheOperatorThrows)
{
    FakeOperator op("shy");
    op.m_description.m_pure = true;
    EXPECT_TRUE(describeOperator(op).m_pure);
    op.m_describeThrows = true;
    const Reports reports;
    EXPECT_FALSE(describeOperator(op).m_pure);
    EXPECT_EQ(reports.m_reports, std::vector<std::string>{"shy: no description"});
}

} // namespace scenariomatch
