#include "app/RunParameters.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

StorageEntry text(const std::string& key, const std::string& value)
{
    return {key, value, false, true, 1};
}

StorageEntry number(const std::string& key, const std::string& value)
{
    return {key, value, true, true, 1};
}

RunParameters merged(const std::vector<StorageEntry>& entries, const RunParameterSources& sources)
{
    std::string error;
    const std::optional<RunParameters> parameters = mergeParameters({entries, {}}, sources, error);
    EXPECT_TRUE(parameters) << error;
    return parameters.value_or(RunParameters());
}

std::string faultOf(const NamedText& setting)
{
    std::string error;
    RunParameterSources sources;
    sources.settings = {setting};
    EXPECT_FALSE(mergeParameters({}, sources, error));
    return error;
}

} // namespace

TEST(RunParameters, TakesNamesOfFilesRelativeToTheParameterFile)
{
    RunParameterSources sources;
    sources.file = "hall/params.yaml";
    const RunParameters parameters = merged(
        {text("scenarioRecognitionModelFileName", "engine.txt"),
         text("RHMContext", "/scene/context.xml"),
         text("XML3FileName", "out/events.xml"),
         text("OperatorPluginPath", "../operators"),
         text("XML3AlarmLevel", "URGENT")},
        sources);
    EXPECT_EQ(
        parameters.text,
        "%YAML:1.0\n---\n"
        "scenarioRecognitionModelFileName: \"hall/engine.txt\"\n"
        "RHMContext: \"/scene/context.xml\"\n"
        "XML3FileName: \"hall/out/events.xml\"\n"
        "OperatorPluginPath: \"hall/../operators\"\n"
        "XML3AlarmLevel: \"URGENT\"\n");
    EXPECT_TRUE(parameters.setters.empty());
}

TEST(RunParameters, PutsTheCommonPathBeforeModelDescriptionAndContextFilesOnly)
{
    RunParameterSources sources;
    sources.file = "hall/params.yaml";
    sources.commonPath = "site/a-";
    const RunParameters parameters = merged(
        {text("scenarioRecognitionModelFileName", "engine.txt"),
         text("scenarioRecognitionObjectDescription", "objects.txt"),
         text("scenarioRecognitionOperatorDescription", "operators.txt"),
         text("RHMContext", "context.xml"),
         text("XML3FileName", "events.xml")},
        sources);
    EXPECT_EQ(parameters.value("scenarioRecognitionModelFileName"), "site/a-engine.txt");
    EXPECT_EQ(parameters.value("scenarioRecognitionObjectDescription"), "site/a-objects.txt");
    EXPECT_EQ(parameters.value("scenarioRecognitionOperatorDescription"), "site/a-operators.txt");
    EXPECT_EQ(parameters.value("RHMContext"), "site/a-context.xml");
    EXPECT_EQ(parameters.value("XML3FileName"), "hall/events.xml");
}

TEST(RunParameters, LetsSettingsWinAndTakesThemAsTheyAre)
{
    RunParameterSources sources;
    sources.file = "hall/params.yaml";
    sources.settings = {
        {"XML3FileName", "here.xml"},
        {"historySize", "7"},
        {"historySize", "8"},
        {"debug", "true"}};
    const RunParameters parameters =
        merged({number("historySize", "60"), text("XML3FileName", "events.xml")}, sources);
    EXPECT_EQ(
        parameters.text,
        "%YAML:1.0\n---\nhistorySize: 8\nXML3FileName: \"here.xml\"\ndebug: \"true\"\n");
}

TEST(RunParameters, FallsBackToTheInstalledOperators)
{
    RunParameterSources sources;
    sources.file = "params.yaml";
    sources.operatorFolder = "/lib/operators";
    sources.operatorDescription = "/share/vocabulary.txt";
    EXPECT_EQ(
        merged({}, sources).text,
        "%YAML:1.0\n---\nOperatorPluginPath: \"/lib/operators\"\n"
        "scenarioRecognitionOperatorDescription: \"/share/vocabulary.txt\"\n");
    sources.settings = {{"OperatorPluginPath", ""}};
    EXPECT_EQ(merged({}, sources).value("OperatorPluginPath"), "/lib/operators");
    sources.settings = {{"OperatorPluginPath", "mine"}};
    EXPECT_EQ(merged({}, sources).value("OperatorPluginPath"), "mine");
}

TEST(RunParameters, SetsZerosByName)
{
    RunParameterSources sources;
    sources.settings = {
        {"constProlongation", "0"}, {"PersonSittingMaxHeight", "0.0"}, {"constTimeSearch", "0.5"}};
    const RunParameters parameters =
        merged({number("historySize", "0"), number("debug", "0")}, sources);
    EXPECT_EQ(parameters.text, "%YAML:1.0\n---\ndebug: 0\n");
    const std::vector<NamedText> expected{
        {"historySize", "0"},
        {"constProlongation", "0"},
        {"PersonSittingMaxHeight", "0"},
        {"constTimeSearch", "0"}};
    EXPECT_EQ(parameters.setters, expected);
}

TEST(RunParameters, SetsByNameWhatAFileCannotHold)
{
    RunParameterSources sources;
    sources.settings = {{"BayesianRatio", "0.5"}};
    const RunParameters parameters = merged({number("ConfidencePrimitiveState", "0.25")}, sources);
    EXPECT_EQ(parameters.text, "%YAML:1.0\n---\n");
    const std::vector<NamedText> expected{
        {"ConfidencePrimitiveState", "0.25"}, {"BayesianRatio", "0.5"}};
    EXPECT_EQ(parameters.setters, expected);
}

TEST(RunParameters, KeepsTheKindOfAValueInTheFile)
{
    const RunParameters parameters = merged(
        {text("historySize", "12"),
         number("XML3FileName", "12"),
         number("constTimeSearch", "12.6")},
        {});
    EXPECT_EQ(
        parameters.text,
        "%YAML:1.0\n---\nhistorySize: \"12\"\nXML3FileName: 12\nconstTimeSearch: 12.6\n");
}

TEST(RunParameters, QuotesTextsAndLeavesOutEmptyOnes)
{
    EXPECT_EQ(
        merged({text("EventsToNotify", "a\"b\\c\td\ne"), text("XML3AlarmLevel", "")}, {}).text,
        "%YAML:1.0\n---\nEventsToNotify: \"a\\\"b\\\\c\\td\\ne\"\n");
}

TEST(RunParameters, RefusesSettingsOfTheWrongType)
{
    EXPECT_EQ(faultOf({"historySize", "many"}), "historySize needs a number, not \"many\"");
    EXPECT_EQ(
        faultOf({"PersonSittingMaxHeight", "nan"}),
        "PersonSittingMaxHeight needs a number, not \"nan\"");
    EXPECT_EQ(faultOf({"debug", "yes"}), "debug is true or false, not \"yes\"");
}

TEST(RunParameters, CutsSettingsAtTheFirstEqualsSign)
{
    EXPECT_EQ(parseSetting("a=b=c"), NamedText("a", "b=c"));
    EXPECT_EQ(parseSetting("a="), NamedText("a", ""));
    EXPECT_FALSE(parseSetting("a"));
    EXPECT_FALSE(parseSetting("=b"));
}

} // namespace scenariomatch
