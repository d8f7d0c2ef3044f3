#include "ProcessFixture.h"

#include "scenario/CSScenario.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace scenariomatch
{

namespace
{

constexpr const char* kObjects = "class Mobile {\nconstant false;\n2DDPOINT Position2D;\n}\n"
                                 "class Person {\nconstant false;\nDOUBLE Height;\n}\n"
                                 "class Zone {\nconstant true;\nSTRING Name;\n}\n"
                                 "class Equipment {\nconstant true;\nSTRING Name;\n}\n"
                                 "class Wall {\nconstant true;\nSTRING Name;\n}\n"
                                 "class Camera {\nconstant true;\nSTRING Name;\n}\n"
                                 "class Scene {\nconstant true;\nINT NumberOfActors;\n}\n";

double numberOf(const std::shared_ptr<CSBasicType>& value)
{
    const auto* number = dynamic_cast<const CSDouble*>(value.get());
    return number != nullptr ? number->m_value : std::nan("");
}

// The class-wide tables outlive a process; every test begins with empty ones.
void clearClassWideTables()
{
    CSAgent::m_allObjectTypes.clear();
    CSAgent::m_allAttributes.clear();
    CSAgent::m_constantObjects.clear();
    CSEngine::h_currentTime.clear();
    CConstraint::m_allOperators.clear();
}

} // namespace

AboveOperator::AboveOperator()
{
    m_name = "above";
}

std::shared_ptr<CSBasicType>
AboveOperator::evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments)
{
    return std::make_shared<CSBool>(
        arguments.size() == 2 && numberOf(arguments[0]) > numberOf(arguments[1]));
}

FailingOperator::FailingOperator()
{
    m_name = "fails";
}

std::shared_ptr<CSBasicType>
FailingOperator::evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/)
{
    throw std::runtime_error("no idea");
}

void ProcessFixture::SetUp()
{
    std::string name = testing::TempDir() + "scenariomatch.XXXXXX";
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    m_folder = name;
    clearClassWideTables();
    ovkLogger::instance()->setEngine(std::make_unique<LogRecorder>(m_log));
    m_process = std::make_unique<ScenarioMatchProcess>();
    m_process->engine()->addOperator(m_above);
    m_process->engine()->addOperator(m_failing);
}

void ProcessFixture::TearDown()
{
    m_process.reset();
    ovkLogger::instance()->setEngine(nullptr);
    std::filesystem::remove_all(m_folder);
}

void ProcessFixture::write(const Files& files)
{
    writeFile("models.txt", "Scenarios {test,\n" + files.models + "\n}\n");
    writeFile("settings.txt", "Engine {test,\nUsedModels(" + files.usedModels + ")\n}\n");
    writeFile(
        "engine.txt", "List {test,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n");
    writeFile("objects.txt", kObjects);
    std::string parameters = files.parameters;
    if (!files.context.empty()) {
        writeFile("context.xml", "<Context>" + files.context + "</Context>");
        parameters += "RHMContext: \"context.xml\"\n";
    }
    writeFile(
        "parameters.yml",
        "%YAML:1.0\nscenarioRecognitionObjectDescription: \"objects.txt\"\n"
        "scenarioRecognitionModelFileName: \"engine.txt\"\n" +
            parameters);
    m_process->setParameterFile(path("parameters.yml"));
    m_process->setCommonFilePath(path(""));
}

bool ProcessFixture::start(const Files& files)
{
    write(files);
    return init();
}

bool ProcessFixture::init()
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const bool isReady = m_process->init();
    m_output = testing::internal::GetCapturedStdout();
    m_errors = testing::internal::GetCapturedStderr();
    return isReady;
}

void ProcessFixture::frame(
    int number, double second, const rhmAbstractProcessEventRecognition::Actors& actors)
{
    const auto whole = static_cast<int>(second);
    m_process->getSynchronizer()->setFrameNumber(number);
    m_process->getSynchronizer()->setDateTime(
        {.year = 2026,
         .month = 5,
         .day = 4,
         .hour = 10,
         .minute = whole / 60,
         .second = whole % 60,
         .millisecond = static_cast<int>(std::lround((second - whole) * 1000))});
    m_process->setActors(actors);
    testing::internal::CaptureStdout();
    EXPECT_TRUE(m_process->performEventRecognition());
    m_output = testing::internal::GetCapturedStdout();
}

void ProcessFixture::writeFile(const std::string& name, const std::string& text) const
{
    std::ofstream file(m_folder / name, std::ios::binary);
    file << text;
    ASSERT_TRUE(file.flush().good());
}

std::string ProcessFixture::readFile(const std::string& name) const
{
    const std::ifstream file(m_folder / name, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

QSharedPointer<rhmDataActor> ProcessFixture::actor(int id, const std::string& type, float height)
{
    auto result = QSharedPointer<rhmDataActor>::create();
    result->setIdent(id);
    result->setType(type);
    result->setInformation3D(Information3D(height, 0.5F, 0.25F));
    return result;
}

QSharedPointer<rhmDataActor> ProcessFixture::person(int id, float height)
{
    return actor(id, "PERSON", height);
}

std::shared_ptr<CSAgent> ProcessFixture::agent(int hostId, bool isConstant) const
{
    for (const auto& [id, agent] : m_process->engine()->agents()) {
        if (agent->m_ID == hostId && agent->m_constant == isConstant) {
            agent->makeUp();
            return agent;
        }
    }
    return nullptr;
}

std::string ProcessFixture::attribute(int hostId, bool isConstant, const std::string& name) const
{
    const auto found = agent(hostId, isConstant);
    if (found == nullptr) {
        return "(no agent)";
    }
    const auto value = found->m_attributes.find(name);
    return value == found->m_attributes.end() ? "(none)" : toString(value->second.get());
}

} // namespace scenariomatch
