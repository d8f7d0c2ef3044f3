#include "engine/Expression.h"

#include "tests/engine/PlanMaterial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <optional>

namespace scenariomatch
{

namespace
{

// Reads attributes by slot and number from a table, and says who asked for what.
struct TableReader
{
    CSPlainValue attribute(const Expression::Node& node)
    {
        return CSPlainValue::number(10.0 * node.slot + node.attribute);
    }

    const CSBasicType* objects(const CConstraint& part)
    {
        objectParts.push_back(textOf(part));
        const std::shared_ptr<CSAgent> nobody;
        kept.push_back(evaluateConstraint(
            part, [&](const CConstraint&) -> const std::shared_ptr<CSAgent>& { return nobody; }));
        return kept.back().get();
    }

    template <class Compute>
    CSPlainValue shared(const Expression::Node& node, Compute&& compute)
    {
        sharedNumbers.push_back(node.shared);
        return remembers ? CSPlainValue::number(77.0) : compute();
    }

    bool remembers = false;
    std::vector<std::string> objectParts;
    std::vector<std::int32_t> sharedNumbers;
    std::vector<std::shared_ptr<CSBasicType>> kept;
};

class ExpressionTest : public ::testing::Test
{
protected:
    ExpressionTest()
        : m_sum(
              "+",
              [](const PlainOperator::Arguments& arguments) {
                  double sum = 0.0;
                  for (const CSPlainValue& argument : arguments) {
                      sum += argument.isNumber() ? argument.m_number : 1000.0;
                  }
                  return CSPlainValue::number(sum);
              })
        , m_digits("digits", [](const PlainOperator::Arguments& arguments) {
            double number = 0.0;
            for (const CSPlainValue& argument : arguments) {
                number = 10.0 * number + argument.m_number;
            }
            return CSPlainValue::number(number);
        })
    {
        m_numbering.attribute = [this](const std::string& name) {
            const auto found = std::find(m_attributes.begin(), m_attributes.end(), name);
            if (found == m_attributes.end()) {
                m_attributes.push_back(name);
                return static_cast<std::int32_t>(m_attributes.size() - 1);
            }
            return static_cast<std::int32_t>(found - m_attributes.begin());
        };
    }

    CSPlainValue evaluate(const Constraint& constraint)
    {
        m_expression.emplace(*constraint, m_promises, m_numbering);
        return m_expression->evaluate(m_reader);
    }

    // With the variables p and q.
    static Constraint slotted(Constraint constraint)
    {
        const std::vector<std::string> variables{"p", "q"};
        assignSlots(*constraint, variables);
        return constraint;
    }

    PlainOperator m_sum;
    PlainOperator m_digits;
    std::vector<std::string> m_attributes;
    Expression::Numbering m_numbering;
    OperatorPromises m_promises;
    std::optional<Expression> m_expression;
    TableReader m_reader;
};

} // namespace

TEST_F(ExpressionTest, GivesConstantsAsTheyStand)
{
    EXPECT_EQ(evaluate(number(2.5)).m_number, 2.5);
    const Constraint text = word("exit");
    const CSPlainValue value = evaluate(text);
    EXPECT_EQ(value.m_kind, CSPlainValue::Kind::Text);
    EXPECT_EQ(toString(value.m_object), "exit");
}

TEST_F(ExpressionTest, ReadsAttributesBySlotAndNumber)
{
    const Constraint sum =
        slotted(call(m_sum, attributeOf("q", "P"), attributeOf("p", "P"), attributeOf("q", "V")));
    EXPECT_EQ(evaluate(sum).m_number, 10.0 + 0.0 + 11.0);
    EXPECT_EQ(m_attributes, (std::vector<std::string>{"P", "V"}));
}

TEST_F(ExpressionTest, HasNoValueForAVariableThatIsNotBound)
{
    const Constraint leaf = slotted(attributeOf("z", "P"));
    EXPECT_TRUE(evaluate(leaf).isNone());
    const Constraint sum = slotted(call(m_sum, attributeOf("z", "P"), number(1.0)));
    EXPECT_EQ(evaluate(sum).m_number, 1001.0);
}

TEST_F(ExpressionTest, IsFalseWhereAnOperatorIsNotLoaded)
{
    const Constraint lost = unloaded("lost", call(m_sum, number(1.0)));
    const CSPlainValue value = evaluate(lost);
    EXPECT_TRUE(value.isBool());
    EXPECT_FALSE(value.m_truth);
    EXPECT_EQ(value.m_number, 1.0);
}

TEST_F(ExpressionTest, PassesArgumentsInOrderHoweverManyThereAre)
{
    auto digits = call(m_digits);
    double expected = 0.0;
    for (int count = 0; count <= 12; ++count) {
        EXPECT_EQ(evaluate(digits).m_number, expected) << count;
        digits->m_children.push_back(number((count % 9) + 1));
        expected = 10.0 * expected + (count % 9) + 1;
    }
}

TEST_F(ExpressionTest, EvaluatesMoreThanEightArgumentsAsObjects)
{
    auto sum = call(m_sum);
    for (int i = 0; i < 8; ++i) {
        sum->m_children.push_back(number(1.0));
    }
    EXPECT_EQ(evaluate(sum).m_number, 8.0);
    EXPECT_EQ(m_sum.m_objectCalls, 0);
    sum->m_children.push_back(number(1.0));
    EXPECT_EQ(evaluate(sum).m_number, 9.0);
    EXPECT_EQ(m_sum.m_objectCalls, 1);
}

TEST_F(ExpressionTest, EvaluatesNestedCalls)
{
    const Constraint nested = call(
        m_digits,
        call(m_digits, number(1.0), call(m_sum, number(2.0), number(3.0))),
        number(4.0),
        call(m_sum, number(5.0), call(m_sum, number(1.0), number(1.0))));
    EXPECT_EQ(evaluate(nested).m_number, 100.0 * 15 + 10.0 * 4 + 7.0);
}

TEST_F(ExpressionTest, EvaluatesWithObjectsBelowAnOperatorWithoutPlainValues)
{
    PlainOperator boxed("boxed", [](const auto& arguments) { return arguments.at(0); });
    boxed.m_description.m_plain = false;
    const Constraint nested =
        call(m_sum, number(1.0), call(boxed, call(m_sum, number(2.0), number(3.0))));
    EXPECT_EQ(evaluate(nested).m_number, 6.0);
    EXPECT_EQ(m_reader.objectParts, std::vector<std::string>{"boxed(2 + 3)"});
    EXPECT_EQ(boxed.m_plainCalls, 0);
    EXPECT_EQ(boxed.m_objectCalls, 1);
    EXPECT_EQ(m_sum.m_plainCalls, 1);
    EXPECT_EQ(m_sum.m_objectCalls, 1);
}

TEST_F(ExpressionTest, ReportsAPlainOperatorThatThrowsAsFalse)
{
    PlainOperator failing(
        "failing", [](const auto&) -> CSPlainValue { throw std::runtime_error("no such thing"); });
    PlainOperator isBool("isBool", [](const auto& arguments) {
        return CSPlainValue::boolean(arguments.at(0).isBool() && !arguments.at(0).m_truth);
    });
    std::vector<std::string> reports;
    setOperatorFailureHandler([&](const CSOperatorInterfaceAbstract& op, const std::string& what) {
        reports.push_back(op.m_name + ": " + what);
    });
    const Constraint nested = call(isBool, call(failing, number(1.0)));
    const CSPlainValue value = evaluate(nested);
    setOperatorFailureHandler({});
    EXPECT_TRUE(value.m_truth);
    EXPECT_EQ(reports, std::vector<std::string>{"failing: no such thing"});
}

TEST_F(ExpressionTest, ReportsAPlainValueThatTheDescriptionDoesNotName)
{
    PlainOperator relation("relation", [](const auto&) { return CSPlainValue(); });
    relation.m_description.m_result = "BOOL";
    PlainOperator measure("measure", [](const auto&) { return CSPlainValue(); });
    measure.m_description.m_result = "DOUBLE";
    std::vector<std::string> reports;
    setOperatorFailureHandler([&](const CSOperatorInterfaceAbstract& op, const std::string& what) {
        reports.push_back(op.m_name + ": " + what);
    });
    const Constraint nested = call(relation, call(measure, number(1.0)));
    const CSPlainValue value = evaluate(nested);
    setOperatorFailureHandler({});
    EXPECT_TRUE(value.isNone());
    EXPECT_EQ(
        reports,
        std::vector<std::string>{"relation: it gives nothing where its description says BOOL"});
}

TEST_F(ExpressionTest, LetsAFailedAllocationPass)
{
    PlainOperator failing("failing", [](const auto&) -> CSPlainValue { throw std::bad_alloc(); });
    const Constraint constraint = call(failing, number(1.0));
    EXPECT_THROW(evaluate(constraint), std::bad_alloc);
}

TEST_F(ExpressionTest, AsksTheReaderForWhatIsRemembered)
{
    m_numbering.shared = [](const CConstraint& part) {
        return part.m_operatorName == "+" ? 5 : -1;
    };
    const Constraint nested =
        slotted(call(m_digits, call(m_sum, attributeOf("p", "P"), number(2.0)), number(1.0)));
    EXPECT_EQ(evaluate(nested).m_number, 21.0);
    m_reader.remembers = true;
    EXPECT_EQ(evaluate(nested).m_number, 771.0);
    EXPECT_EQ(m_reader.sharedNumbers, (std::vector<std::int32_t>{5, 5}));
    EXPECT_EQ(m_sum.calls(), 1);
    std::vector<std::string> parts;
    m_expression->forEachShared([&](const CConstraint& part) { parts.push_back(textOf(part)); });
    EXPECT_EQ(parts, std::vector<std::string>{"p->P + 2"});
}

TEST_F(ExpressionTest, NamesTheAttributesThatItReadsPlainly)
{
    PlainOperator boxed("boxed", [](const auto& arguments) { return arguments.at(0); });
    boxed.m_description.m_plain = false;
    const Constraint constraint = slotted(call(
        m_sum,
        attributeOf("q", "P"),
        attributeOf("z", "P"),
        call(boxed, attributeOf("p", "V")),
        attributeOf("q", "N")));
    evaluate(constraint);
    std::vector<std::string> read;
    m_expression->forEachAttribute([&](std::int32_t slot, std::int32_t attribute) {
        read.push_back(
            std::to_string(slot) + " " + m_attributes.at(static_cast<std::size_t>(attribute)));
    });
    EXPECT_EQ(read, (std::vector<std::string>{"1 P", "1 N"}));
}

TEST_F(ExpressionTest, HasTheSlotsOfAllVariablesOnceInOrderOfAppearance)
{
    const Constraint constraint = slotted(call(
        m_sum,
        attributeOf("q", "P"),
        call(m_sum, attributeOf("z", "P"), attributeOf("p", "V")),
        attributeOf("q", "N")));
    evaluate(constraint);
    EXPECT_EQ(m_expression->slots(), (std::vector<std::int32_t>{1, 0}));
    EXPECT_EQ(slotsOf(*number(1.0)), std::vector<std::int32_t>());
}

TEST(AssignSlots, FindsVariablesByNameAndForgetsThoseOfBefore)
{
    const Constraint leaf = attributeOf("q", "P");
    assignSlots(*leaf, std::vector<std::string>{"p", "q"});
    EXPECT_EQ(leaf->m_slot, 1);
    assignSlots(*leaf, std::vector<std::string>{"q", "r"});
    EXPECT_EQ(leaf->m_slot, 0);
    assignSlots(*leaf, std::vector<std::string>{"a", "z"});
    EXPECT_EQ(leaf->m_slot, -1);
    assignSlots(*leaf, std::vector<std::string>());
    EXPECT_EQ(leaf->m_slot, -1);
}

// A word is no variable, whatever it says.
TEST(SlotsOf, LooksAtAttributesAlone)
{
    PlainOperator op("is", [](const auto&) { return CSPlainValue(); });
    const Constraint constraint = call(op, word("p"), attributeOf("q", "P"));
    assignSlots(*constraint, std::vector<std::string>{"p", "q"});
    EXPECT_EQ(slotsOf(*constraint), std::vector<std::int32_t>{1});
}

TEST(TextOf, WritesAConstraintAsAPersonWould)
{
    PlainOperator less("<", [](const auto&) { return CSPlainValue(); });
    PlainOperator both("&&", [](const auto&) { return CSPlainValue(); });
    PlainOperator distance("distance", [](const auto&) { return CSPlainValue(); });
    PlainOperator in("in", [](const auto&) { return CSPlainValue(); });
    EXPECT_EQ(
        textOf(*call(
            both,
            call(less, call(distance, attributeOf("p", "P"), attributeOf("q", "P")), number(1.5)),
            call(in, attributeOf("p", "P"), word("A")))),
        "(distance(p->P, q->P) < 1.5) && in(p->P, A)");
    EXPECT_EQ(
        textOf(*call(
            less, number(1.0), call(less, number(2.0), call(less, number(3.0), number(1e300))))),
        "1 < (2 < (3 < 1e+300))");
    EXPECT_EQ(textOf(*call(less, number(0.1))), "<(0.1)");
    EXPECT_EQ(textOf(*call(distance)), "distance()");
}

TEST(TextOf, NamesVariablesAsItIsTold)
{
    PlainOperator less("<", [](const auto&) { return CSPlainValue(); });
    const Constraint constraint = call(less, attributeOf("p", "P"), word("p"));
    const auto nameOf = [](const CConstraint& leaf) { return "[" + leaf.m_value + "]"; };
    EXPECT_EQ(textOf(*constraint, nameOf), "[p]->P < p");
}

} // namespace scenariomatch
