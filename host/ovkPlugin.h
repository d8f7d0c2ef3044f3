#pragma once

#include "host/HostExport.h"

#include <QString>
#include <QStringList>
#include <QtPlugin>

// What the root object of every plug-in of the platform offers.
//
// The platform loads the library, casts the root object to this interface and calls initialize()
// once; the plug-in registers its process types there. Libraries are never unloaded.
//
// Example:
//     QPluginLoader loader(fileName);
//     auto* plugin = qobject_cast<ovkPlugin*>(loader.instance());
//     if (plugin != nullptr && plugin->initialize()) { ... }
class CS_HOST_EXPORT ovkPlugin
{
public:
    ovkPlugin() = default;
    ovkPlugin(const ovkPlugin&) = delete;
    ovkPlugin(ovkPlugin&&) = delete;
    ovkPlugin& operator=(const ovkPlugin&) = delete;
    ovkPlugin& operator=(ovkPlugin&&) = delete;
    virtual ~ovkPlugin();

    // For people, as are description and tags.
    virtual QString name() const = 0;
    virtual QString description() const = 0;
    virtual QStringList tags() const = 0;
    // The process types that initialize() registers.
    virtual QStringList types() const = 0;
    // Registers the process types. False when the plug-in cannot be used.
    virtual bool initialize() = 0;
    // The reverse of initialize(). False when the plug-in has to stay.
    virtual bool uninitialize() = 0;
};

// The interface's name in the metadata of plug-ins.
#define OVK_PLUGIN_INTERFACE_ID "ovk.ovkPlugin/1.0"
Q_DECLARE_INTERFACE(ovkPlugin, OVK_PLUGIN_INTERFACE_ID)
