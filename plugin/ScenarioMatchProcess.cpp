#include "plugin/ScenarioMatchProcess.h"

#include "engine/CSEngine.h"
#include "host/ovkAbstractProcessFactory.h"
#include "host/ovkLogger.h"
#include "plugin/ActorAgents.h"
#include "plugin/EventFile.h"
#include "plugin/FeedWatch.h"

ScenarioMatchProcess::ScenarioMatchProcess()
    : m_engine(std::make_shared<CSEngine>())
    , m_actorAgents(std::make_unique<scenariomatch::ActorAgents>(*m_engine))
    , m_feedWatch(std::make_unique<scenariomatch::FeedWatch>())
{
    m_engine->setFailureReport([](const std::string& message) {
        ovkLogger::instance()->log(ovkLogger::kErrorLevel, message);
    });
}

ScenarioMatchProcess::~ScenarioMatchProcess()
{
    scenariomatch::appendToFile(m_xml3FileName, "</Tarvos>\n");
}

bool ScenarioMatchProcess::registered()
{
    return ovkAbstractProcessFactory::instance()->registerProcessType(
        QStringLiteral("ScenarioMatchProcess"),
        createScenarioMatchProcess,
        QStringLiteral("rhmAbstractProcessEventRecognition"));
}

QString ScenarioMatchProcess::identifier() const
{
    return QStringLiteral("ScenarioMatchProcess");
}

void ScenarioMatchProcess::copy(const ovkAbstractProcess& other)
{
    if (&other != this) {
        rhmAbstractProcessEventRecognition::copy(other);
    }
    if (other.identifier() != identifier()) {
        ovkLogger::instance()->log(
            ovkLogger::kErrorLevel,
            "Copy can't be done at the rhmAbstractProcessAcquisitor level.");
    }
}

std::unique_ptr<ovkAbstractProcess> createScenarioMatchProcess()
{
    return std::make_unique<ScenarioMatchProcess>();
}
