#include "scenario/CSScenario.h"

#include "tests/scenario/FakeOperators.h"
#include "tests/types/CapturedStream.h"

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace
{

using scenariomatch::CapturedStream;
using scenariomatch::FakeOperator;
using scenariomatch::OperatorNames;
using scenariomatch::treeOf;
using Constants = std::map<std::string, double>;

std::unique_ptr<CSScenario> modelFrom(
    const std::string& text,
    const std::string& kind = "PrimitiveState",
    const Constants& constants = {},
    const std::map<std::string, int>& levels = {})
{
    auto model = std::make_unique<CSScenario>();
    model->read(text, kind, constants, levels);
    return model;
}

std::unique_ptr<CSScenario> modelWithComponents(const std::string& body)
{
    auto model = std::make_unique<CSScenario>();
    model->readComponents(body);
    return model;
}

std::vector<std::string> constraintsOf(const CSScenario& model)
{
    std::vector<std::string> trees;
    for (const std::unique_ptr<CConstraint>& constraint : model.m_constraints) {
        trees.push_back(treeOf(*constraint));
    }
    return trees;
}

TEST(CSScenario, NumbersModelsInReadingOrder)
{
    const int first = CSScenario::m_number;
    EXPECT_EQ(modelFrom("PrimitiveState(A,)")->m_id, first);
    EXPECT_EQ(modelFrom("PrimitiveState(B,)")->m_id, first + 1);
    EXPECT_EQ(CSScenario::m_number, first + 2);
}

TEST(CSScenario, HasNothingWithoutSections)
{
    const auto model = modelFrom("PrimitiveState(Enter,)");
    EXPECT_EQ(model->m_name, "Enter");
    EXPECT_EQ(model->m_kind, "PrimitiveState");
    EXPECT_TRUE(model->m_variablesByType.empty());
    EXPECT_TRUE(model->m_variableTypes.empty());
    EXPECT_TRUE(model->m_physicalObjects.empty());
    EXPECT_TRUE(model->m_components.empty());
    EXPECT_TRUE(model->m_constraints.empty());
    EXPECT_TRUE(model->m_miscellaneous.empty());
    EXPECT_EQ(model->m_alarmLevelName, "");
    EXPECT_EQ(model->m_alarmLevel, 0);
    EXPECT_EQ(model->m_alarmText, "");
    EXPECT_FALSE(model->m_used);
    EXPECT_EQ(model->m_triggerIndex, -1);
    EXPECT_EQ(model->m_skipIndex, -1);
}

TEST(CSScenario, KeepsTheClosingParenthesisInANameWithoutComma)
{
    EXPECT_EQ(modelFrom("PrimitiveState(Enter)")->m_name, "Enter)");
    EXPECT_EQ(modelFrom("PrimitiveState( Enter ,)")->m_name, "Enter ");
}

TEST(CSScenario, TakesTheThresholdFromBrackets)
{
    const auto model = modelFrom("X(Enter[0.7],)", "PrimitiveState", {{"PrimitiveState", 0.2}});
    EXPECT_EQ(model->m_confidenceThreshold, 0.7);
    EXPECT_EQ(model->m_name, "Enter");
    EXPECT_EQ(modelFrom("X(Enter[high],)")->m_confidenceThreshold, 0.0);
    EXPECT_EQ(modelFrom("X(Enter[0.4,)")->m_confidenceThreshold, 0.4);
    EXPECT_EQ(modelFrom("X(Enter[ 0.5x],)")->m_confidenceThreshold, 0.5);
}

TEST(CSScenario, TakesTheThresholdFromTheConstantOfItsKind)
{
    const Constants constants = {{"CompositeEvent", 0.6}};
    EXPECT_EQ(
        modelFrom("CompositeEvent(Meet,)", "CompositeEvent", constants)->m_confidenceThreshold,
        0.6);
}

TEST(CSScenario, EntersAMissingThresholdIntoItsOwnTable)
{
    const Constants constants = {{"Limit", 2.0}};
    const auto model = modelFrom("PrimitiveState(Enter,)", "PrimitiveState", constants);
    EXPECT_EQ(model->m_confidenceThreshold, 0.0);
    EXPECT_EQ(*model->m_constants, (Constants{{"Limit", 2.0}, {"PrimitiveState", 0.0}}));
    EXPECT_EQ(constants.size(), 1U);
}

TEST(CSScenario, ReadsPhysicalObjectsInOrder)
{
    const auto model = modelFrom("PrimitiveState(Inside, PhysicalObjects((p : Person)(z : Zone)))");
    EXPECT_EQ(model->m_physicalObjects, (std::map<int, std::string>{{0, "p"}, {1, "z"}}));
    EXPECT_EQ(
        model->m_variableTypes,
        (std::map<std::string, std::string>{{"p", "Person"}, {"z", "Zone"}}));
    EXPECT_EQ(model->m_variablesByType.at("Person"), std::vector<std::string>{"p"});
}

TEST(CSScenario, IgnoresSeparatorsBetweenPhysicalObjects)
{
    CSScenario model;
    model.readPhysicalObjects("(b:Person ) , ( a : Person);(z:Zone)");
    EXPECT_EQ(model.m_variablesByType.at("Person"), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(model.m_physicalObjects, (std::map<int, std::string>{{0, "b"}, {1, "a"}, {2, "z"}}));
}

TEST(CSScenario, LooksForAMissingColonInAllThatFollows)
{
    CSScenario model;
    model.readPhysicalObjects("(p Person)(z : Zone)");
    EXPECT_EQ(model.m_variableTypes, (std::map<std::string, std::string>{{"p", "Zone"}}));
    CSScenario without;
    without.readPhysicalObjects("(p Person)(z Zone");
    EXPECT_EQ(
        without.m_variableTypes, (std::map<std::string, std::string>{{"p", "p"}, {"z", "z"}}));
}

TEST(CSScenario, RefusesANameThatIsTooLong)
{
    const std::string longest(CSScenario::kMaximumNameLength, 'x');
    CSScenario model;
    model.readPhysicalObjects("(" + longest + " : Person)");
    EXPECT_EQ(model.m_physicalObjects.at(0), longest);
    EXPECT_THROW(model.readPhysicalObjects("(" + longest + "x : Person)"), std::out_of_range);
    EXPECT_THROW(model.readPhysicalObjects("(p : " + longest + "x)"), std::out_of_range);
}

TEST(CSScenario, ReadsAComponent)
{
    const auto model = modelWithComponents("(c1 : PrimitiveState Inside(p1, z1))");
    ASSERT_EQ(model->m_components.size(), 1U);
    const CComponent& component = *model->m_components[0];
    EXPECT_EQ(component.m_variable, "c1");
    EXPECT_EQ(component.m_kind, "PrimitiveState");
    EXPECT_EQ(component.m_modelName, "Inside");
    EXPECT_EQ(component.m_arguments, (std::vector<std::string>{"p1", "z1"}));
    EXPECT_EQ(component.m_minDuration, 1.0);
    EXPECT_EQ(component.m_maxDuration, 1.0);
    EXPECT_EQ(model->m_variableTypes.at("c1"), "Component");
    EXPECT_TRUE(model->m_physicalObjects.empty());
}

TEST(CSScenario, ReadsTheDurationOfAComponent)
{
    const auto model = modelWithComponents(
        "(c1 : PrimitiveState Inside(p1, z1) [2, 10])(c2 : CompositeEvent Meet(p1)[5])");
    ASSERT_EQ(model->m_components.size(), 2U);
    EXPECT_EQ(model->m_components[0]->m_minDuration, 2.0);
    EXPECT_EQ(model->m_components[0]->m_maxDuration, 10.0);
    EXPECT_EQ(model->m_components[0]->m_arguments, (std::vector<std::string>{"p1", "z1"}));
    EXPECT_EQ(model->m_components[1]->m_variable, "c2");
    EXPECT_EQ(model->m_components[1]->m_minDuration, 5.0);
    EXPECT_EQ(model->m_components[1]->m_maxDuration, 1.0);
    EXPECT_EQ(model->m_components[1]->m_arguments, std::vector<std::string>{"p1"});
}

TEST(CSScenario, GivesABracketToTheFirstComponentThatLacksOne)
{
    const auto model = modelWithComponents("(c1 : S A(p))(c2 : S B(q) [2, 3])(c3 : S C(r))");
    ASSERT_EQ(model->m_components.size(), 3U);
    EXPECT_EQ(model->m_components[0]->m_minDuration, 2.0);
    EXPECT_EQ(model->m_components[0]->m_maxDuration, 3.0);
    EXPECT_EQ(model->m_components[1]->m_minDuration, 1.0);
    EXPECT_EQ(model->m_components[1]->m_variable, "c2");
    EXPECT_EQ(model->m_components[1]->m_arguments, std::vector<std::string>{"q"});
    EXPECT_EQ(model->m_components[2]->m_arguments, std::vector<std::string>{"r"});
}

TEST(CSScenario, TakesAllThatFollowsWhereABracketIsNotClosed)
{
    const auto model = modelWithComponents("(c1 : S A(p) [4 (c2 : S B(q))");
    ASSERT_EQ(model->m_components.size(), 1U);
    EXPECT_EQ(model->m_components[0]->m_minDuration, 4.0);
    EXPECT_EQ(model->m_components[0]->m_arguments, std::vector<std::string>{"p"});
}

TEST(CSScenario, ReadsAComponentWithoutArguments)
{
    const auto model = modelWithComponents("(c1 : S A())");
    EXPECT_EQ(model->m_components[0]->m_arguments, std::vector<std::string>{""});
}

TEST(CSScenario, ReadsAnEmptyComponentWhereNoParenthesisCloses)
{
    const auto model = modelWithComponents("(c1 : S A");
    ASSERT_EQ(model->m_components.size(), 1U);
    EXPECT_EQ(model->m_components[0]->m_variable, "");
    EXPECT_TRUE(model->m_components[0]->m_arguments.empty());
}

TEST(CSScenario, ReadsEachConstraintOfItsGroup)
{
    CSScenario model;
    model.readConstraints("(p->Position in z->Vertices) and (distance(p->P, z->P) < 2)");
    EXPECT_EQ(
        constraintsOf(model),
        (std::vector<std::string>{"in[p->Position, z->Vertices]", "<[distance[p->P, z->P], 2]"}));
}

TEST(CSScenario, ReadsTheAlarm)
{
    std::map<std::string, int> levels = {{"URGENT", 3}};
    CSScenario model;
    model.readAlarm("(Level : URGENT)( Text : Somebody is  inside )(Colour : red)", levels);
    EXPECT_EQ(model.m_alarmLevelName, "URGENT");
    EXPECT_EQ(model.m_alarmLevel, 3);
    EXPECT_EQ(model.m_alarmText, "Somebody is  inside ");
}

TEST(CSScenario, GivesAnUnknownAlarmLevelZero)
{
    std::map<std::string, int> levels = {{"URGENT", 3}};
    CSScenario model;
    model.m_alarmLevel = 7;
    model.readAlarm("(Level : LOUD)", levels);
    EXPECT_EQ(model.m_alarmLevelName, "LOUD");
    EXPECT_EQ(model.m_alarmLevel, 0);
    EXPECT_EQ(levels.size(), 1U);
}

TEST(CSScenario, ReadsTheFirstMiscellaneousClauseOnly)
{
    CSScenario model;
    model.readMiscellaneous(" (Merge one, (Start c1)( threshold  5 )(Start c2) ) (Other, (A b))");
    using Values = std::map<std::string, std::string>;
    EXPECT_EQ(
        model.m_miscellaneous,
        (std::map<std::string, Values>{{"Merge", {{"Start", "c2"}, {"threshold", "5"}}}}));
}

TEST(CSScenario, ReplacesAMiscellaneousClauseOfTheSameName)
{
    CSScenario model;
    model.readMiscellaneous("(Merge, (Start c1))");
    model.readMiscellaneous("(Merge, (End c2)(Word))");
    using Values = std::map<std::string, std::string>;
    EXPECT_EQ(model.m_miscellaneous.at("Merge"), (Values{{"End", "c2"}, {"Word", "Word"}}));
}

TEST(CSScenario, ReadsSectionsInAnyOrderAndMoreThanOnce)
{
    const auto model = modelFrom(
        "CompositeEvent(Meet, Constraints((c1 before c2)) PhysicalObjects((p : Person)) "
        "Components((c1 : PrimitiveState A(p))) PhysicalObjects((q : Person)) "
        "Alarm((Text : Hello)) Miscellaneous((Merge, (Start c1))) Constraints((c2 after c1)))",
        "CompositeEvent");
    EXPECT_EQ(model->m_physicalObjects, (std::map<int, std::string>{{0, "p"}, {1, "q"}}));
    EXPECT_EQ(constraintsOf(*model), (std::vector<std::string>{"before[c1, c2]", "after[c2, c1]"}));
    EXPECT_EQ(model->m_components.size(), 1U);
    EXPECT_EQ(model->m_alarmText, "Hello");
    EXPECT_EQ(model->m_miscellaneous.size(), 1U);
}

TEST(CSScenario, ReportsAnUnknownKeywordAndReadsOn)
{
    const CapturedStream errors(std::cerr);
    const auto model = modelFrom(
        "PrimitiveState(Enter[0.5], physicalobjects((p : Person)) PhysicalObjects((z : Zone)))");
    EXPECT_EQ(
        errors.text(),
        "Error, [CSScenario] physicalobjects is an unknown keyword to describe a scenario "
        "[Enter]!\n");
    EXPECT_EQ(model->m_physicalObjects, (std::map<int, std::string>{{0, "z"}}));
}

TEST(CSScenario, TakesATabForPartOfAKeyword)
{
    const CapturedStream errors(std::cerr);
    modelFrom("PrimitiveState(Enter,\tConstraints((a < b)))");
    EXPECT_EQ(
        errors.text(),
        "Error, [CSScenario] \tConstraints is an unknown keyword to describe a scenario "
        "[Enter]!\n");
}

TEST(CSScenario, PrintsItself)
{
    const auto model = modelFrom(
        "CompositeEvent(Meet, PhysicalObjects((p : Person)(q : Person)) "
        "Components((c1 : PrimitiveState Inside(p) [2, 3])) Constraints((p near q)(p)))",
        "CompositeEvent");
    const CapturedStream output(std::cout);
    model->print();
    EXPECT_EQ(
        output.text(),
        "ID " + std::to_string(model->m_id) +
            " Meet\n"
            "Physical Objects: (p,Person) (q,Person) \n"
            "Components:\n"
            "\t\tc1 PrimitiveState Inside p [2,3]\n"
            "Constraints:\n"
            "\t\tOperator: near\n"
            "Operator: NULL\n"
            "Value: p\n"
            "Operator: NULL\n"
            "Value: q\n"
            "\t\tOperator: NULL\n"
            "Value: p\n");
}

TEST(CSScenario, ClassifiesAllNodesThatHaveAnOperator)
{
    FakeOperator before("before", true);
    FakeOperator conjunction("and");
    const OperatorNames names({&before, &conjunction});
    CSScenario model;
    model.readConstraints("((c1 before c2) and c3)(unknown(c1) before c2)");
    model.m_constraints[0]->m_isTemporal = true;
    model.classifyConstraints();
    EXPECT_FALSE(model.m_constraints[0]->m_isTemporal);
    EXPECT_TRUE(model.m_constraints[0]->m_children[0]->m_isTemporal);
    EXPECT_FALSE(model.m_constraints[0]->m_children[1]->m_isTemporal);
    EXPECT_TRUE(model.m_constraints[1]->m_isTemporal);
    EXPECT_FALSE(model.m_constraints[1]->m_children[0]->m_isTemporal);
}

TEST(CSScenario, FillsItsConstraintsFromItsOwnConstants)
{
    const auto model =
        modelFrom("PrimitiveState(A, Constraints((p->X < Limit)(2 < 3)))", "", {{"Limit", 4.0}});
    const CapturedStream output(std::cout);
    model->fillConstraintsConstants();
    EXPECT_EQ(output.text(), "2\n3\n");
    EXPECT_EQ(model->m_constraints[0]->m_children[1]->m_numericValue, 4.0);
}

TEST(CSScenario, ReadsMegabytesWithoutLosingTime)
{
    constexpr std::size_t kBytes = 1U << 19U;
    std::string sections;
    std::string components;
    for (std::size_t i = 0; i < kBytes / 20; ++i) {
        sections += "Alarm((Text : a))";
        components += "(a:b c(d))";
    }
    const std::size_t count = kBytes / 20;
    modelFrom("PrimitiveState(A," + sections + ")");
    EXPECT_EQ(modelWithComponents(components)->m_components.size(), count);
    for (std::size_t i = 0; i < count; ++i) {
        components += "[1]";
    }
    EXPECT_EQ(modelWithComponents(components)->m_components.size(), count);
    CSScenario model;
    EXPECT_THROW(model.readPhysicalObjects(std::string(kBytes, '(')), std::out_of_range);
    const std::string nested = std::string(kBytes / 2, '(') + std::string(kBytes / 2, ')');
    EXPECT_EQ(modelWithComponents(nested)->m_components.size(), 1U);
    EXPECT_NO_THROW(model.readAlarm(nested, {}));
    EXPECT_NO_THROW(model.readMiscellaneous(nested));
    EXPECT_THROW(model.readConstraints("(" + nested + ")"), std::out_of_range);
}

} // namespace
