#include "engine/CSEngine.h"
#include "host/ovkLogger.h"
#include "host/rhmDataContext.h"
#include "plugin/ActorAgents.h"
#include "plugin/EventFile.h"
#include "plugin/ScenarioMatchProcess.h"

#include <fstream>
#include <iostream>
#include <set>
#include <stdexcept>

using scenariomatch::Vertex3D;

namespace
{

constexpr const char* kSeparator = "_________________________________________\n";

std::shared_ptr<CS3DDPoint> point(const Vertex3D& vertex)
{
    return std::make_shared<CS3DDPoint>(vertex.x, vertex.y, vertex.z);
}

std::shared_ptr<CS3DDPoint> centroid(const std::vector<Vertex3D>& vertices)
{
    Vertex3D sum;
    for (const auto& vertex : vertices) {
        sum.x += vertex.x;
        sum.y += vertex.y;
        sum.z += vertex.z;
    }
    const auto count = static_cast<double>(vertices.size());
    return point({sum.x / count, sum.y / count, sum.z / count});
}

std::shared_ptr<CS3DDPoint> middle(const Vertex3D& a, const Vertex3D& b)
{
    return point({(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2});
}

std::shared_ptr<CS3DDPoints> points(const std::vector<Vertex3D>& vertices)
{
    auto list = std::make_shared<CS3DDPoints>();
    for (const auto& vertex : vertices) {
        list->addPoint(CS3DDPoint(vertex.x, vertex.y, vertex.z));
    }
    return list;
}

// The host's context reader refuses elements without vertices; another platform's may not.
Vertex3D first(const std::vector<Vertex3D>& vertices)
{
    return vertices.empty() ? Vertex3D() : vertices.front();
}

Vertex3D last(const std::vector<Vertex3D>& vertices)
{
    return vertices.empty() ? Vertex3D() : vertices.back();
}

// A constant agent of the engine whose attributes are being entered.
class ConstantAgent
{
public:
    ConstantAgent(CSEngine& engine, int hostId, const std::string& type, const std::string& name)
        : m_engine(engine)
        , m_agent(engine.getAgent(hostId, true))
    {
        m_engine.setAgentType(m_agent, "Type", std::make_shared<CSString>(type), 0);
        set("Name", std::make_shared<CSString>(name));
    }

    void set(const std::string& attribute, std::shared_ptr<CSBasicType> value)
    {
        m_engine.setAgentAttribute(m_agent, attribute, std::move(value), 0);
    }

private:
    CSEngine& m_engine;
    int m_agent;
};

void enterPolygon(ConstantAgent& agent, const ContextElement& element)
{
    agent.set("Vertices", points(element.vertices));
    agent.set("Position", centroid(element.vertices));
}

void enterCircle(ConstantAgent& agent, const ContextElement& element)
{
    agent.set("Height", std::make_shared<CSDouble>(element.height));
    agent.set("Radius", std::make_shared<CSDouble>(element.radius));
    agent.set("Position", point(first(element.vertices)));
}

void enterWall(ConstantAgent& agent, const ContextElement& element)
{
    const Vertex3D start = first(element.vertices);
    const Vertex3D end = last(element.vertices);
    agent.set("StartPoint", point(start));
    agent.set("EndPoint", point(end));
    agent.set("Position", middle(start, end));
    agent.set("Height", std::make_shared<CSDouble>(element.height));
}

} // namespace

bool ScenarioMatchProcess::init()
{
    try {
        std::cout << "\nScenarioMatchProcess::init()";
        m_currentFile = getParameterFile();
        readEngineParametersFromFile(m_currentFile);
        initOperators();
        initLevels();
        initEventFile();
        if (m_debug) {
            std::cout << kSeparator << "Debug mode On: Extendable TRX\nBegin Init()\n";
        }
        initTime();
        initModels();
        return initContext();
    } catch (const std::out_of_range& failure) {
        ovkLogger::instance()->log(
            ovkLogger::kErrorLevel,
            m_currentFile + ": the text breaks off where something must follow (" + failure.what() +
                ")");
        return false;
    }
}

void ScenarioMatchProcess::initOperators()
{
    std::cout << "OperatorPath:" << m_operatorPluginPath << '\n';
    m_engine->m_operatorPluginPath = m_operatorPluginPath;
    m_engine->setAllOperators();
    m_engine->m_debug = m_debug;
    m_engine->m_bayesianRatio = m_bayesianRatio;
}

void ScenarioMatchProcess::initLevels()
{
    m_engine->setThresholdByEventType("PrimitiveState", m_confidencePrimitiveState);
    m_engine->setThresholdByEventType("PrimitiveEvent", m_confidencePrimitiveEvent);
    m_engine->setThresholdByEventType("CompositeState", m_confidenceCompositeState);
    m_engine->setThresholdByEventType("CompositeEvent", m_confidenceCompositeEvent);
    m_engine->setLevelAlarm("NOTURGENT", 0);
    m_engine->setLevelAlarm("URGENT", 1);
    m_engine->setLevelAlarm("VERYURGENT", 2);
    m_engine->setLevelAlarm("SUPERURGENT", 3);
    // An unknown level is entered, as 0.
    m_reportLevel = m_engine->m_levelAlarm[m_xml3AlarmLevel];
}

void ScenarioMatchProcess::initEventFile()
{
    if (m_saveXML3File) {
        std::ofstream(m_xml3FileName, std::ios::trunc).close();
        scenariomatch::appendToFile(
            m_xml3FileName,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Tarvos version=\"3.00\">\n");
    }
}

void ScenarioMatchProcess::initTime()
{
    m_engine->m_constProlongation = m_constProlongation;
    m_engine->setConstTimeSearch(m_constTimeSearch);
    m_engine->setHistorySize(m_historySize);
}

void ScenarioMatchProcess::initModels()
{
    m_currentFile = getCommonFilePath() + m_operatorDescription;
    m_engine->readOperatorAgent(m_currentFile);
    std::cout << "\nreadOperatorAgent:" << m_currentFile;

    m_currentFile = getCommonFilePath() + m_objectDescription;
    m_engine->readAllObjects(m_currentFile);
    std::cout << "readAllObjects:" << m_currentFile;
    if (!CSAgent::m_allObjectTypes.empty()) {
        m_engine->setAllObjectTypes(CSAgent::m_allObjectTypes);
    }

    m_currentFile = getCommonFilePath() + m_modelFileName;
    m_engine->read(m_currentFile);
    std::cout << "Models:" << m_currentFile;
    m_engine->rewriteAgentOperator();
    m_actorAgents->setNamedAttributes(scenariomatch::namedAttributes(*m_engine->m_allScenarios));
    if (m_debug) {
        m_engine->m_allScenarios->print();
        std::cout << "Initialisation: Read the context\n";
    }
}

bool ScenarioMatchProcess::initContext()
{
    m_currentFile = getCommonFilePath() + m_contextFileName;
    readContextualInformationFile(m_currentFile);
    if (m_context.empty()) {
        return true;
    }
    int id = 0;
    for (const auto& element : m_context) {
        std::cout << element.kind << '\n' << element.name << '\n';
        id = enterContextElement(element, id);
    }
    if (m_debug) {
        std::cout << "Agents ";
        m_engine->printAgents();
        std::cout << "\nEnd Init()\n" << kSeparator;
    }
    return true;
}

// Returns the identifier for the next element: what is not known, such as a camera, gives its own
// away.
int ScenarioMatchProcess::enterContextElement(const ContextElement& element, int id)
{
    const bool isPolygon = element.shape == "polygon";
    if (element.kind == "zone" && isPolygon) {
        ConstantAgent agent(*m_engine, id, "Zone", element.name);
        enterPolygon(agent, element);
    } else if (element.kind == "object" && isPolygon) {
        ConstantAgent agent(*m_engine, id, "Equipment", element.name);
        enterPolygon(agent, element);
        agent.set("Height", std::make_shared<CSDouble>(element.height));
    } else if (element.kind == "object" && element.shape == "circle") {
        ConstantAgent agent(*m_engine, id, "Equipment", element.name);
        enterCircle(agent, element);
    } else if (element.kind == "wall" && isPolygon) {
        ConstantAgent agent(*m_engine, id, "Wall", element.name);
        enterWall(agent, element);
    } else {
        const ConstantAgent agent(*m_engine, id, "Camera", "Cam");
        return id;
    }
    return id + 1;
}

int ScenarioMatchProcess::readContextualInformationFile(const std::string& path)
{
    rhmDataContext context;
    std::cout << "\nFile:" << path;
    const bool isRead = context.read(QString::fromStdString(path));
    // A scene without a context is no error, and then the path is the prefix alone.
    const bool isNamed = path != getCommonFilePath();
    for (const auto& error : context.errors()) {
        if (!isNamed) {
            break;
        }
        ovkLogger::instance()->log(ovkLogger::kErrorLevel, error.text());
    }
    if (isRead) {
        setListContextualElements(context.getContext());
        std::cout << "Context has been set\n\n";
    } else {
        setListContextualElements({});
        std::cout << "ERROR reading the Context XML file.Check the filename!\n";
    }
    return 0;
}

void ScenarioMatchProcess::setListContextualElements(std::vector<ContextElement> elements)
{
    m_context = std::move(elements);
}
