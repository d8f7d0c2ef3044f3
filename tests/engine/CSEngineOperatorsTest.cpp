#include "tests/engine/EngineFixture.h"

#include <QDir>

#include <fstream>
#include <iostream>
#include <stdexcept>

namespace scenariomatch
{

namespace
{

using Lines = std::vector<std::string>;

class CSEngineOperators : public EngineFixture
{
protected:
    // The name of the plug-in file whose operator is filed under the name.
    std::string fileOf(const std::string& name) const
    {
        const auto op = m_engine.operators().find(name);
        if (op == m_engine.operators().end()) {
            return "none";
        }
        return toString(op->second->evaluate({}).get());
    }

    std::string readDescription(const std::string& text)
    {
        const std::string file = m_folder.write("operators.txt", text);
        const CapturedStream errors(std::cerr);
        m_engine.readOperatorAgent(file);
        return errors.text();
    }
};

} // namespace

TEST_F(CSEngineOperators, LoadsAPlugInAndIgnoresOtherFiles)
{
    const QDir folder(QStringLiteral(SCENARIOMATCH_TEST_PLUGINS "/mixed"));
    std::ofstream((folder.absolutePath() + QStringLiteral("/notes.txt")).toStdString())
        << "no plug-in";
    ASSERT_EQ(folder.entryList(QDir::Files).size(), 3);
    const std::size_t before = m_engine.operators().size();
    m_engine.m_operatorPluginPath = folder.absolutePath().toStdString();
    const CapturedStream errors(std::cerr);
    const CapturedStream output(std::cout);
    m_engine.setAllOperators();
    EXPECT_EQ(m_engine.operators().size(), before + 1);
    EXPECT_EQ(fileOf("alone"), "alone_operator");
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(output.text(), "");
}

TEST_F(CSEngineOperators, LetsTheLaterOfTwoPlugInsOfOneNameWin)
{
    const QDir folder(QStringLiteral(SCENARIOMATCH_TEST_PLUGINS "/twins"));
    const auto files = folder.entryInfoList(QDir::Files, QDir::Unsorted);
    ASSERT_EQ(files.size(), 2);
    m_engine.m_operatorPluginPath = folder.absolutePath().toStdString();
    m_engine.m_debug = true;
    const CapturedStream output(std::cout);
    m_engine.setAllOperators();
    EXPECT_EQ(fileOf("twin"), files.back().baseName().toStdString());
    EXPECT_EQ(output.text(), "Operator loaded: twin\nOperator loaded: twin\n");
}

TEST_F(CSEngineOperators, LeavesTheTableEmptyWithoutAFolder)
{
    CSEngine engine;
    const CapturedStream errors(std::cerr);
    engine.m_operatorPluginPath = (m_folder.path() / "missing").string();
    engine.setAllOperators();
    EXPECT_TRUE(engine.operators().empty());
    engine.m_operatorPluginPath = m_folder.path().string();
    engine.setAllOperators();
    EXPECT_TRUE(engine.operators().empty());
    engine.m_operatorPluginPath = "";
    engine.setAllOperators();
    EXPECT_TRUE(engine.operators().empty());
    EXPECT_EQ(errors.text(), "");
}

TEST_F(CSEngineOperators, UsesALoadedOperatorInModels)
{
    m_engine.m_operatorPluginPath = SCENARIOMATCH_TEST_PLUGINS "/relation";
    m_engine.setAllOperators();
    publishOperators();
    readModels(
        "PrimitiveState(Same, PhysicalObjects((p : Person)(q : Person))"
        " Constraints((p->P sameNumber q->P)))\n",
        "Same");
    runFrame(1, 1.0, {{1, "Person", 2.0}, {2, "Person", 2.0}, {3, "Person", 1.0}});
    EXPECT_EQ(alive(), Lines({"0 Same 1..1 p=1 q=2", "1 Same 1..1 p=2 q=1"}));
}

TEST_F(CSEngineOperators, CopiesTheTableEvenWithoutADescription)
{
    CConstraint::m_allOperators.clear();
    CConstraint::m_allOperators["stale"] = nullptr;
    m_engine.readOperatorAgent((m_folder.path() / "missing.txt").string());
    EXPECT_EQ(CConstraint::m_allOperators, m_engine.operators());
    EXPECT_EQ(CConstraint::m_allOperators.count("stale"), 0U);
}

TEST_F(CSEngineOperators, ReportsAnOperatorOfADescriptionThatIsNotLoaded)
{
    EXPECT_EQ(
        readDescription("operator beside(p : Person, q : Person) { p->P touches q->P }\n"),
        "Warning: Operator touches is not loaded, you can't use it (in the rules file)\n");
    EXPECT_EQ(m_engine.operators().count("beside"), 0U);
}

TEST_F(CSEngineOperators, AppliesADeclaredOperatorToModels)
{
    EXPECT_EQ(
        readDescription("operator beside(p : Person, q : Person) { p->P near q->P }\n"
                        "operator before(a : Component, b : Component) {\n"
                        "    a->Interval before b->Interval\n}\n"),
        "");
    CSAgent::m_allObjectTypes = {{"Person", {"Person", "Child"}}, {"Child", {"Child"}}};
    const CapturedStream errors(std::cerr);
    readModels(
        "PrimitiveState(Beside, PhysicalObjects((p : Person)(c : Child)) Constraints((p beside "
        "c)))\n"
        "CompositeEvent(Again, PhysicalObjects((p : Person)(c : Child))"
        " Components((a : PrimitiveState Beside(p, c))(b : PrimitiveState Beside(p, c)))"
        " Constraints((a before b)))\n",
        "Beside,Again");
    EXPECT_EQ(errors.text(), "");
    m_engine.rewriteAgentOperator();
    m_engine.m_constProlongation = 1.0;
    runFrame(1, 1.0, {{1, "Person", 2.0}, {2, "Child", 2.5}});
    EXPECT_EQ(alive(), Lines({"0 Beside 1..1 c=2 p=1", "1 Beside 1..1 c=2 p=2"}));
    runFrame(2, 4.0, {{1, "Person", 2.0}, {2, "Child", 9.0}});
    EXPECT_EQ(endedNow(), Lines({"2 Beside 2..2 c=2 p=2"}));
    runFrame(3, 8.0, {{1, "Person", 2.0}, {2, "Child", 2.0}});
    EXPECT_EQ(
        endedNow(),
        Lines({"3 Beside 3..3 c=2 p=1", "4 Beside 3..3 c=2 p=2", "5 Again 1..3 a=0 b=3 c=2 p=1"}));
}

TEST_F(CSEngineOperators, LeavesNoOperatorOfItsOwnBehind)
{
    {
        CSEngine engine;
        const std::string file =
            m_folder.write("own.txt", "operator own(p : Person) { p->P near 1 }\n");
        for (const auto& op : m_operators) {
            engine.addOperator(*op);
        }
        engine.readOperatorAgent(file);
        EXPECT_TRUE(CConstraint::m_allOperators.contains("own"));
    }
    EXPECT_FALSE(CConstraint::m_allOperators.contains("own"));
}

TEST_F(CSEngineOperators, TellsTheEngineAtWorkOfAFailureAfterAnotherOneIsGone)
{
    addOperator("broken", [](const auto&) -> std::shared_ptr<CSBasicType> {
        throw std::runtime_error("on purpose");
    });
    publishOperators();
    readModels(
        "PrimitiveState(Broken, PhysicalObjects((p : Person)) Constraints((broken(p->P))))\n",
        "Broken");
    {
        const CSEngine other;
    }
    runFrame(1, 1.0, {{1, "Person", 1.0}});
    EXPECT_EQ(m_engine.operatorFailures(), 1U);
}

TEST_F(CSEngineOperators, IsFalseForADeclaredOperatorThatFitsNoCall)
{
    EXPECT_EQ(readDescription("operator beside(p : Person, q : Zone) { p->P near q->P }\n"), "");
    const CapturedStream errors(std::cerr);
    readModels(
        "PrimitiveState(Beside, PhysicalObjects((p : Person)(q : Person)) Constraints((p beside "
        "q)))\n",
        "Beside");
    m_engine.rewriteAgentOperator();
    runFrame(1, 1.0, {{1, "Person", 2.0}, {2, "Person", 2.0}});
    EXPECT_EQ(alive(), Lines());
    EXPECT_EQ(m_engine.statistics().tested, 2);
}

TEST_F(CSEngineOperators, FilesOperatorsByName)
{
    FunctionOperator& first = addOperator("mine", [](const auto&) { return nullptr; });
    EXPECT_EQ(m_engine.operators().at("mine"), &first);
    FunctionOperator& second = addOperator("mine", [](const auto&) { return nullptr; });
    EXPECT_EQ(m_engine.operators().at("mine"), &second);
    EXPECT_EQ(CConstraint::m_allOperators.count("mine"), 0U)
        << "not before the description is read";
}

} // namespace scenariomatch
