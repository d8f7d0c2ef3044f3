#include "plugin/ScenarioMatchProcessPlugin.h"

#include "host/ovkLogger.h"
#include "plugin/ScenarioMatchProcess.h"

ScenarioMatchProcessPlugin::ScenarioMatchProcessPlugin() = default;

ScenarioMatchProcessPlugin::~ScenarioMatchProcessPlugin() = default;

QString ScenarioMatchProcessPlugin::name() const
{
    return QStringLiteral("ScenarioMatchProcessPlugin");
}

QString ScenarioMatchProcessPlugin::description() const
{
    return {};
}

QStringList ScenarioMatchProcessPlugin::tags() const
{
    return {};
}

QStringList ScenarioMatchProcessPlugin::types() const
{
    return {QStringLiteral("ScenarioMatchProcess")};
}

bool ScenarioMatchProcessPlugin::initialize()
{
    if (!ScenarioMatchProcess::registered()) {
        ovkLogger::instance()->log(
            ovkLogger::kErrorLevel, "Unable to register ScenarioMatchProcess type");
    }
    return true;
}

bool ScenarioMatchProcessPlugin::uninitialize()
{
    return true;
}
