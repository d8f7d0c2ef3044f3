#include "engine/SharedValues.h"

#include "tests/engine/PlanMaterial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace scenariomatch
{

namespace
{

CSPlainValue nothing(const PlainOperator::Arguments& /*arguments*/)
{
    return {};
}

class SharedValuesTest : public ::testing::Test
{
protected:
    SharedValuesTest()
        : m_op("op", nothing)
        , m_other("other", nothing)
    {
    }

    static Constraint slotted(Constraint constraint)
    {
        const std::vector<std::string> variables{"p", "q", "z"};
        assignSlots(*constraint, variables);
        return constraint;
    }

    void begin()
    {
        m_view.begin(m_scene.m_agents, CSTimeStamp(1, 0.0, 0.0), m_types);
        m_values.beginFrame();
    }

    // A node that is remembered under a new number.
    Expression::Node node(std::array<std::int32_t, 2> sharers)
    {
        const Constraint part =
            slotted(call(m_op, attributeOf("p", "N" + std::to_string(m_nodes++))));
        m_values.count(*part);
        m_values.count(*part);
        Expression::Node node;
        node.shared = m_values.numberOf(*part);
        node.sharers = sharers;
        return node;
    }

    // The value on the agents; each computation gives the next number.
    double value(const Expression::Node& node, std::vector<FrameView::AgentIndex> agents)
    {
        return m_values
            .value(node, m_view, agents.data(), [this] { return CSPlainValue::number(++m_calls); })
            .m_number;
    }

    PlainOperator m_op;
    PlainOperator m_other;
    Scene m_scene;
    FrameView::TypeTable m_types;
    FrameView m_view;
    SharedValues m_values;
    int m_nodes = 0;
    int m_calls = 0;
};

} // namespace

TEST_F(SharedValuesTest, RemembersNothingThatOccursOnce)
{
    const Constraint part = slotted(call(m_op, attributeOf("p", "P")));
    EXPECT_EQ(m_values.numberOf(*part), -1);
    m_values.count(*part);
    EXPECT_EQ(m_values.numberOf(*part), -1);
    m_values.count(*part);
    EXPECT_GE(m_values.numberOf(*part), 0);
}

TEST_F(SharedValuesTest, TellsPartsApartByWhatTheySay)
{
    const auto numberOf = [this](Constraint part) {
        const Constraint ready = slotted(std::move(part));
        m_values.count(*ready);
        m_values.count(*ready);
        return m_values.numberOf(*ready);
    };
    std::vector<std::int32_t> numbers{
        numberOf(call(m_op, attributeOf("p", "P"))),
        numberOf(call(m_op, attributeOf("p", "V"))),
        numberOf(call(m_other, attributeOf("p", "P"))),
        numberOf(call(m_op, attributeOf("p", "P"), number(1.0))),
        numberOf(call(m_op, attributeOf("p", "P"), word("1"))),
        numberOf(call(m_op, attributeOf("p", "P"), number(-1.0))),
        numberOf(call(m_op, number(1.0), attributeOf("p", "P"))),
        numberOf(call(m_op, attributeOf("p", "P"), attributeOf("z", "P"))),
        numberOf(call(m_op, attributeOf("p", "P"), attributeOf("p", "P")))};
    std::sort(numbers.begin(), numbers.end());
    EXPECT_EQ(std::adjacent_find(numbers.begin(), numbers.end()), numbers.end());
    EXPECT_GE(numbers.front(), 0);
}

TEST_F(SharedValuesTest, TakesTheSameWordsOnOtherVariablesForTheSame)
{
    const Constraint one = slotted(call(m_op, attributeOf("p", "P"), attributeOf("z", "V")));
    const Constraint two = slotted(call(m_op, attributeOf("q", "P"), attributeOf("z", "V")));
    m_values.count(*one);
    m_values.count(*two);
    EXPECT_GE(m_values.numberOf(*one), 0);
    EXPECT_EQ(m_values.numberOf(*one), m_values.numberOf(*two));
}

TEST_F(SharedValuesTest, RemembersNothingAboutNobodyOrThree)
{
    const Constraint nobody = slotted(call(m_op, number(1.0)));
    const Constraint three =
        slotted(call(m_op, attributeOf("p", "P"), attributeOf("q", "P"), attributeOf("z", "P")));
    const Constraint leaf = slotted(attributeOf("p", "P"));
    for (const Constraint* part : {&nobody, &three, &leaf}) {
        m_values.count(**part);
        m_values.count(**part);
        EXPECT_EQ(m_values.numberOf(**part), -1);
    }
}

// What stands inside a part that occurs twice is computed with it.
TEST_F(SharedValuesTest, CountsWhatStandsInsideARepeatedPartOnce)
{
    const Constraint outer = slotted(call(m_other, call(m_op, attributeOf("p", "P")), number(1.0)));
    m_values.count(*outer);
    m_values.count(*outer);
    EXPECT_GE(m_values.numberOf(*outer), 0);
    EXPECT_EQ(m_values.numberOf(*outer->m_children[0]), -1);
    const Constraint another =
        slotted(call(m_other, call(m_op, attributeOf("q", "P")), number(2.0)));
    m_values.count(*another);
    EXPECT_EQ(m_values.numberOf(*another), -1);
    EXPECT_GE(m_values.numberOf(*another->m_children[0]), 0);
}

TEST_F(SharedValuesTest, ComputesOncePerAgentAndFrame)
{
    m_scene.add("Person", 1);
    m_scene.add("Person", 1);
    begin();
    const Expression::Node part = node({0, -1});
    EXPECT_EQ(value(part, {0}), 1.0);
    EXPECT_EQ(value(part, {0}), 1.0);
    EXPECT_EQ(value(part, {1}), 2.0);
    EXPECT_EQ(value(part, {0}), 1.0);
    EXPECT_EQ(value(part, {1}), 2.0);
    begin();
    EXPECT_EQ(value(part, {0}), 3.0);
    EXPECT_EQ(value(part, {1}), 4.0);
    EXPECT_EQ(value(part, {0}), 3.0);
}

TEST_F(SharedValuesTest, LooksAtTheAgentInTheSlotOfTheNode)
{
    m_scene.add("Person", 1);
    m_scene.add("Person", 1);
    begin();
    const Expression::Node part = node({1, -1});
    EXPECT_EQ(value(part, {0, 1}), 1.0);
    EXPECT_EQ(value(part, {1, 1}), 1.0);
    EXPECT_EQ(value(part, {1, 0}), 2.0);
}

TEST_F(SharedValuesTest, KeepsPartsApart)
{
    m_scene.add("Person", 1);
    begin();
    const Expression::Node one = node({0, -1});
    const Expression::Node two = node({0, -1});
    EXPECT_EQ(value(one, {0}), 1.0);
    EXPECT_EQ(value(two, {0}), 2.0);
    EXPECT_EQ(value(one, {0}), 1.0);
}

TEST_F(SharedValuesTest, NeverRemembersPairsThatMoveNorPairsThatStay)
{
    m_scene.add("Person", 1);
    m_scene.add("Person", 1);
    m_scene.addConstant("Zone");
    m_scene.addConstant("Zone");
    begin();
    const Expression::Node part = node({0, 1});
    EXPECT_EQ(value(part, {0, 1}), 1.0);
    EXPECT_EQ(value(part, {0, 1}), 2.0);
    EXPECT_EQ(value(part, {2, 3}), 3.0);
    EXPECT_EQ(value(part, {2, 3}), 4.0);
}

TEST_F(SharedValuesTest, RemembersAPersonAndAZoneInEitherOrderApart)
{
    m_scene.add("Person", 1);
    m_scene.addConstant("Zone");
    m_scene.add("Person", 1);
    m_scene.addConstant("Zone");
    begin();
    const Expression::Node part = node({0, 1});
    std::map<std::pair<FrameView::AgentIndex, FrameView::AgentIndex>, double> first;
    const auto expectFirst = [&](FrameView::AgentIndex a, FrameView::AgentIndex b) {
        const double number = value(part, {a, b});
        EXPECT_EQ(first.try_emplace({a, b}, number).first->second, number);
    };
    for (int pass = 0; pass < 2; ++pass) {
        for (const FrameView::AgentIndex person : {0U, 2U}) {
            for (const FrameView::AgentIndex zone : {1U, 3U}) {
                expectFirst(person, zone);
                expectFirst(zone, person);
            }
        }
    }
    EXPECT_EQ(m_calls, 8);
}

TEST_F(SharedValuesTest, ComputesAnewWhatItHasNoRoomFor)
{
    for (int i = 0; i < 400; ++i) {
        m_scene.add("Person", 1);
        m_scene.addConstant("Zone");
    }
    begin();
    const Expression::Node part = node({0, 1});
    // The last zone's row begins behind the first 2 to the power of 16 cells.
    EXPECT_EQ(value(part, {0, 799}), 1.0);
    EXPECT_EQ(value(part, {0, 799}), 2.0);
    EXPECT_EQ(value(part, {0, 1}), 3.0);
    EXPECT_EQ(value(part, {0, 1}), 3.0);
}

TEST_F(SharedValuesTest, ComputesPartsInsideOthers)
{
    m_scene.add("Person", 1);
    begin();
    const Expression::Node outer = node({0, -1});
    const Expression::Node inner = node({0, -1});
    const FrameView::AgentIndex agent = 0;
    const auto sum = [&] {
        return m_values.value(
            outer, m_view, &agent, [&] { return CSPlainValue::number(100.0 + value(inner, {0})); });
    };
    EXPECT_EQ(sum().m_number, 101.0);
    EXPECT_EQ(sum().m_number, 101.0);
    EXPECT_EQ(value(inner, {0}), 1.0);
}

TEST_F(SharedValuesTest, KeepsValueObjectsForTheFrame)
{
    auto object = std::make_shared<CSDouble>(1.0);
    const std::weak_ptr<CSDouble> watched = object;
    EXPECT_EQ(m_values.keep(object), object.get());
    object.reset();
    EXPECT_FALSE(watched.expired());
    m_values.beginFrame();
    EXPECT_TRUE(watched.expired());
}

TEST_F(SharedValuesTest, WritesKeysByPlaceAmongTheSlotsOrBySlot)
{
    const Constraint p = slotted(call(m_op, attributeOf("p", "P")));
    const Constraint z = slotted(call(m_op, attributeOf("z", "P")));
    EXPECT_EQ(keyOf(*p, slotsOf(*p)), keyOf(*z, slotsOf(*z)));
    EXPECT_NE(keyOf(*p, {}), keyOf(*z, {}));
    EXPECT_EQ(keyOf(*z, {}), keyOf(*z, {0, 1, 2}));
    EXPECT_NE(keyOf(*number(0.0), {}), keyOf(*number(-0.0), {}));
    EXPECT_NE(keyOf(*call(m_op, word("a"), word("b")), {}), keyOf(*call(m_op, word("a 'b")), {}));
}

} // namespace scenariomatch
