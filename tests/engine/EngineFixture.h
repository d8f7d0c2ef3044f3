#pragma once

#include "engine/CSEngine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace scenariomatch
{

// Keeps what is written to a stream while it lives.
class CapturedStream
{
public:
    explicit CapturedStream(std::ostream& stream);
    CapturedStream(const CapturedStream&) = delete;
    CapturedStream(CapturedStream&&) = delete;
    CapturedStream& operator=(const CapturedStream&) = delete;
    CapturedStream& operator=(CapturedStream&&) = delete;
    ~CapturedStream();

    std::string text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::ostream& m_stream;
    std::streambuf* m_before;
};

// A folder of the test's own, removed at its end.
class TemporaryFolder
{
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;
    ~TemporaryFolder();

    // Writes a file, whose folders are made, and returns its path.
    std::string write(const std::string& name, const std::string& text) const;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

// An operator made of a function.
class FunctionOperator : public CSOperatorInterfaceAbstract
{
public:
    using Arguments = std::vector<std::shared_ptr<CSBasicType>>;
    using Function = std::function<std::shared_ptr<CSBasicType>(const Arguments&)>;

    FunctionOperator(std::string name, Function function);

    std::shared_ptr<CSBasicType> evaluate(Arguments arguments) override;
    CSOperatorDescription describe() const override;

    CSOperatorDescription m_description;

private:
    Function m_function;
};

// An engine, and means to fill it: operators, models as text, frames.
//
// Operators of every fixture, on the attribute "P" (a CSDouble):
//     p->P near q->P    at most 1 apart
//     p->P above 2      greater than
//     sure(p->P)        true with the value as confidence
//     a before b        the interval a ends before b starts; temporal, a ends first
//     a overlap b       the intervals share a time; temporal, does not say which ends first
class EngineFixture : public ::testing::Test
{
protected:
    struct Actor
    {
        int host;
        std::string type;
        double position;
    };

    EngineFixture();
    void TearDown() override;

    FunctionOperator& addOperator(const std::string& name, FunctionOperator::Function function);
    // The operators added are those that models read from now on may use.
    void publishOperators();
    // Reads the declarations of a model file and uses the models named.
    void readModels(const std::string& declarations, const std::string& usedModels);
    // Enters a constant object with a position.
    int enterConstant(const Actor& object);
    // Enters the actors at the time and runs recognition.
    void runFrame(int frame, double seconds, const std::vector<Actor>& actors);
    void enterFrame(int frame, double seconds, const std::vector<Actor>& actors);

    // One instance in short: "0 Low 1..3 p=7", with start and end as frame numbers.
    static std::string describe(const CSScenarioInstance& instance);
    // All that is recognised and alive, in list order.
    std::vector<std::string> alive() const;
    // Those that ended at the current time.
    std::vector<std::string> endedNow() const;

    static std::shared_ptr<CSTimeStamp> stamp(int frame, double seconds, double milliseconds = 0.0);

    TemporaryFolder m_folder;
    std::vector<std::unique_ptr<FunctionOperator>> m_operators;
    CSEngine m_engine;
};

} // namespace scenariomatch
