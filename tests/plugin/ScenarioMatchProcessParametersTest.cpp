#include "ProcessFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace
{

using testing::HasSubstr;
using testing::Not;

class ScenarioMatchProcessParameters : public scenariomatch::ProcessFixture
{
protected:
    void read(const std::string& file)
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        m_process->readEngineParametersFromFile(file);
        m_output = testing::internal::GetCapturedStdout();
        m_errors = testing::internal::GetCapturedStderr();
    }

    void readData(const std::string& name)
    {
        read(std::string(SCENARIOMATCH_TEST_DATA) + "/plugin/" + name);
    }

    void readKey(const std::string& line)
    {
        writeFile("p.yml", "%YAML:1.0\n" + line + "\n");
        read(path("p.yml"));
    }

    std::string value(const std::string& name) const
    {
        return m_process->parameter(name).value_or("(unknown)");
    }

    std::string all() const
    {
        std::string text;
        for (const auto& name : m_process->parameterNames()) {
            text += name + "=" + value(name) + "\n";
        }
        return text;
    }
};

constexpr const char* kDefaults = "debug=false\n"
                                  "scenarioRecognitionObjectDescription=\n"
                                  "scenarioRecognitionOperatorDescription=\n"
                                  "scenarioRecognitionModelFileName=\n"
                                  "OperatorPluginPath=\n"
                                  "scenarioRecognitionMaximumScenarioLife=3600\n"
                                  "constProlongation=5\n"
                                  "constTimeSearch=60\n"
                                  "historySize=10\n"
                                  "saveXML3File=false\n"
                                  "saveXML1File=false\n"
                                  "XML3AlarmLevel=NOTURGENT\n"
                                  "XML3FileName=\n"
                                  "XML1FileName=\n"
                                  "PersonSittingMaxHeight=1.3\n"
                                  "RHMContext=\n"
                                  "EventsToNotify=\n"
                                  "BayesianRatio=1\n"
                                  "ConfidencePrimitiveState=0.1\n"
                                  "ConfidencePrimitiveEvent=0.7\n"
                                  "ConfidenceCompositeState=0.7\n"
                                  "ConfidenceCompositeEvent=0.7\n"
                                  "MaximumCandidates=0\n";

} // namespace

TEST_F(ScenarioMatchProcessParameters, StartWithTheirDefaults)
{
    EXPECT_EQ(all(), kDefaults);
}

TEST_F(ScenarioMatchProcessParameters, KeepDefaultsWithoutAFileAfterOneMessage)
{
    read(path("missing.yml"));
    EXPECT_EQ(all(), kDefaults);
    EXPECT_EQ(m_output, "\nConfiguration file is not found. Assuming Default Values\n");
    EXPECT_EQ(m_errors, "");
    read("");
    EXPECT_EQ(m_output, "\nConfiguration file is not found. Assuming Default Values\n");
    EXPECT_EQ(m_errors, "");
}

TEST_F(ScenarioMatchProcessParameters, TakeAFileThatCannotBeParsedForMissing)
{
    for (const char* name : {"broken.yml", "foreign.txt", ""}) {
        readData(name);
        EXPECT_EQ(m_output, "\nConfiguration file is not found. Assuming Default Values\n") << name;
        EXPECT_EQ(m_errors, "") << name;
        EXPECT_EQ(all(), kDefaults) << name;
    }
}

TEST_F(ScenarioMatchProcessParameters, LogWhyAFileThatIsThereIsNotTaken)
{
    read(path("missing.yml"));
    EXPECT_THAT(m_log, testing::IsEmpty());
    read(testing::TempDir());
    EXPECT_THAT(
        m_log, testing::ElementsAre(HasSubstr(testing::TempDir() + ": it is no ordinary file")));
}

TEST_F(ScenarioMatchProcessParameters, AreReadFromYaml)
{
    readData("parameters.yml");
    EXPECT_EQ(m_output, "");
    EXPECT_EQ(m_errors, "");
    EXPECT_TRUE(m_process->getParamDebug());
    EXPECT_EQ(m_process->getParamScenarioRecognitionObjectDescription(), "objects.txt");
    EXPECT_EQ(m_process->getParamScenarioRecognitionOperatorDescription(), "operators.txt");
    EXPECT_EQ(m_process->getParamScenarioRecognitionModelFileName(), "engine.txt");
    EXPECT_EQ(m_process->getParamOperatorPluginPath(), "/opt/operators");
    EXPECT_EQ(m_process->getParamScenarioRecognitionMaximumScenarioLife(), 100);
    EXPECT_EQ(m_process->getParamConstProlongation(), -1);
    EXPECT_EQ(m_process->getParamConstTimeSearch(), 13);
    EXPECT_EQ(m_process->getParamHistorySize(), 25);
    EXPECT_TRUE(m_process->getParamSaveXML3File());
    EXPECT_TRUE(m_process->getParamSaveXML1File());
    EXPECT_EQ(m_process->getParamXML3AlarmLevel(), "URGENT");
    EXPECT_EQ(m_process->getParamXML3FileName(), "events3.xml");
    EXPECT_EQ(m_process->getParamXML1FileName(), "events1.xml");
    EXPECT_EQ(m_process->getParamPersonSittingMax3dHeight(), 1.25);
    EXPECT_EQ(value("RHMContext"), "lobby.xml");
    EXPECT_EQ(value("EventsToNotify"), "Enter,Leave");
    m_process->setParamXML3FileName("");
}

TEST_F(ScenarioMatchProcessParameters, AreReadFromXml)
{
    readData("parameters.xml");
    EXPECT_EQ(m_output, "");
    EXPECT_EQ(m_errors, "");
    EXPECT_TRUE(m_process->getParamDebug());
    EXPECT_EQ(m_process->getParamScenarioRecognitionOperatorDescription(), "with blanks.txt");
    EXPECT_EQ(m_process->getParamConstProlongation(), 7);
    EXPECT_EQ(m_process->getParamConstTimeSearch(), 12);
    EXPECT_FALSE(m_process->getParamSaveXML1File());
    EXPECT_EQ(m_process->getParamPersonSittingMax3dHeight(), 1.25);
    EXPECT_EQ(value("EventsToNotify"), "Enter,Leave");
    m_process->setParamXML3FileName("");
}

TEST_F(ScenarioMatchProcessParameters, AreTheSameUnderADecimalComma)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
        GTEST_SKIP() << "the locale is not installed";
    }
    readData("parameters.yml");
    EXPECT_EQ(value("PersonSittingMaxHeight"), "1.25");
    EXPECT_EQ(m_process->getParamConstTimeSearch(), 13);
    m_process->setParamXML3FileName("");
    EXPECT_NE(std::setlocale(LC_ALL, before.c_str()), nullptr);
}

TEST_F(ScenarioMatchProcessParameters, AreToldOneByOneWhenMissing)
{
    readData("empty.yml");
    EXPECT_EQ(all(), kDefaults);
    EXPECT_EQ(m_output, "");
    EXPECT_EQ(
        m_errors,
        "The parameter, debug, is missing, default value is used: 0\n"
        "The parameter, scenarioRecognitionObjectDescription, is missing, default value is used: \n"
        "The parameter, scenarioRecognitionOperatorDescription, is missing, default value is used: "
        "\n"
        "The parameter, scenarioRecognitionModelFileName, is missing, default value is used: \n"
        "The parameter, OperatorPluginPath, is missing, default value is used: \n"
        "The parameter, scenarioRecognitionMaximumScenarioLife, is missing, default value is used: "
        "3600\n"
        "The parameter, constProlongation, is missing, default value is used: 5\n"
        "The parameter, constTimeSearch, is missing, default value is used: 60\n"
        "The parameter, historySize, is missing, default value is used: 10\n"
        "The parameter, saveXML3File, is missing, default value is used: 0\n"
        "The parameter, saveXML1File, is missing, default value is used: 0\n"
        "The parameter, XML3AlarmLevel, is missing, default value is used: NOTURGENT\n"
        "The parameter, XML3FileName, is missing, default value is used: NOTURGENT\n"
        "The parameter, XML1FileName, is missing, default value is used: NOTURGENT\n"
        "The parameter, PersonSittingMaxHeight, is missing, default value is used: 1.3\n"
        "The parameter, RHMContext, is missing, default value is used\n"
        "The parameter, RHMContext, is missing, default value is used\n");
}

TEST_F(ScenarioMatchProcessParameters, ShowTheirCurrentValueWhenMissing)
{
    m_process->setParamDebug(true);
    m_process->setParamOperatorPluginPath("/my/operators");
    m_process->setParamHistorySize(0);
    m_process->setParamPersonSittingMax3dHeight(1.23456789);
    readData("empty.yml");
    EXPECT_THAT(m_errors, HasSubstr("debug, is missing, default value is used: 1\n"));
    EXPECT_THAT(
        m_errors,
        HasSubstr("OperatorPluginPath, is missing, default value is used: /my/operators\n"));
    EXPECT_THAT(m_errors, HasSubstr("historySize, is missing, default value is used: 0\n"));
    EXPECT_THAT(
        m_errors,
        HasSubstr("PersonSittingMaxHeight, is missing, default value is used: 1.23457\n"));
}

TEST_F(ScenarioMatchProcessParameters, ShowTheAlarmLevelInsteadOfMissingEventFiles)
{
    m_process->setParamXML3FileName("mine3.xml");
    m_process->setParamXML1FileName("mine1.xml");
    readKey("XML3AlarmLevel: \"VERYURGENT\"");
    EXPECT_THAT(
        m_errors, HasSubstr("XML3FileName, is missing, default value is used: VERYURGENT\n"));
    EXPECT_THAT(
        m_errors, HasSubstr("XML1FileName, is missing, default value is used: VERYURGENT\n"));
    EXPECT_EQ(m_process->getParamXML3FileName(), "mine3.xml");
    m_process->setParamXML3FileName("");
}

TEST_F(ScenarioMatchProcessParameters, TakeAnEmptySelectionForAMissingContext)
{
    readKey("RHMContext: \"lobby.xml\"\nEventsToNotify: \"\"");
    constexpr std::string_view kMessage =
        "The parameter, RHMContext, is missing, default value is used\n";
    const auto place = m_errors.find(kMessage);
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(m_errors.find(kMessage, place + 1), std::string::npos);
    EXPECT_THAT(m_errors, Not(HasSubstr("EventsToNotify")));
}

TEST_F(ScenarioMatchProcessParameters, AreNeverSetToZeroByAFile)
{
    m_process->setParamHistorySize(4);
    readKey("historySize: 0\nconstProlongation: 0.2\nPersonSittingMaxHeight: 0");
    EXPECT_EQ(m_process->getParamHistorySize(), 4);
    EXPECT_THAT(m_errors, HasSubstr("historySize, is missing, default value is used: 4\n"));
    EXPECT_EQ(m_process->getParamConstProlongation(), 5);
    EXPECT_EQ(m_process->getParamPersonSittingMax3dHeight(), 1.3);
}

TEST_F(ScenarioMatchProcessParameters, TakeOnlyTheLowerCaseWordForTrue)
{
    m_process->setParamDebug(true);
    readKey("debug: \"TRUE\"\nsaveXML3File: \"yes\"");
    EXPECT_FALSE(m_process->getParamDebug());
    EXPECT_FALSE(m_process->getParamSaveXML3File());
}

TEST_F(ScenarioMatchProcessParameters, RoundRealsToTheNearestWholeNumber)
{
    readKey("constTimeSearch: 12.6\nconstProlongation: -2.7\nhistorySize: 12.4");
    EXPECT_EQ(m_process->getParamConstTimeSearch(), 13);
    EXPECT_EQ(m_process->getParamConstProlongation(), -3);
    EXPECT_EQ(m_process->getParamHistorySize(), 12);
}

TEST_F(ScenarioMatchProcessParameters, IgnoreANegativeSittingHeight)
{
    readKey("PersonSittingMaxHeight: -1");
    EXPECT_EQ(m_process->getParamPersonSittingMax3dHeight(), 1.3);
    EXPECT_THAT(
        m_errors,
        HasSubstr(
            "The parameter, PersonSittingMaxHeight, is missing, default value is used: 1.3\n"));
}

TEST_F(ScenarioMatchProcessParameters, ConvertValuesOfOtherKinds)
{
    readData("wrong_kinds.yml");
    EXPECT_FALSE(m_process->getParamDebug());
    EXPECT_THAT(m_errors, HasSubstr("debug, is missing, default value is used: 0\n"));
    EXPECT_EQ(m_process->getParamScenarioRecognitionObjectDescription(), "");
    EXPECT_EQ(m_process->getParamScenarioRecognitionModelFileName(), "");
    EXPECT_EQ(m_process->getParamScenarioRecognitionMaximumScenarioLife(), 2147483647);
    EXPECT_EQ(m_process->getParamConstProlongation(), 2147483647);
    EXPECT_EQ(m_process->getParamConstTimeSearch(), 2147483647);
    EXPECT_EQ(m_process->getParamHistorySize(), 10);
    EXPECT_FALSE(m_process->getParamSaveXML3File());
    EXPECT_EQ(m_process->getParamPersonSittingMax3dHeight(), 1e300);
}

TEST_F(ScenarioMatchProcessParameters, AreAllMissingInAFileWithoutKeys)
{
    readData("sequence.yml");
    EXPECT_EQ(all(), kDefaults);
    EXPECT_EQ(m_output, "");
    EXPECT_THAT(m_errors, HasSubstr("The parameter, historySize, is missing"));
}

TEST_F(ScenarioMatchProcessParameters, AreSetByNameAsText)
{
    for (const auto& name : m_process->parameterNames()) {
        const std::string was = value(name);
        const bool isFlag = was == "false";
        EXPECT_TRUE(m_process->setParameter(name, isFlag ? "true" : "0")) << name;
        EXPECT_EQ(value(name), isFlag ? "true" : "0") << name;
        EXPECT_TRUE(m_process->setParameter(name, was)) << name;
    }
    EXPECT_EQ(all(), kDefaults);
}

TEST_F(ScenarioMatchProcessParameters, RefuseTextThatIsNoValue)
{
    EXPECT_FALSE(m_process->setParameter("debug", "1"));
    EXPECT_FALSE(m_process->setParameter("historySize", "ten"));
    EXPECT_FALSE(m_process->setParameter("historySize", "10 "));
    EXPECT_FALSE(m_process->setParameter("historySize", "99999999999"));
    EXPECT_FALSE(m_process->setParameter("historySize", ""));
    EXPECT_FALSE(m_process->setParameter("BayesianRatio", "1,5"));
    EXPECT_FALSE(m_process->setParameter("BayesianRatio", "nan"));
    EXPECT_FALSE(m_process->setParameter("BayesianRatio", "1e999"));
    EXPECT_FALSE(m_process->setParameter("MaximumCandidates", "-1"));
    EXPECT_FALSE(m_process->setParameter("HistorySize", "3"));
    EXPECT_FALSE(m_process->parameter("HistorySize").has_value());
    EXPECT_EQ(all(), kDefaults);
}

TEST_F(ScenarioMatchProcessParameters, AreSetBySetters)
{
    m_process->setParamScenarioRecognitionMaximumScenarioLife(1);
    m_process->setParamConstProlongation(0);
    m_process->setParamConstTimeSearch(2);
    m_process->setParamSaveXML1File(true);
    m_process->setParamBayesianRatio(2.0);
    m_process->setParamConfidencePrimitiveState(0.2);
    m_process->setParamConfidencePrimitiveEvent(0.3);
    m_process->setParamConfidenceCompositeState(0.4);
    m_process->setParamConfidenceCompositeEvent(0.5);
    m_process->setRhmContextFilename("c.xml");
    m_process->setParamEvensToNotify("A");
    EXPECT_EQ(m_process->getParamScenarioRecognitionMaximumScenarioLife(), 1);
    EXPECT_EQ(m_process->getParamConstProlongation(), 0);
    EXPECT_EQ(m_process->getParamConstTimeSearch(), 2);
    EXPECT_TRUE(m_process->getParamSaveXML1File());
    EXPECT_EQ(m_process->getParamBayesianRatio(), 2.0);
    EXPECT_EQ(m_process->getParamConfidencePrimitiveState(), 0.2);
    EXPECT_EQ(m_process->getParamConfidencePrimitiveEvent(), 0.3);
    EXPECT_EQ(m_process->getParamConfidenceCompositeState(), 0.4);
    EXPECT_EQ(m_process->getParamConfidenceCompositeEvent(), 0.5);
    EXPECT_EQ(value("RHMContext"), "c.xml");
    EXPECT_EQ(value("EventsToNotify"), "A");
}
