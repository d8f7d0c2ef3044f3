#pragma once

#include "host/ovkPlugin.h"

#include <QObject>
#include <QString>
#include <QStringList>

// The root object of the plug-in: brings the process type "ScenarioMatchProcess" to the platform.
class ScenarioMatchProcessPlugin : public QObject, public ovkPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OVK_PLUGIN_INTERFACE_ID)
    Q_INTERFACES(ovkPlugin)

public:
    ScenarioMatchProcessPlugin();
    ScenarioMatchProcessPlugin(const ScenarioMatchProcessPlugin&) = delete;
    ScenarioMatchProcessPlugin(ScenarioMatchProcessPlugin&&) = delete;
    ScenarioMatchProcessPlugin& operator=(const ScenarioMatchProcessPlugin&) = delete;
    ScenarioMatchProcessPlugin& operator=(ScenarioMatchProcessPlugin&&) = delete;
    ~ScenarioMatchProcessPlugin() override;

    QString name() const override;
    // Empty.
    QString description() const override;
    // None.
    QStringList tags() const override;
    QStringList types() const override;
    // Registers the process type. True even when the factory refuses it; the platform's log says
    // so.
    bool initialize() override;
    // Does nothing.
    bool uninitialize() override;
};
