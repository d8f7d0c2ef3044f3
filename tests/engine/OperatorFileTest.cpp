#include "engine/OperatorFile.h"

#include "tests/engine/EngineFixture.h"
#include "types/OperatorAbi.h"

#include <QString>
#include <QtGlobal>

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace scenariomatch
{

namespace
{

std::string pluginFile(const std::string& name)
{
    return SCENARIOMATCH_TEST_PLUGINS "/inspected/" + name + ".so";
}

// Every test sees whether code of the file ran; what it prints, on the descriptors themselves.
class OperatorFileTest : public testing::Test
{
protected:
    void SetUp() override { unsetenv("SCENARIOMATCH_TEST_TRACE"); }

    // Loads and says what was found: the operator's name, or the reason why there is none.
    static std::string load(const std::string& file)
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const OperatorFile loaded = loadOperator(file);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(loaded.op == nullptr, !loaded.reason.empty());
        return loaded.op == nullptr ? loaded.reason : loaded.op->m_name;
    }

    static std::string trace()
    {
        const char* const name = std::getenv("SCENARIOMATCH_TEST_TRACE");
        return name == nullptr ? "" : name;
    }

    static std::string bytesOf(const std::string& file)
    {
        std::ostringstream bytes;
        bytes << std::ifstream(file, std::ios::binary).rdbuf();
        return bytes.str();
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(OperatorFileTest, LoadsAnOperatorWithTheTagOfThisBuild)
{
    EXPECT_EQ(load(pluginFile("same_tag")), "same_tag");
    EXPECT_EQ(trace(), "same_tag");
    EXPECT_EQ(operatorRefusal(pluginFile("same_tag")), "");
}

TEST_F(OperatorFileTest, LoadsAnOperatorWithoutATag)
{
    EXPECT_EQ(load(pluginFile("no_tag")), "no_tag");
    EXPECT_EQ(trace(), "no_tag");
}

TEST_F(OperatorFileTest, LoadsAnOperatorWhoseMetadataNamesAnotherInterface)
{
    EXPECT_EQ(load(pluginFile("foreign_interface")), "foreign_interface");
}

TEST_F(OperatorFileTest, DoesNotRunAnOperatorWithAnotherTag)
{
    EXPECT_EQ(
        load(pluginFile("other_tag")),
        "it is built for gnu-libstdc++98-7, this program for " CS_OPERATOR_ABI);
    EXPECT_EQ(trace(), "");
}

TEST_F(OperatorFileTest, DoesNotRunAnOperatorOfAnotherFamilyOfCompilers)
{
    const std::string here = CS_OPERATOR_ABI;
    EXPECT_EQ(
        load(pluginFile("other_compiler")),
        "it is built for other" + here.substr(here.find('-')) + ", this program for " + here);
    EXPECT_EQ(trace(), "");
}

TEST_F(OperatorFileTest, DoesNotRunAnOperatorOfAnotherMajorVersion)
{
    const std::string here = CS_OPERATOR_ABI;
    EXPECT_EQ(
        load(pluginFile("other_major_version")),
        "it is built for " + here.substr(0, here.rfind('-')) + "-999, this program for " + here);
    EXPECT_EQ(trace(), "");
}

TEST_F(OperatorFileTest, DoesNotRunAnOperatorWithATagThatCannotBeRead)
{
    EXPECT_EQ(
        load(pluginFile("two_tags")),
        "it is built for something unknown, this program for " CS_OPERATOR_ABI);
    EXPECT_EQ(trace(), "");
}

TEST_F(OperatorFileTest, DoesNotRunALibraryThatIsNoPlugIn)
{
    EXPECT_EQ(load(pluginFile("plain_library")), "it is no plug-in");
    EXPECT_EQ(trace(), "");
}

TEST_F(OperatorFileTest, RefusesTextAndNothingAtAll)
{
    EXPECT_EQ(load(m_folder.write("text.so", "no library\n")), "it is no plug-in");
    EXPECT_EQ(load(m_folder.write("empty.so", "")), "it is no plug-in");
    EXPECT_EQ(load(m_folder.path().string()), "it is no plug-in");
    EXPECT_EQ(load((m_folder.path() / "missing.so").string()), "it is no plug-in");
}

TEST_F(OperatorFileTest, DoesNotRunAFileThatBreaksOff)
{
    const std::string whole = bytesOf(pluginFile("traced_for_damage"));
    ASSERT_GT(whole.size(), 16384U);
    // What the file holds for running it comes first, what debuggers read follows.
    for (std::size_t length = 64; length <= 16384; length += 271) {
        const std::string name = "broken" + std::to_string(length) + ".so";
        EXPECT_EQ(load(m_folder.write(name, whole.substr(0, length))), "it is no plug-in")
            << length;
    }
    EXPECT_EQ(trace(), "");
}

TEST_F(OperatorFileTest, DoesNotRunAFileWhoseMetadataIsDamaged)
{
    std::string bytes = bytesOf(pluginFile("traced_for_damage"));
    const std::string mark = "qt-project!";
    const std::size_t place = bytes.find(mark);
    ASSERT_NE(place, std::string::npos);
    std::string damaged = bytes;
    // Where the values begin, behind the mark's end and four bytes of versions.
    damaged.replace(place + mark.size() + 5, 8, 8, '\xff');
    EXPECT_EQ(load(m_folder.write("damaged.so", damaged)), "it is no plug-in");
    bytes.replace(place, mark.size(), mark.size(), 'x');
    EXPECT_EQ(load(m_folder.write("unmarked.so", bytes)), "it is no plug-in");
    EXPECT_EQ(trace(), "");
}

TEST_F(OperatorFileTest, RefusesARootObjectThatIsNoOperator)
{
    EXPECT_EQ(
        load(SCENARIOMATCH_TEST_PLUGINS "/mixed/other_interface.so"),
        "its root object is no operator");
}

TEST_F(OperatorFileTest, SurvivesARootObjectThatThrows)
{
    EXPECT_EQ(load(pluginFile("throws_at_start")), "no operator today");
}

TEST_F(OperatorFileTest, SaysWhatTheLoaderMisses)
{
    EXPECT_THAT(
        load(pluginFile("missing_symbol")), testing::HasSubstr("undefined symbol: nobodyHasThis"));
}

TEST_F(OperatorFileTest, KeepsOtherPeoplesMessagesAndTheirHandler)
{
    static std::string logged;
    logged.clear();
    const auto log = [](QtMsgType, const QMessageLogContext&, const QString& text) {
        logged += text.toStdString();
    };
    const QtMessageHandler before = qInstallMessageHandler(log);
    EXPECT_EQ(load(m_folder.write("empty.so", "")), "it is no plug-in");
    EXPECT_EQ(logged, "");
    EXPECT_EQ(load(SCENARIOMATCH_TEST_PLUGINS "/logging/logs_at_start.so"), "logs_at_start");
    EXPECT_EQ(logged, "an operator is made");
    EXPECT_EQ(qInstallMessageHandler(before), static_cast<QtMessageHandler>(log));
}

TEST_F(OperatorFileTest, LetsTheEngineLoadWhatIsSoundInSilence)
{
    CSEngine engine;
    engine.m_operatorPluginPath = SCENARIOMATCH_TEST_PLUGINS "/inspected";
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    engine.setAllOperators();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    std::vector<std::string> names;
    for (const auto& op : engine.operators()) {
        names.push_back(op.first);
    }
    EXPECT_THAT(
        names,
        testing::ElementsAre("foreign_interface", "no_tag", "same_tag", "traced_for_damage"));
}

TEST(OperatorAbi, NamesCompilerLibraryAndMajorVersion)
{
    EXPECT_THAT(
        CS_OPERATOR_ABI, testing::MatchesRegex("(gnu|clang)-libstdc\\+\\+11(checked)?-[0-9]+"));
}

} // namespace scenariomatch
