#include "app/SynthCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace scenariomatch
{

namespace
{

class SynthCommandTest : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = (std::filesystem::temp_directory_path() / "synth-XXXXXX").string();
        m_folder = mkdtemp(name.data());
    }

    void TearDown() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(m_folder / name, std::ios::binary) << text;
        return m_folder / name;
    }

    int run(const SynthOptions& options) { return runSynth(options, m_out, m_talk); }

    std::filesystem::path m_folder;
    std::ostringstream m_out;
    std::ostringstream m_talk;
};

const std::string kScene = "objects: [{id: 4, path: [{time: 0, position: [1.5, 2]}]}]\n";

} // namespace

TEST_F(SynthCommandTest, WritesJsonLinesToStandardOutputByDefault)
{
    SynthOptions options;
    options.scene = write("scene.yaml", kScene);
    EXPECT_EQ(run(options), 0);
    EXPECT_EQ(
        m_out.str(),
        R"({"frame":0,"time":"2000-01-01T00:00:00.000","actors":[{"id":4,"type":"PERSON",)"
        R"("box":[50,10,20,70],"position":[1.5,2,0],"size":[0.5,1.75,0.3]}]})"
        "\n");
    EXPECT_EQ(m_talk.str(), "");
}

TEST_F(SynthCommandTest, WritesToAFile)
{
    SynthOptions options;
    options.scene = write("scene.yaml", kScene);
    options.output = m_folder / "tracks.txt";
    options.format = TrackFormat::Trajectory;
    EXPECT_EQ(run(options), 0);
    EXPECT_EQ(m_out.str(), "");
    std::ifstream file(options.output);
    std::string line;
    std::getline(file, line);
    EXPECT_EQ(line, "4 0 1.5 2 0");
}

TEST_F(SynthCommandTest, SaysWhatIsWrongWithAScene)
{
    SynthOptions options;
    options.scene = write("scene.yaml", "duration: x\n");
    EXPECT_EQ(run(options), 3);
    EXPECT_EQ(
        m_talk.str(),
        options.scene +
            ":1:11: 'duration' must be a number from 0.001 to 1000000 with at most three decimals, "
            "not 'x'\nduration: x\n          ^\n");
    EXPECT_EQ(m_out.str(), "");
}

TEST_F(SynthCommandTest, SaysThatASceneIsMissing)
{
    SynthOptions options;
    options.scene = m_folder / "nothing.yaml";
    EXPECT_EQ(run(options), 3);
    EXPECT_EQ(
        m_talk.str(),
        "scenariomatch synth: cannot read " + options.scene + ": No such file or directory\n");
}

TEST_F(SynthCommandTest, SaysThatASceneIsAFolder)
{
    SynthOptions options;
    options.scene = m_folder;
    EXPECT_EQ(run(options), 3);
    EXPECT_THAT(m_talk.str(), testing::StartsWith("scenariomatch synth: cannot read "));
}

TEST_F(SynthCommandTest, ReadsNoMoreOfAFileThanIsAllowed)
{
    SynthOptions options;
    options.scene = "/dev/zero";
    EXPECT_EQ(run(options), 3);
    EXPECT_THAT(
        m_talk.str(), testing::StartsWith("/dev/zero:1:1: the file has more than 4194304 bytes"));
}

TEST_F(SynthCommandTest, SaysThatOutputCannotBeOpened)
{
    SynthOptions options;
    options.scene = write("scene.yaml", kScene);
    options.output = m_folder / "no" / "folder";
    EXPECT_EQ(run(options), 6);
    EXPECT_EQ(
        m_talk.str(),
        "scenariomatch synth: cannot write " + options.output + ": No such file or directory\n");
}

TEST_F(SynthCommandTest, KeepsTheSceneFromBeingOverwritten)
{
    SynthOptions options;
    options.scene = write("scene.yaml", kScene);
    options.output = m_folder / "." / "scene.yaml";
    EXPECT_EQ(run(options), 2);
    EXPECT_EQ(
        m_talk.str(),
        "scenariomatch synth: --output would overwrite " + options.output +
            ", which is read as SCENE\n");
    std::ifstream file(options.scene);
    std::string line;
    std::getline(file, line);
    EXPECT_EQ(line + "\n", kScene);
}

TEST_F(SynthCommandTest, SaysThatTheDiskIsFull)
{
    SynthOptions options;
    options.scene = write("scene.yaml", "duration: 100000\n");
    options.output = "/dev/full";
    EXPECT_EQ(run(options), 6);
    EXPECT_EQ(
        m_talk.str(), "scenariomatch synth: cannot write /dev/full: No space left on device\n");
}

TEST_F(SynthCommandTest, SaysThatStandardOutputRefuses)
{
    SynthOptions options;
    options.scene = write("scene.yaml", kScene);
    m_out.setstate(std::ios::badbit);
    EXPECT_EQ(run(options), 6);
    EXPECT_EQ(m_talk.str(), "scenariomatch synth: cannot write to standard output\n");
}

TEST_F(SynthCommandTest, TakesItsOptionsFromTheCommandLine)
{
    CLI::App program;
    SynthOptions options;
    const CLI::App* const command = addSynthCommand(program, options);
    program.parse("synth scene.yaml --output tracks.csv --format mot");
    EXPECT_TRUE(command->parsed());
    EXPECT_EQ(options.scene, "scene.yaml");
    EXPECT_EQ(options.output, "tracks.csv");
    EXPECT_EQ(options.format, TrackFormat::Mot);
    program.parse("synth scene.yaml --format cvml");
    EXPECT_EQ(options.format, TrackFormat::Cvml);
    program.parse("synth scene.yaml --format trajectory");
    EXPECT_EQ(options.format, TrackFormat::Trajectory);
    program.parse("synth scene.yaml --format jsonl");
    EXPECT_EQ(options.format, TrackFormat::JsonLines);
    EXPECT_THROW(program.parse("synth scene.yaml --format xml"), CLI::ValidationError);
    EXPECT_THROW(program.parse("synth"), CLI::RequiredError);
}

} // namespace scenariomatch
