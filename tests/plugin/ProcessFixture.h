#pragma once

#include "engine/CSEngine.h"
#include "host/ovkLogger.h"
#include "plugin/ScenarioMatchProcess.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

// left above right: both are numbers and the left one is greater.
class AboveOperator : public CSOperatorInterfaceAbstract
{
public:
    AboveOperator();
    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override;
};

// Throws, whatever it is given.
class FailingOperator : public CSOperatorInterfaceAbstract
{
public:
    FailingOperator();
    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override;
};

// What the platform's log was told.
class LogRecorder : public ovkLogEngine
{
public:
    explicit LogRecorder(std::vector<std::string>& messages)
        : m_messages(messages)
    {
    }

    void write(int level, const std::string& message) override
    {
        m_messages.push_back(std::to_string(level) + " " + message);
    }

private:
    std::vector<std::string>& m_messages;
};

// What the test writes for a process: models and those of them that are used.
struct Files
{
    // Declarations of the model file.
    std::string models = {};
    // Comma-separated.
    std::string usedModels = {};
    // Elements of the context file; none is written when empty.
    std::string context = {};
    // Further lines of the parameter file.
    std::string parameters = {};
};

// A process with files of its own in a temporary folder, and the two operators above.
class ProcessFixture : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    // Writes the files of the files and gives their paths to the process.
    void write(const Files& files);
    // The same, then init(); what that prints is kept in m_output and m_errors.
    bool start(const Files& files);
    bool init();
    // Performs one frame at 10:00 and some seconds; what that prints is kept in m_output.
    void frame(int number, double second, const rhmAbstractProcessEventRecognition::Actors& actors);

    void writeFile(const std::string& name, const std::string& text) const;
    std::string readFile(const std::string& name) const;

    std::string path(const std::string& name) const { return (m_folder / name).string(); }

    static QSharedPointer<rhmDataActor> actor(int id, const std::string& type, float height = 1.8F);
    static QSharedPointer<rhmDataActor> person(int id, float height = 1.8F);

    // The agent with this identifier of the host; null when there is none.
    std::shared_ptr<CSAgent> agent(int hostId, bool isConstant) const;
    // An attribute of it as text; "(none)" when it is not set.
    std::string attribute(int hostId, bool isConstant, const std::string& name) const;

    std::filesystem::path m_folder;
    std::string m_output;
    std::string m_errors;
    std::vector<std::string> m_log;
    AboveOperator m_above;
    FailingOperator m_failing;
    // Destroyed before the operators.
    std::unique_ptr<ScenarioMatchProcess> m_process;
};

} // namespace scenariomatch
