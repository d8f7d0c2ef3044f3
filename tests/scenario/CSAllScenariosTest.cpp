#include "scenario/CSAllScenarios.h"

#include "tests/scenario/FakeOperators.h"
#include "tests/types/CapturedStream.h"
#include "tests/types/TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using scenariomatch::CapturedStream;
using scenariomatch::FakeOperator;
using scenariomatch::OperatorNames;
using scenariomatch::TemporaryFile;
using scenariomatch::treeOf;
using Constants = std::map<std::string, double>;

// The models of one text, and what was written to standard error.
struct ReadModels
{
    CSAllScenarios m_scenarios;
    std::string m_errors;

    explicit ReadModels(const std::string& text, const Constants& constants = {})
    {
        const TemporaryFile file(text);
        const CapturedStream errors(std::cerr);
        m_scenarios.read(file.path(), constants, {{"URGENT", 3}});
        m_errors = errors.text();
        const std::size_t path = m_errors.find(file.path());
        if (path != std::string::npos) {
            m_errors.replace(path, file.path().size(), "FILE");
        }
    }

    std::vector<std::string> names(const std::string& kind) const
    {
        std::vector<std::string> names;
        const auto models = m_scenarios.m_scenariosByKind.find(kind);
        if (models != m_scenarios.m_scenariosByKind.end()) {
            for (const auto& model : models->second) {
                names.push_back(model->m_name);
            }
        }
        return names;
    }

    const CSScenario& model(const std::string& kind, std::size_t index) const
    {
        return *m_scenarios.m_scenariosByKind.at(kind).at(index);
    }
};

using Names = std::vector<std::string>;

TEST(CSAllScenarios, ReadsModelsOfAllKindsInOrder)
{
    const ReadModels read("Scenarios{Lobby,\n"
                          "PrimitiveState(B,)\n"
                          "CompositeEvent(D,)\n"
                          "PrimitiveState(A,)\n"
                          "PrimitiveEvent(C,)\n"
                          "CompositeState(E,)\n"
                          "}\n");
    EXPECT_EQ(read.m_scenarios.m_name, "Lobby");
    EXPECT_EQ(read.names("PrimitiveState"), (Names{"B", "A"}));
    EXPECT_EQ(read.names("PrimitiveEvent"), Names{"C"});
    EXPECT_EQ(read.names("CompositeState"), Names{"E"});
    EXPECT_EQ(read.names("CompositeEvent"), Names{"D"});
    EXPECT_EQ(read.model("PrimitiveState", 0).m_kind, "PrimitiveState");
    EXPECT_LT(read.model("CompositeEvent", 0).m_id, read.model("PrimitiveState", 1).m_id);
    EXPECT_EQ(read.m_errors, "");
}

TEST(CSAllScenarios, FindsTheHeaderOverSeveralLines)
{
    const ReadModels read("some words\nPrimitiveState(X,)\nScenarios\n{\n  Lobby one\n , more\n"
                          "PrimitiveState(A,)\n}\nPrimitiveState(B,)\n");
    EXPECT_EQ(read.m_scenarios.m_name, "Lobby");
    EXPECT_EQ(read.names("PrimitiveState"), Names{"A"});
    EXPECT_EQ(read.m_errors, "");
}

TEST(CSAllScenarios, HasNoModelsWithoutHeader)
{
    const ReadModels read("PrimitiveState(A,)\n}\n");
    EXPECT_TRUE(read.m_scenarios.m_scenariosByKind.empty());
    EXPECT_EQ(read.m_scenarios.m_name, "");
    EXPECT_EQ(read.m_errors, "");
}

TEST(CSAllScenarios, IgnoresAFileThatCannotBeOpened)
{
    CSAllScenarios scenarios;
    scenarios.m_name = "Before";
    const CapturedStream errors(std::cerr);
    scenarios.read("/no/such/folder/models.txt", {}, {});
    scenarios.read(std::filesystem::temp_directory_path().string(), {}, {});
    EXPECT_EQ(scenarios.m_name, "Before");
    EXPECT_TRUE(scenarios.m_scenariosByKind.empty());
    EXPECT_EQ(errors.text(), "");
}

TEST(CSAllScenarios, ReadsADeclarationOverSeveralLines)
{
    const ReadModels read("Scenarios{L,\r\n"
                          "PrimitiveState\r\n"
                          "  ( Inside,\r\n"
                          "\r\n"
                          "  PhysicalObjects(\r\n"
                          "    (p : Person)  \r\n"
                          "    (z : Zone)\r\n"
                          "  )\r\n"
                          "  Constraints(\r\n"
                          "    (p->Position in\r\n"
                          "       z->Vertices\r\n"
                          "    )\r\n"
                          "    (near(p->Position\r\n"
                          "      , z->Position) <\r\n"
                          "      2)\r\n"
                          "  )\r\n"
                          "  Alarm((Level : URGENT)(Text : Somebody\r\n"
                          "    is inside)))\r\n"
                          "}\r\n");
    EXPECT_EQ(read.m_errors, "");
    ASSERT_EQ(read.names("PrimitiveState"), Names{"Inside"});
    const CSScenario& model = read.model("PrimitiveState", 0);
    EXPECT_EQ(model.m_physicalObjects, (std::map<int, std::string>{{0, "p"}, {1, "z"}}));
    ASSERT_EQ(model.m_constraints.size(), 2U);
    EXPECT_EQ(treeOf(*model.m_constraints[0]), "in[p->Position, z->Vertices]");
    EXPECT_EQ(treeOf(*model.m_constraints[1]), "<[near[p->Position, z->Position], 2]");
    EXPECT_EQ(model.m_alarmText, "Somebody is inside");
    EXPECT_EQ(model.m_alarmLevel, 3);
}

TEST(CSAllScenarios, ReadsConstantsForTheModelsAfterThem)
{
    const ReadModels read(
        "Scenarios{L,\nPrimitiveState(A,)\nCONSTANT(PrimitiveState 0.25)\nCONSTANT( Far 1e2 )\n"
        "PrimitiveState(B,)\nCONSTANT(Limit 9)\n}\n",
        {{"Limit", 3.0}});
    EXPECT_EQ(read.model("PrimitiveState", 0).m_confidenceThreshold, 0.0);
    EXPECT_EQ(read.model("PrimitiveState", 1).m_confidenceThreshold, 0.25);
    EXPECT_EQ(
        *read.model("PrimitiveState", 1).m_constants,
        (Constants{{"Far", 100.0}, {"Limit", 3.0}, {"PrimitiveState", 0.25}}));
    EXPECT_EQ(read.m_scenarios.m_constants.at("Limit"), 9.0);
}

TEST(CSAllScenarios, ReadsADecimalPointOnly)
{
    CSAllScenarios scenarios;
    scenarios.readConstants("CONSTANT(A 1.5)");
    scenarios.readConstants("CONSTANT(B   -2 )");
    scenarios.readConstants("CONSTANT(C 1,5)");
    scenarios.readConstants("CONSTANT(D none)");
    EXPECT_EQ(scenarios.m_constants, (Constants{{"A", 1.5}, {"B", -2.0}, {"C", 1.0}, {"D", 0.0}}));
}

TEST(CSAllScenarios, ForgetsTheConstantsOfTheFileBefore)
{
    const TemporaryFile first("Scenarios{A,\nCONSTANT(Limit 9)\nPrimitiveState(X,)\n}\n");
    const TemporaryFile second("Scenarios{B,\nPrimitiveState(X,)\n}\n");
    CSAllScenarios scenarios;
    scenarios.read(first.path(), {}, {});
    scenarios.read(second.path(), {}, {});
    EXPECT_EQ(scenarios.m_name, "B");
    const auto& models = scenarios.m_scenariosByKind.at("PrimitiveState");
    ASSERT_EQ(models.size(), 2U);
    EXPECT_EQ(models[0]->m_name, models[1]->m_name);
    EXPECT_TRUE(models[0]->m_constants->contains("Limit"));
    EXPECT_FALSE(models[1]->m_constants->contains("Limit"));
}

TEST(CSAllScenarios, KeepsBothModelsWhenTwoFilesDeclareOneName)
{
    const TemporaryFile first("Scenarios{A,\nPrimitiveState(X, Alarm((Text : first)))\n}\n");
    const TemporaryFile second("Scenarios{B,\nPrimitiveState(X, Alarm((Text : second)))\n"
                               "CompositeEvent(X, Alarm((Text : third)))\n}\n");
    CSAllScenarios scenarios;
    scenarios.read(first.path(), {}, {});
    scenarios.read(second.path(), {}, {});
    const auto& states = scenarios.m_scenariosByKind.at("PrimitiveState");
    ASSERT_EQ(states.size(), 2U);
    EXPECT_EQ(states[0]->m_name, "X");
    EXPECT_EQ(states[0]->m_alarmText, "first");
    EXPECT_EQ(states[1]->m_name, "X");
    EXPECT_EQ(states[1]->m_alarmText, "second");
    const auto& events = scenarios.m_scenariosByKind.at("CompositeEvent");
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0]->m_name, "X");
    EXPECT_EQ(events[0]->m_alarmText, "third");
    EXPECT_NE(states[0]->m_id, states[1]->m_id);
}

TEST(CSAllScenarios, SharesTheConstantsOfModelsWithNoConstantBetween)
{
    const ReadModels read("Scenarios{L,\nCONSTANT(Far 7)\n"
                          "PrimitiveState(A[0.5],)\nPrimitiveState(B,)\nPrimitiveState(C[0.5],)\n"
                          "PrimitiveState(D,)\nCONSTANT(Far 8)\nPrimitiveState(E[0.5],)\n}\n");
    const auto table = [&](std::size_t index) {
        return read.model("PrimitiveState", index).m_constants;
    };
    EXPECT_EQ(*table(0), (Constants{{"Far", 7.0}}));
    EXPECT_EQ(table(2), table(0));
    EXPECT_EQ(*table(1), (Constants{{"Far", 7.0}, {"PrimitiveState", 0.0}}));
    EXPECT_EQ(table(3), table(1));
    EXPECT_EQ(*table(4), (Constants{{"Far", 8.0}}));
    EXPECT_EQ(read.m_scenarios.m_constants, (Constants{{"Far", 8.0}}));
}

// A table for each model would take tens of gigabytes.
TEST(CSAllScenarios, KeepsNoTableOfConstantsPerModel)
{
    std::string text = "Scenarios{L,\n";
    for (int i = 0; i < 20'000; ++i) {
        text += "CONSTANT(Limit" + std::to_string(i) + " 1)\n";
    }
    for (int i = 0; i < 20'000; ++i) {
        text += "PrimitiveState(A,)\nPrimitiveEvent(B[0.5],)\n";
    }
    const ReadModels read(text + "}\n");
    EXPECT_EQ(read.names("PrimitiveState").size(), 20'000U);
    EXPECT_EQ(read.model("PrimitiveState", 19'999).m_constants->size(), 20'001U);
    EXPECT_EQ(read.model("PrimitiveEvent", 19'999).m_constants->size(), 20'000U);
}

TEST(CSAllScenarios, ReportsAnUnknownWordAndReadsOn)
{
    const ReadModels read("Scenarios{L,\nPrimitveState(A,)\nPrimitiveState(B,)\n}\n");
    EXPECT_EQ(
        read.m_errors,
        "Error reading file: FILE. The word PrimitveState is not recognised. Check it!\n");
    EXPECT_EQ(read.names("PrimitiveState"), Names{"B"});
}

TEST(CSAllScenarios, TakesTextWithoutParenthesesForPartOfTheNextDeclaration)
{
    const ReadModels read("Scenarios{L,\n# a comment\nPrimitiveState(A,)\nPrimitiveState(B,)\n}\n");
    EXPECT_EQ(read.m_errors, "Error reading file: FILE. The word # is not recognised. Check it!\n");
    EXPECT_EQ(read.names("PrimitiveState"), Names{"B"});
}

TEST(CSAllScenarios, ReportsADeclarationThatIsOpenAtTheEndOfTheBlock)
{
    const ReadModels read(
        "Scenarios{L,\nPrimitiveState(A,)\nCompositeEvent(B,\n  Constraints(\n}\n");
    EXPECT_EQ(
        read.m_errors,
        "Error reading file: FILE. The declaration CompositeEvent is not closed. Check it!\n");
    EXPECT_EQ(read.names("PrimitiveState"), Names{"A"});
    EXPECT_TRUE(read.names("CompositeEvent").empty());
}

TEST(CSAllScenarios, ReportsADeclarationThatIsOpenAtTheEndOfTheFile)
{
    const ReadModels read("Scenarios{L,\nPrimitiveState(A,");
    EXPECT_EQ(
        read.m_errors,
        "Error reading file: FILE. The declaration PrimitiveState is not closed. Check it!\n");
}

TEST(CSAllScenarios, GathersUntilSurplusClosingParenthesesAreBalanced)
{
    const ReadModels read("Scenarios{L,\nPrimitiveState(A,))\nPrimitiveState((B,)\n}\n");
    EXPECT_EQ(read.names("PrimitiveState"), Names{"A"});
    EXPECT_EQ(
        read.m_errors,
        "Error, [CSScenario] )) is an unknown keyword to "
        "describe a scenario [A]!\n");
}

TEST(CSAllScenarios, PassesOnWhatTheConstraintReaderThrows)
{
    const TemporaryFile file(
        "Scenarios{L,\nPrimitiveState(A,)\nPrimitiveState(B, Constraints((" +
        std::string(300, '(') + std::string(300, ')') + ")))\nPrimitiveState(C,)\n}\n");
    CSAllScenarios scenarios;
    EXPECT_THROW(scenarios.read(file.path(), {}, {}), std::out_of_range);
    EXPECT_EQ(scenarios.m_scenariosByKind.at("PrimitiveState").size(), 1U);
}

TEST(CSAllScenarios, PreparesAndPrintsEveryModel)
{
    FakeOperator before("before", true);
    const OperatorNames names({&before});
    const ReadModels read("Scenarios{L,\nCONSTANT(Limit 3)\n"
                          "PrimitiveState(A, Constraints((Limit before 2)))\n"
                          "CompositeEvent(B, Constraints((c1 before Limit)))\n}\n");
    const CapturedStream output(std::cout);
    read.m_scenarios.fillConstraintsConstants();
    read.m_scenarios.classifyConstraints();
    EXPECT_EQ(output.text(), "2\n");
    const CConstraint& first = *read.model("CompositeEvent", 0).m_constraints[0];
    const CConstraint& second = *read.model("PrimitiveState", 0).m_constraints[0];
    EXPECT_EQ(treeOf(first), "before[c1, #3.000000]");
    EXPECT_EQ(treeOf(second), "before[#3.000000, #2.000000]");
    EXPECT_TRUE(first.m_isTemporal);
    EXPECT_TRUE(second.m_isTemporal);
    read.m_scenarios.print();
    EXPECT_NE(output.text().find(" B\nPhysical Objects: \n"), std::string::npos);
    EXPECT_LT(output.text().find(" B\n"), output.text().find(" A\n"));
}

TEST(CSAllScenarios, ReadsMegabytesWithoutLosingTime)
{
    std::string text = "Scenarios{L,\n";
    for (int i = 0; i < 20'000; ++i) {
        text += "PrimitiveState(A,\n  PhysicalObjects(\n    (p : Person))\n)\n";
    }
    EXPECT_EQ(ReadModels(text + "}\n").names("PrimitiveState").size(), 20'000U);
    const std::string open = "Scenarios{L,\n" + std::string(1U << 20U, '(');
    EXPECT_EQ(
        ReadModels(open).m_errors,
        "Error reading file: FILE. The declaration  is not closed. Check it!\n");
    std::string lines = "Scenarios{L,\n";
    for (int i = 0; i < 200'000; ++i) {
        lines += "(\n";
    }
    EXPECT_EQ(ReadModels(lines).names("PrimitiveState").size(), 0U);
}

} // namespace
