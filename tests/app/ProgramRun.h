#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <system_error>

namespace scenariomatch
{

inline const std::string kProgram = SCENARIOMATCH_BUILD_BIN "/scenariomatch";

// A folder that only this process uses; it disappears with the process.
class RunFolder
{
public:
    RunFolder()
        : m_path(testing::TempDir() + "/scenariomatch-XXXXXX")
    {
        if (mkdtemp(m_path.data()) == nullptr) {
            throw std::runtime_error("no temporary folder: " + m_path);
        }
    }

    RunFolder(const RunFolder&) = delete;
    RunFolder(RunFolder&&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;
    RunFolder& operator=(RunFolder&&) = delete;

    ~RunFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

// A path that no other test uses.
inline std::string temporary(const std::string& name)
{
    static const RunFolder folder;
    // Tests with parameters have a stroke in their names.
    std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::replace(test.begin(), test.end(), '/', '-');
    return folder.path() + "/" + test + "-" + name;
}

inline std::string contentOf(const std::string& path)
{
    std::stringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

struct Outcome
{
    int status = -1;
    std::string out;
    std::string talk;
};

// Runs the program through the shell, after what stands in front of its name. Whatever it is given,
// every actor that it reads it uses or drops.
inline Outcome runProgram(const std::string& arguments, const std::string& before = "")
{
    const std::string out = temporary("out");
    const std::string talk = temporary("talk");
    const int status =
        // NOLINTNEXTLINE(cert-env33-c): pipes and redirections are the shell's
        std::system((before + kProgram + " " + arguments + " >" + out + " 2>" + talk).c_str());
    Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(out), contentOf(talk)};
    EXPECT_EQ(outcome.talk.find("does not add up"), std::string::npos) << outcome.talk;
    return outcome;
}

} // namespace scenariomatch
