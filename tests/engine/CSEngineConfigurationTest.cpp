#include "tests/engine/EngineFixture.h"

#include <iostream>
#include <stdexcept>

namespace scenariomatch
{

namespace
{

using Lines = std::vector<std::string>;

const std::string kThere = "PrimitiveState(There, PhysicalObjects((p : Person)))\n";

class CSEngineConfiguration : public EngineFixture
{
protected:
    // What goes wrong while the engine reads the file.
    std::string readEngineFile(const std::string& text, const std::string& name = "engine.txt")
    {
        const std::string file = m_folder.write(name, text);
        const CapturedStream errors(std::cerr);
        const CapturedStream traces(std::cout);
        m_engine.read(file);
        return errors.text();
    }

    std::string readSettings(const std::string& text)
    {
        const std::string file = m_folder.write("settings.txt", text);
        const CapturedStream errors(std::cerr);
        m_engine.readEngine(file);
        return errors.text();
    }

    void readConstants(const std::string& text)
    {
        m_engine.readEnvVars(m_folder.write("constants.txt", text));
    }

    void writeModels(const std::string& name, const std::string& declarations)
    {
        m_folder.write(name, "Scenarios {\nmodels,\n" + declarations + "}\n");
    }

    Lines modelNames() const
    {
        Lines names;
        for (const auto& [kind, models] : m_engine.m_allScenarios->m_scenariosByKind) {
            for (const auto& model : models) {
                names.push_back(model->m_name);
            }
        }
        return names;
    }
};

} // namespace

TEST_F(CSEngineConfiguration, ReadsModelsRelativeToTheEngineFile)
{
    writeModels("deep/models/a.txt", kThere);
    m_folder.write(
        "deep/settings/s.txt", "Engine {\ns,\nUsedModels(There)\nEnvVars(more/c.txt)\n}\n");
    m_folder.write("deep/settings/more/c.txt", "EnvVars {\nc,\nDOUBLE(Limit 2.5)\n}\n");
    EXPECT_EQ(
        readEngineFile(
            "List {\nall,\nincludeEngine(settings/s.txt)\nincludeScenario(models/a.txt)\n}\n",
            "deep/engine.txt"),
        "");
    EXPECT_EQ(modelNames(), Lines({"There"}));
    EXPECT_EQ(m_engine.m_envVars, (std::map<std::string, double>{{"Limit", 2.5}}));
}

TEST_F(CSEngineConfiguration, HasNoModelsWithoutAnEngineFile)
{
    const CapturedStream errors(std::cerr);
    m_engine.read((m_folder.path() / "missing.txt").string());
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(modelNames(), Lines());
    runFrame(1, 1.0, {{1, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
}

TEST_F(CSEngineConfiguration, SkipsFilesThatCannotBeOpened)
{
    EXPECT_EQ(
        readEngineFile(
            "List {\nall,\nincludeEngine(missing.txt)\nincludeScenario(nowhere/models.txt)\n}\n"),
        "");
    m_engine.readEnvVars((m_folder.path() / "missing.txt").string());
    EXPECT_EQ(modelNames(), Lines());
}

TEST_F(CSEngineConfiguration, ReportsEveryUsedModelThatDoesNotExist)
{
    writeModels("models.txt", kThere);
    m_folder.write("settings.txt", "Engine {\ns,\nUsedModels(Here,Nowhere)\n}\n");
    EXPECT_EQ(
        readEngineFile(
            "List {\nall,\nincludeScenario(models.txt)\nincludeEngine(settings.txt)\n}\n"),
        "Warning: the scenario model: Here does not exist!\n"
        "Warning: the scenario model: Nowhere does not exist!\n");
    EXPECT_EQ(modelNames(), Lines());
}

TEST_F(CSEngineConfiguration, UsesTheModelsNamedAlone)
{
    readModels(
        kThere + "PrimitiveState(Other, PhysicalObjects((p : Person)))\n" +
            "PrimitiveState(There, PhysicalObjects((q : Person)))\n",
        "There");
    EXPECT_EQ(modelNames(), Lines({"There", "There"}));
}

TEST_F(CSEngineConfiguration, DropsAModelWithAnUnknownOperator)
{
    const CapturedStream errors(std::cerr);
    readModels(
        "PrimitiveState(Odd, PhysicalObjects((p : Person))"
        " Constraints((p->P beside 2)(p->P above 2)(p->P beyond 2)))\n" +
            kThere,
        "Odd,There");
    EXPECT_EQ(
        errors.text(),
        "Warning: Operator beside is unknown!\n"
        "\t in scenario model Odd. It will not be used!\n"
        "Warning: Operator beyond is unknown!\n"
        "\t in scenario model Odd. It will not be used!\n");
    EXPECT_EQ(modelNames(), Lines({"There"}));
}

TEST_F(CSEngineConfiguration, ReportsAComponentThatIsNotDefined)
{
    const CapturedStream errors(std::cerr);
    readModels(
        kThere + "CompositeEvent(Odd, Components((a : PrimitiveState Gone(p))"
                 "(b : PrimitiveState There(p))))\n",
        "There,Odd");
    EXPECT_EQ(
        errors.text(),
        "Warning: the component Gone is not defined but it is used in the scenario Odd\n");
    const auto odd = m_engine.m_allScenarios->m_scenariosByKind.at("CompositeEvent");
    ASSERT_EQ(odd.size(), 1U) << "the table keeps the model, only the flag is cleared";
    EXPECT_FALSE(odd.front()->m_used);
    runFrame(1, 1.0, {{1, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..1 p=1"}));
    EXPECT_TRUE(m_engine.components().empty()) << "a model that is not used is no parent";
}

TEST_F(CSEngineConfiguration, MustUseSubModelsToo)
{
    const CapturedStream errors(std::cerr);
    readModels(
        kThere + "CompositeEvent(Event, Components((a : PrimitiveState There(p))))\n", "Event");
    EXPECT_EQ(
        errors.text(),
        "Warning: the component There is not defined but it is used in the scenario Event\n");
}

TEST_F(CSEngineConfiguration, DropsALineWithACommentMarkWhole)
{
    writeModels("models.txt", kThere);
    m_folder.write(
        "settings.txt",
        "Engine {\ns,\nUsedModels(There)\nUsedModels(Gone) # not any more\n# "
        "InterestedObjects(X)\n}\n");
    EXPECT_EQ(
        readEngineFile("List {\nall,\nincludeScenario(gone.txt) # old\n#includeEngine(x)\n"
                       "includeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n"),
        "");
    EXPECT_EQ(m_engine.m_usedModels, Lines({"There"}));
    EXPECT_TRUE(m_engine.m_interestedObjects.empty());
    readConstants("EnvVars {\nc,\nDOUBLE(A 1)\nDOUBLE(B 2) # two\n}\n");
    EXPECT_EQ(m_engine.m_envVars, (std::map<std::string, double>{{"A", 1.0}}));
}

TEST_F(CSEngineConfiguration, IgnoresUnknownKeywordsAndLinesWithoutParentheses)
{
    writeModels("models.txt", kThere);
    EXPECT_EQ(readSettings("Engine {\ns,\nVersion(3)\nplain words\nUsedModels(There)\n}\n"), "");
    EXPECT_EQ(
        readEngineFile(
            "List {\nall,\nincludeNothing(x.txt)\nplain\nincludeScenario(models.txt)\n}\n"),
        "");
    EXPECT_EQ(modelNames(), Lines({"There"}));
}

TEST_F(CSEngineConfiguration, SkipsALineThatOnlyClosesAParenthesis)
{
    EXPECT_EQ(readSettings("Engine {\ns,\n)\nUsedModels(A,B)\n}\n"), "");
    EXPECT_EQ(m_engine.m_usedModels, Lines({"A", "B"}));
}

TEST_F(CSEngineConfiguration, TakesABlankBeforeTheParenthesisForPartOfTheKeyword)
{
    EXPECT_EQ(readSettings("Engine {\ns,\nUsedModels (A)\nUsedModels(B)\n}\n"), "");
    EXPECT_EQ(m_engine.m_usedModels, Lines({"B"}));
}

TEST_F(CSEngineConfiguration, ReadsSeveralBlocks)
{
    EXPECT_EQ(
        readSettings("preface\nEngine {\nfirst,\nUsedModels(A)\n}\nbetween UsedModels(X)\n"
                     "Engine\n{\nsecond\n,\nUsedModels(B)\n}\n"),
        "");
    EXPECT_EQ(m_engine.m_usedModels, Lines({"A", "B"}));
}

TEST_F(CSEngineConfiguration, ReadsEntriesOfTheEngineFileUpToTheirFirstBlankOrTab)
{
    writeModels("models.txt", kThere);
    m_folder.write("settings.txt", "Engine {\ns,\nUsedModels(There)\n}\n");
    EXPECT_EQ(
        readEngineFile("List {\nall,\n\tincludeEngine(settings.txt)\trest\n"
                       "  includeScenario(models.txt) rest\n}\n"),
        "");
    EXPECT_EQ(modelNames(), Lines({"There"}));
}

TEST_F(CSEngineConfiguration, RaisesForAnEntryOfTheEngineFileWithABlankInside)
{
    EXPECT_THROW(
        readEngineFile("List {\nall,\nincludeScenario( models.txt)\n}\n"), std::out_of_range);
}

TEST_F(CSEngineConfiguration, RaisesForAnEntryWithNothingAfterTheParenthesis)
{
    EXPECT_THROW(readEngineFile("List {\nall,\nincludeScenario(\n}\n"), std::out_of_range);
    EXPECT_THROW(readConstants("EnvVars {\nc,\nDOUBLE(\n}\n"), std::out_of_range);
}

TEST_F(CSEngineConfiguration, ReadsListsWithBlanksAroundTheItems)
{
    EXPECT_EQ(
        readSettings(
            "Engine {\ns,\n \tUsedModels( A , B ,C)\nInterestedObjects(Door, Front desk )\n}\n"),
        "");
    EXPECT_EQ(m_engine.m_usedModels, Lines({"A", "B", "C"}));
    EXPECT_EQ(m_engine.m_interestedObjects, Lines({"Door", "Front desk"}));
}

TEST_F(CSEngineConfiguration, JoinsTheLinesOfAnEntry)
{
    EXPECT_EQ(
        readSettings("Engine {\ns,\nUsedModels(\n  A,\n\tB\n  ,C\n)\n"
                     "InterestedObjects(Front\n   desk)\nUsedModels(D)\n}\n"),
        "");
    EXPECT_EQ(m_engine.m_usedModels, Lines({"A", "B", "C", "D"}));
    EXPECT_EQ(m_engine.m_interestedObjects, Lines({"Front desk"}));
}

TEST_F(CSEngineConfiguration, DropsCarriageReturns)
{
    writeModels("models.txt", "PrimitiveState(There,\r\nPhysicalObjects((p : Person)))\r\n");
    m_folder.write(
        "settings.txt",
        "Engine {\r\ns,\r\nUsedModels(\r\nThere)\r\nEnvVars(constants.txt)\r\n}\r\n");
    m_folder.write("constants.txt", "EnvVars {\r\nc,\r\nDOUBLE(A 1.5)\r\n}\r\n");
    EXPECT_EQ(
        readEngineFile("List {\r\nall,\r\nincludeEngine(settings.txt)\r\n"
                       "includeScenario(models.txt)\r\n}\r\n"),
        "");
    EXPECT_EQ(modelNames(), Lines({"There"}));
    EXPECT_EQ(m_engine.m_envVars, (std::map<std::string, double>{{"A", 1.5}}));
}

TEST_F(CSEngineConfiguration, ReportsAnEntryThatIsNotClosed)
{
    const std::string file = (m_folder.path() / "settings.txt").string();
    const std::string message =
        "Error reading file: " + file + ". The declaration UsedModels is not closed. Check it!\n";
    EXPECT_EQ(readSettings("Engine {\ns,\nUsedModels(A,\n B\n}\n"), message);
    EXPECT_EQ(readSettings("Engine {\ns,\nUsedModels(A,\n B\n"), message);
    EXPECT_EQ(m_engine.m_usedModels, Lines());
}

TEST_F(CSEngineConfiguration, GoesOnAfterAnEntryThatIsNotClosed)
{
    EXPECT_NE(readSettings("Engine {\ns,\nUsedModels(A\n}\nEngine {\nt,\nUsedModels(B)\n}\n"), "");
    EXPECT_EQ(m_engine.m_usedModels, Lines({"B"}));
}

TEST_F(CSEngineConfiguration, ReadsConstants)
{
    readConstants("EnvVars {\nc,\n\tDOUBLE(Near 2.5)\n  anything(Far  40 )\nDOUBLE(Near 3)\n"
                  "DOUBLE(Odd abc)\nDOUBLE(Tiny 1e-3m)\nno parentheses\n}\n");
    EXPECT_EQ(
        m_engine.m_envVars,
        (std::map<std::string, double>{
            {"Near", 3.0}, {"Far", 40.0}, {"Odd", 0.0}, {"Tiny", 1e-3}}));
}

TEST_F(CSEngineConfiguration, GivesConstantsAndLevelsToTheModelsReadAfterThem)
{
    m_engine.setLevelAlarm("URGENT", 1);
    m_folder.write(
        "constants.txt", "EnvVars {\nc,\nDOUBLE(PrimitiveState 0.5)\nDOUBLE(Limit 2)\n}\n");
    m_folder.write(
        "settings.txt", "Engine {\ns,\nEnvVars(constants.txt)\nUsedModels(Early,Late)\n}\n");
    const std::string sections = ", PhysicalObjects((p : Person)) Constraints((p->P above Limit)) "
                                 "Alarm((Level : URGENT)))\n";
    writeModels("early.txt", "PrimitiveState(Early" + sections);
    writeModels("late.txt", "PrimitiveState(Late" + sections);
    EXPECT_EQ(
        readEngineFile("List {\nall,\nincludeScenario(early.txt)\nincludeEngine(settings.txt)\n"
                       "includeScenario(late.txt)\n}\n"),
        "");
    const auto& models = m_engine.m_allScenarios->m_scenariosByKind.at("PrimitiveState");
    EXPECT_EQ(models.at(0)->m_confidenceThreshold, 0.0);
    EXPECT_EQ(models.at(1)->m_confidenceThreshold, 0.5);
    EXPECT_FALSE(models.at(0)->m_constraints.front()->m_children.at(1)->m_isNumeric);
    EXPECT_TRUE(models.at(1)->m_constraints.front()->m_children.at(1)->m_isNumeric);
    EXPECT_EQ(models.at(0)->m_alarmLevel, 1);
}

TEST_F(CSEngineConfiguration, ForgetsTheConstantsOfAModelFileAtItsEnd)
{
    writeModels(
        "first.txt",
        "CONSTANT(Limit 2)\nPrimitiveState(A, PhysicalObjects((p : Person))"
        " Constraints((p->P above Limit)))\n");
    writeModels(
        "second.txt",
        "PrimitiveState(B, PhysicalObjects((p : Person)) Constraints((p->P above Limit)))\n");
    m_folder.write("settings.txt", "Engine {\ns,\nUsedModels(A,B)\n}\n");
    readEngineFile("List {\nall,\nincludeScenario(first.txt)\nincludeScenario(second.txt)\n"
                   "includeEngine(settings.txt)\n}\n");
    const auto& models = m_engine.m_allScenarios->m_scenariosByKind.at("PrimitiveState");
    EXPECT_TRUE(models.at(0)->m_constraints.front()->m_children.at(1)->m_isNumeric);
    EXPECT_FALSE(models.at(1)->m_constraints.front()->m_children.at(1)->m_isNumeric);
    EXPECT_TRUE(m_engine.m_envVars.empty());
}

TEST_F(CSEngineConfiguration, AnnouncesItsStepsWhenDebugging)
{
    m_engine.m_debug = true;
    const CapturedStream output(std::cout);
    m_engine.read((m_folder.path() / "missing.txt").string());
    EXPECT_EQ(
        output.text(),
        "Initialisation: Read the scenario models\n"
        "Initialisation: Choose the scenario models\n"
        "Initialisation: Check the constraints of the scenario models\n"
        "Initialisation: Check the components of the scenario models\n"
        "Initialisation: Give the value of the constants in the constraints\n"
        "Initialisation: Create the tree model of the scenarios\n");
}

TEST_F(CSEngineConfiguration, PrintsNumbersItFills)
{
    writeModels(
        "models.txt",
        "PrimitiveState(There, PhysicalObjects((p : Person)) Constraints((p->P above 2.50)))\n");
    const std::string file = m_folder.write(
        "engine.txt",
        "List {\nall,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n");
    m_folder.write("settings.txt", "Engine {\ns,\nUsedModels(There)\n}\n");
    const CapturedStream output(std::cout);
    m_engine.read(file);
    EXPECT_EQ(output.text(), "2.5\n");
}

TEST_F(CSEngineConfiguration, SaysNothingUnlessDebugging)
{
    const CapturedStream output(std::cout);
    m_engine.read((m_folder.path() / "missing.txt").string());
    EXPECT_EQ(output.text(), "");
}

TEST_F(CSEngineConfiguration, PassesOnWhatTheReaderOfModelsThrows)
{
    const std::string deep = std::string(300, '(') + "p->P above 2" + std::string(300, ')');
    writeModels("models.txt", "PrimitiveState(There, Constraints(" + deep + "))\n");
    EXPECT_THROW(
        readEngineFile("List {\nall,\nincludeScenario(models.txt)\n}\n"), std::out_of_range);
}

TEST_F(CSEngineConfiguration, NumbersModelsInReadingOrder)
{
    readModels(
        kThere + "CompositeEvent(A, Components((c : PrimitiveState There(p))))\n", "There,A");
    const auto& models = m_engine.m_allScenarios->m_scenariosByKind;
    EXPECT_EQ(
        models.at("CompositeEvent").front()->m_id, models.at("PrimitiveState").front()->m_id + 1);
}

} // namespace scenariomatch
