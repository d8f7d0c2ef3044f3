#include "app/CheckCommand.h"

#include "app/ExitStatus.h"
#include "lint/Diagnostic.h"
#include "types/TextFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

namespace scenariomatch
{

namespace
{

struct Outcome
{
    int status = -1;
    std::string out;
    std::string talk;
};

Outcome check(const CheckOptions& options)
{
    std::ostringstream out;
    std::ostringstream talk;
    const int status = runCheck(options, out, talk);
    return {status, out.str(), talk.str()};
}

// The models and context of tests/data/lint, named as seen from there.
class LobbyModels : public testing::Test
{
protected:
    void SetUp() override
    {
        std::filesystem::current_path(SCENARIOMATCH_TEST_DATA "/lint");
        m_options.modelFiles = {"lobby.models"};
        m_options.context = "context.xml";
    }

    void TearDown() override { std::filesystem::current_path(m_before); }

    CheckOptions m_options;

private:
    std::filesystem::path m_before = std::filesystem::current_path();
};

TEST_F(LobbyModels, AreReportedInTheMannerOfCompilers)
{
    const Outcome outcome = check(m_options);
    EXPECT_EQ(outcome.status, kExitNo);
    EXPECT_EQ(
        outcome.out,
        "lobby.models:8:14: error: 'Bank_Zone' is no zone of this scene [unknown-object]\n"
        "    8 |   (z->Name = Bank_Zone))\n"
        "      |              ^~~~~~~~~ did you mean 'BankZone' (context.xml:3)?\n"
        "lobby.models:12:30: error: a Person has no attribute 'Positon' [unknown-attribute]\n"
        "   12 |     Constraints((distance(p->Positon, q->Position) < 2))\n"
        "      |                              ^~~~~~~ did you mean 'Position'?\n");
    EXPECT_EQ(outcome.talk, "scenariomatch check: errors: 2, warnings: 0\n");
}

TEST_F(LobbyModels, AreReportedAsJson)
{
    m_options.format = DiagnosticFormat::Json;
    const nlohmann::json document = nlohmann::json::parse(check(m_options).out);
    const nlohmann::json expected = {
        {"name", "unknown-object"},
        {"severity", "error"},
        {"file", "lobby.models"},
        {"line", 8},
        {"column", 14},
        {"end_line", 8},
        {"end_column", 23},
        {"message", "'Bank_Zone' is no zone of this scene"},
        {"hint", "did you mean 'BankZone' (context.xml:3)?"},
        {"suggestion", "BankZone"}};
    ASSERT_EQ(document.at("diagnostics").size(), 2U);
    EXPECT_EQ(document.at("diagnostics").at(0), expected);
}

TEST_F(LobbyModels, AreReportedAsSarif)
{
    m_options.format = DiagnosticFormat::Sarif;
    const nlohmann::json document = nlohmann::json::parse(check(m_options).out);
    EXPECT_EQ(document.at("version"), "2.1.0");
    const nlohmann::json& run = document.at("runs").at(0);
    EXPECT_EQ(run.at("tool").at("driver").at("rules").size(), lint::rules().size());
    const nlohmann::json& result = run.at("results").at(0);
    EXPECT_EQ(result.at("ruleId"), "unknown-object");
    EXPECT_EQ(result.at("level"), "error");
    const nlohmann::json& place = result.at("locations").at(0).at("physicalLocation");
    EXPECT_EQ(place.at("artifactLocation").at("uri"), "lobby.models");
    EXPECT_EQ(place.at("region").at("startLine"), 8);
    EXPECT_EQ(place.at("region").at("endColumn"), 23);
    const nlohmann::json& change = result.at("fixes").at(0).at("artifactChanges").at(0);
    EXPECT_EQ(change.at("replacements").at(0).at("insertedContent").at("text"), "BankZone");
}

// Models without names are no models of one name, and nothing else is meant by them.
TEST_F(LobbyModels, AreReportedOnceWhereTheyHaveNoNames)
{
    m_options.modelFiles = {"nameless.malformed"};
    const std::string out = check(m_options).out;
    std::string heads;
    std::istringstream lines(out);
    for (std::string line; std::getline(lines, line);) {
        heads += line.starts_with("nameless.malformed") ? line + '\n' : "";
    }
    EXPECT_EQ(
        heads,
        "nameless.malformed:4:5: error: a name and a comma are expected here [malformed]\n"
        "nameless.malformed:8:5: error: a name and a comma are expected here [malformed]\n"
        "nameless.malformed:13:36: error: there is no model 'No' [unknown-model]\n"
        "nameless.malformed:13:62: error: there is no model 'No' [unknown-model]\n");
}

TEST_F(LobbyModels, GiveNothingWhereNothingIsWrong)
{
    m_options.modelFiles = {SCENARIOMATCH_TEST_DATA "/../../examples/gate/crossings.txt"};
    m_options.context.clear();
    for (const DiagnosticFormat format :
         {DiagnosticFormat::Text, DiagnosticFormat::Json, DiagnosticFormat::Sarif}) {
        m_options.format = format;
        const Outcome outcome = check(m_options);
        EXPECT_EQ(outcome.status, kExitDone);
        EXPECT_EQ(outcome.talk, "");
        EXPECT_EQ(outcome.out.empty(), format == DiagnosticFormat::Text);
    }
}

TEST_F(LobbyModels, ThatCannotBeReadHaveAStatusOfTheirOwn)
{
    m_options.modelFiles = {"lobby.models", "none.models"};
    const Outcome outcome = check(m_options);
    EXPECT_EQ(outcome.status, kExitModel);
    EXPECT_NE(
        outcome.out.find("none.models:1:1: error: none.models cannot be read: No such file or "
                         "directory [unreadable-file]\n"),
        std::string::npos);
    m_options.modelFiles.clear();
    m_options.parameterFile = "none.yaml";
    EXPECT_EQ(check(m_options).status, kExitModel);
}

TEST(CheckCommand, TakesTheFilesOfAParameterFileFromAnotherFolder)
{
    CheckOptions options;
    const std::string examples = SCENARIOMATCH_TEST_DATA "/../../examples";
    options.parameterFile = examples + "/gate/gate.yaml";
    options.common = examples + "/gate";
    EXPECT_EQ(check(options).status, kExitDone);
    options.common = examples + "/lobby";
    const Outcome outcome = check(options);
    EXPECT_EQ(outcome.status, kExitModel);
    EXPECT_NE(outcome.out.find("/lobby/door.xml cannot be read: No such file"), std::string::npos);
}

// The files of tests/data/lint/sample, named as seen from there.
class SampleOfTracks : public testing::Test
{
protected:
    void SetUp() override
    {
        std::filesystem::current_path(SCENARIOMATCH_TEST_DATA "/lint/sample");
        m_options.parameterFile = "parameters.yaml";
        m_options.sample.tracks = "tracks.jsonl";
    }

    void TearDown() override { std::filesystem::current_path(m_before); }

    CheckOptions m_options;

private:
    std::filesystem::path m_before = std::filesystem::current_path();
};

// Nothing is said of the constraint behind one that is never true, nor of the composite of a model
// that is never recognised.
TEST_F(SampleOfTracks, TellsWhatItNeverShows)
{
    const Outcome outcome = check(m_options);
    EXPECT_EQ(outcome.status, kExitDone);
    EXPECT_EQ(outcome.out, readTextFile("expected.txt"));
    EXPECT_EQ(outcome.talk, "scenariomatch check: errors: 0, warnings: 6\n");
}

TEST_F(SampleOfTracks, IsTakenWithAnotherContext)
{
    m_options.context = SCENARIOMATCH_TEST_DATA "/lint/context.xml";
    const Outcome outcome = check(m_options);
    EXPECT_EQ(outcome.status, kExitNo);
    EXPECT_NE(outcome.out.find("'Door' is no zone of this scene"), std::string::npos);
    EXPECT_EQ(
        outcome.talk,
        "scenariomatch check: the tracks are not looked at while there are errors\n"
        "scenariomatch check: errors: 2, warnings: 0\n");
}

TEST_F(SampleOfTracks, HasTheStatusOfARunWhereItCannotBeRead)
{
    m_options.sample.tracks = "none.jsonl";
    Outcome outcome = check(m_options);
    EXPECT_EQ(outcome.status, kExitTracks);
    EXPECT_EQ(outcome.talk, "scenariomatch check: none.jsonl: No such file or directory\n");
    m_options.sample.tracks = "context.xml";
    m_options.sample.format = TrackFormat::JsonLines;
    outcome = check(m_options);
    EXPECT_EQ(outcome.status, kExitTracks);
    EXPECT_NE(outcome.talk.find("context.xml:1:1: "), std::string::npos) << outcome.talk;
}

TEST(CheckCommand, NeedsSomethingToCheck)
{
    for (const char* arguments :
         {"check",
          "check --params a.yaml b.models",
          "check a.models --format xml",
          "check a.models --tracks b.jsonl"}) {
        CheckOptions options;
        CLI::App program("test");
        addCheckCommand(program, options);
        EXPECT_THROW(program.parse(arguments), CLI::ParseError) << arguments;
    }
}

} // namespace

} // namespace scenariomatch
