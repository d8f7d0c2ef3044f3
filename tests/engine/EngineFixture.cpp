#include "tests/engine/EngineFixture.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <limits>
#include <stdexcept>
#include <utility>

namespace scenariomatch
{

namespace
{

double numberAt(const FunctionOperator::Arguments& arguments, std::size_t position)
{
    const auto value = std::dynamic_pointer_cast<CSDouble>(arguments.at(position));
    return value ? value->m_value : std::numeric_limits<double>::quiet_NaN();
}

std::shared_ptr<CSInterval>
intervalAt(const FunctionOperator::Arguments& arguments, std::size_t position)
{
    return std::dynamic_pointer_cast<CSInterval>(arguments.at(position));
}

void resetCatalogue()
{
    CSAgent::m_constantObjects.clear();
    CSAgent::m_allAttributes.clear();
    CSAgent::m_allObjectTypes.clear();
}

} // namespace

CapturedStream::CapturedStream(std::ostream& stream)
    : m_stream(stream)
    , m_before(stream.rdbuf(m_text.rdbuf()))
{
}

CapturedStream::~CapturedStream()
{
    m_stream.rdbuf(m_before);
}

TemporaryFolder::TemporaryFolder()
{
    std::string name = ::testing::TempDir() + "scenariomatch-engine-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    m_path = name;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TemporaryFolder::write(const std::string& name, const std::string& text) const
{
    const std::filesystem::path file = m_path / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file.string();
}

FunctionOperator::FunctionOperator(std::string name, Function function)
    : m_function(std::move(function))
{
    m_name = std::move(name);
}

std::shared_ptr<CSBasicType> FunctionOperator::evaluate(Arguments arguments)
{
    return m_function(arguments);
}

CSOperatorDescription FunctionOperator::describe() const
{
    return m_description;
}

EngineFixture::EngineFixture()
{
    addOperator("near", [](const auto& arguments) {
        const double distance = std::abs(numberAt(arguments, 0) - numberAt(arguments, 1));
        return std::make_shared<CSBool>(distance <= 1.0);
    });
    addOperator("above", [](const auto& arguments) {
        return std::make_shared<CSBool>(numberAt(arguments, 0) > numberAt(arguments, 1));
    });
    addOperator("sure", [](const auto& arguments) {
        return std::make_shared<CSBool>(true, numberAt(arguments, 0));
    });
    FunctionOperator& before = addOperator("before", [](const auto& arguments) {
        const auto first = intervalAt(arguments, 0);
        const auto second = intervalAt(arguments, 1);
        return std::make_shared<CSBool>(first && second && *first->m_end < *second->m_start);
    });
    before.m_isTemporal = true;
    before.m_description.m_endsFirst = 0;
    FunctionOperator& overlap = addOperator("overlap", [](const auto& arguments) {
        const auto first = intervalAt(arguments, 0);
        const auto second = intervalAt(arguments, 1);
        return std::make_shared<CSBool>(
            first && second && *first->m_start <= *second->m_end &&
            *second->m_start <= *first->m_end);
    });
    overlap.m_isTemporal = true;
    publishOperators();
    m_engine.setAllObjectTypes(
        {{"Person", {"Person", "Child"}}, {"Child", {"Child"}}, {"Zone", {"Zone"}}});
}

void EngineFixture::TearDown()
{
    CSEngine::h_currentTime.clear();
    CSEngine::m_historySize = 1;
    CSAgent::m_historySize = 1;
    CSScenarioInstance::m_const_TimeSearch = 600.0;
    CConstraint::m_allOperators.clear();
    resetCatalogue();
}

FunctionOperator&
EngineFixture::addOperator(const std::string& name, FunctionOperator::Function function)
{
    m_operators.push_back(std::make_unique<FunctionOperator>(name, std::move(function)));
    m_engine.addOperator(*m_operators.back());
    return *m_operators.back();
}

void EngineFixture::publishOperators()
{
    m_engine.readOperatorAgent("");
}

void EngineFixture::readModels(const std::string& declarations, const std::string& usedModels)
{
    m_folder.write("models.txt", "Scenarios {\ntest,\n" + declarations + "}\n");
    m_folder.write("settings.txt", "Engine {\ntest,\nUsedModels(" + usedModels + ")\n}\n");
    const std::string file = m_folder.write(
        "engine.txt",
        "List {\ntest,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n");
    const CapturedStream traces(std::cout);
    m_engine.read(file);
}

int EngineFixture::enterConstant(const Actor& object)
{
    const int id = m_engine.getAgent(object.host, true);
    m_engine.setAgentType(id, "Type", std::make_shared<CSString>(object.type), 0);
    m_engine.setAgentAttribute(id, "P", std::make_shared<CSDouble>(object.position), 0);
    return id;
}

void EngineFixture::enterFrame(int frame, double seconds, const std::vector<Actor>& actors)
{
    m_engine.setCurrentTime(stamp(frame, seconds), frame);
    for (const Actor& actor : actors) {
        const int id = m_engine.getAgent(actor.host, false);
        m_engine.setAgentFrameID(id, frame);
        m_engine.setAgentType(id, "Type", std::make_shared<CSString>(actor.type), frame);
        m_engine.setAgentAttribute(id, "P", std::make_shared<CSDouble>(actor.position), frame);
    }
}

void EngineFixture::runFrame(int frame, double seconds, const std::vector<Actor>& actors)
{
    enterFrame(frame, seconds, actors);
    m_engine.infer();
}

std::string EngineFixture::describe(const CSScenarioInstance& instance)
{
    std::string text = std::to_string(instance.m_id) + " " + instance.m_scenario->m_name + " " +
                       std::to_string(instance.m_start->m_frameID) + ".." +
                       std::to_string(instance.m_end->m_frameID);
    for (const auto& [variable, agent] : instance.m_bindings) {
        text += " " + variable + "=" + (agent ? std::to_string(agent->m_ID) : "none");
    }
    return text;
}

std::vector<std::string> EngineFixture::alive() const
{
    std::vector<std::string> lines;
    for (const auto& instance : m_engine.recognisedScenarios()) {
        lines.push_back(describe(*instance));
    }
    return lines;
}

std::vector<std::string> EngineFixture::endedNow() const
{
    std::vector<std::string> lines;
    for (const auto& instance : m_engine.recognisedScenarios()) {
        if (instance->m_end->duration(m_engine.currentTime()) == 0.0) {
            lines.push_back(describe(*instance));
        }
    }
    return lines;
}

std::shared_ptr<CSTimeStamp> EngineFixture::stamp(int frame, double seconds, double milliseconds)
{
    return std::make_shared<CSTimeStamp>(frame, seconds, milliseconds);
}

} // namespace scenariomatch
