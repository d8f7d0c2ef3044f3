#include "engine/CSEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace scenariomatch
{

namespace
{

namespace fs = std::filesystem;

// A folder of its own for each test, and an engine that loads from it.
class OperatorLoading : public testing::Test
{
protected:
    void SetUp() override
    {
        m_folder = fs::path(testing::TempDir()) /
                   (testing::UnitTest::GetInstance()->current_test_info()->name() +
                    std::to_string(::getpid()));
        fs::remove_all(m_folder);
        fs::create_directories(m_folder);
        m_engine.m_operatorPluginPath = m_folder.string();
        m_formerOperators = CConstraint::m_allOperators;
    }

    void TearDown() override
    {
        CConstraint::m_allOperators = m_formerOperators;
        fs::remove_all(m_folder);
    }

    void copyOperator(const std::string& file, const std::string& as)
    {
        fs::copy_file(fs::path(CS_OPERATOR_FOLDER) / file, m_folder / as);
    }

    // What loading writes, standard output first.
    std::string load()
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        m_engine.setAllOperators();
        const std::string errors = testing::internal::GetCapturedStderr();
        return testing::internal::GetCapturedStdout() + errors;
    }

    fs::path m_folder;
    CSEngine m_engine;
    CConstraint::OperatorTable m_formerOperators;
};

} // namespace

TEST_F(OperatorLoading, LoadsTheStandardOperators)
{
    m_engine.m_operatorPluginPath = CS_OPERATOR_FOLDER;
    EXPECT_EQ(load(), "");
    EXPECT_THAT(
        m_engine.operators(), testing::IsSupersetOf({testing::Key("="), testing::Key("before")}));
    EXPECT_GE(m_engine.operators().size(), 43U);
}

TEST_F(OperatorLoading, IgnoresAFileThatIsNoPlugin)
{
    copyOperator("less.so", "less.so");
    std::ofstream(m_folder / "readme.txt") << "not a plug-in\n";
    fs::create_directory(m_folder / "more.so");
    EXPECT_EQ(load(), "");
    EXPECT_THAT(m_engine.operators(), testing::ElementsAre(testing::Key("<")));
}

TEST_F(OperatorLoading, FilesOneOperatorPerName)
{
    copyOperator("less.so", "one.so");
    copyOperator("less.so", "two.so");
    EXPECT_EQ(load(), "");
    EXPECT_THAT(m_engine.operators(), testing::ElementsAre(testing::Key("<")));
}

TEST_F(OperatorLoading, NamesEachOperatorInDebug)
{
    copyOperator("in.so", "in.so");
    m_engine.m_debug = true;
    EXPECT_EQ(load(), "Operator loaded: in\n");
}

TEST_F(OperatorLoading, LeavesTheTableEmptyWithoutAFolderOrPlugins)
{
    EXPECT_EQ(load(), "");
    EXPECT_THAT(m_engine.operators(), testing::IsEmpty());
    m_engine.m_operatorPluginPath = (m_folder / "missing").string();
    EXPECT_EQ(load(), "");
    EXPECT_THAT(m_engine.operators(), testing::IsEmpty());
    m_engine.m_operatorPluginPath.clear();
    EXPECT_EQ(load(), "");
    EXPECT_THAT(m_engine.operators(), testing::IsEmpty());
}

TEST_F(OperatorLoading, HandsTheTableToTheConstraintsWithOrWithoutADescription)
{
    copyOperator("in.so", "in.so");
    CConstraint::m_allOperators["stale"] = nullptr;
    EXPECT_EQ(load(), "");
    m_engine.readOperatorAgent((m_folder / "missing.txt").string());
    EXPECT_EQ(CConstraint::m_allOperators, m_engine.operators());
    EXPECT_THAT(CConstraint::m_allOperators, testing::ElementsAre(testing::Key("in")));
}

TEST_F(OperatorLoading, WarnsOfADeclarationWhoseOperatorIsNotLoaded)
{
    copyOperator("in.so", "in.so");
    EXPECT_EQ(load(), "");
    const std::string description = (m_folder / "words.txt").string();
    std::ofstream(description) << "operator inside(p : Person, z : Zone)\n"
                                  "{ p->Position in z->Vertices }\n"
                                  "operator outside(p : Person, z : Zone)\n"
                                  "{ p->Position out z->Vertices }\n";
    testing::internal::CaptureStderr();
    m_engine.readOperatorAgent(description);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Warning: Operator out is not loaded, you can't use it (in the rules file)\n");
    EXPECT_THAT(
        CConstraint::m_allOperators,
        testing::ElementsAre(testing::Key("in"), testing::Key("inside")));
}

} // namespace scenariomatch
