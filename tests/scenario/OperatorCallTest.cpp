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

TEST(CallOperator, ReportsAValueThatTheDescriptionDoesNotName)
{
    FakeOperator op("op");
    op.m_description.m_result = "BOOL";
    const Reports reports;
    EXPECT_NE(callOperator(op, {}), nullptr);
    EXPECT_TRUE(reports.m_reports.empty());
    op.m_action = [](const auto&) { return nullptr; };
    EXPECT_EQ(callOperator(op, {}), nullptr);
    op.m_action = [](const auto&) { return std::make_shared<CSString>("yes"); };
    EXPECT_NE(callOperator(op, {}), nullptr);
    EXPECT_EQ(
        reports.m_reports,
        (std::vector<std::string>{
            "op: it gives nothing where its description says BOOL",
            "op: it gives STRING where its description says BOOL"}));
}

TEST(CallOperator, AllowsAMeasureToHaveNoValue)
{
    FakeOperator op("op");
    op.m_description.m_result = "DOUBLE";
    op.m_action = [](const auto&) { return nullptr; };
    const Reports reports;
    callOperator(op, {});
    EXPECT_TRUE(reports.m_reports.empty());
    op.m_action = [](const auto&) { return std::make_shared<CSBool>(true); };
    callOperator(op, {});
    EXPECT_EQ(
        reports.m_reports,
        std::vector<std::string>{"op: it gives BOOL where its description says DOUBLE"});
}

TEST(CallOperator, TellsWhoseCallHasNotComeBack)
{
    std::vector<std::string> notes;
    setOperatorNote([&notes](const CSOperatorInterfaceAbstract* op) {
        notes.push_back(op == nullptr ? "-" : op->m_name);
    });
    PlainFake op;
    op.m_plain = [&notes](std::span<const CSPlainValue>) -> CSPlainValue {
        notes.emplace_back("called");
        throw std::runtime_error("broken");
    };
    callOperatorPlain(op, {});
    callOperator(op, {});
    setOperatorNote({});
    callOperatorPlain(op, {});
    EXPECT_EQ(notes, (std::vector<std::string>{"plain", "called", "-", "plain", "-", "called"}));
}

TEST(CallOperator, AddsUpTheTimeOfEachOperatorWhereThatIsAskedFor)
{
    OperatorTimes times;
    PlainFake op;
    op.m_plain = [](std::span<const CSPlainValue>) { return CSPlainValue(); };
    setOperatorTimes(&times);
    callOperatorPlain(op, {});
    callOperator(op, {});
    setOperatorTimes(nullptr);
    ASSERT_TRUE(times.contains(&op));
    const auto before = times[&op];
    EXPECT_GE(before.count(), 0);
    callOperatorPlain(op, {});
    EXPECT_EQ(times[&op], before);
}

TEST(KindsOfResult, AreThoseOfTheTypeAndNoValue)
{
    using Kind = CSPlainValue::Kind;
    EXPECT_FALSE(isAmong(kindsOfResult("BOOL"), Kind::None));
    EXPECT_TRUE(isAmong(kindsOfResult("INT"), Kind::Number));
    EXPECT_TRUE(isAmong(kindsOfResult("2DIPOINT"), Kind::Point));
    EXPECT_TRUE(isAmong(kindsOfResult("3DDPOINTS"), Kind::Points));
    EXPECT_TRUE(isAmong(kindsOfResult("INTERVAL"), Kind::None));
    EXPECT_FALSE(isAmong(kindsOfResult("TIMESTAMP"), Kind::Text));
    EXPECT_TRUE(isAmong(kindsOfResult(""), Kind::Other));
    EXPECT_TRUE(isAmong(kindsOfResult("whatever"), Kind::Bool));
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
