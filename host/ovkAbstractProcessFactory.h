#pragma once

#include "host/HostExport.h"
#include "host/ovkAbstractProcess.h"

#include <QString>
#include <QStringList>

#include <map>
#include <memory>

// Creates processes by the name of their type; plug-ins register their types here.
//
// One for the whole program. All calls from one thread.
//
// Example:
//     ovkAbstractProcessFactory::instance()->registerProcessType(
//         QStringLiteral("Counter"), createCounter, QStringLiteral("rhmAbstractProcess"));
//     auto process = ovkAbstractProcessFactory::instance()->create(QStringLiteral("Counter"));
class CS_HOST_EXPORT ovkAbstractProcessFactory
{
public:
    using Creator = std::unique_ptr<ovkAbstractProcess> (*)();

    static ovkAbstractProcessFactory* instance();

    ovkAbstractProcessFactory(const ovkAbstractProcessFactory&) = delete;
    ovkAbstractProcessFactory(ovkAbstractProcessFactory&&) = delete;
    ovkAbstractProcessFactory& operator=(const ovkAbstractProcessFactory&) = delete;
    ovkAbstractProcessFactory& operator=(ovkAbstractProcessFactory&&) = delete;

    // False, and nothing is changed, when the type is registered already, has no name or has no
    // creator. The interface is the name of the base class that the processes of this type offer.
    bool registerProcessType(const QString& type, Creator creator, const QString& interfaceName);

    // A new process; null when the type is not registered.
    std::unique_ptr<ovkAbstractProcess> create(const QString& type) const;

    // The registered types, in alphabetical order.
    QStringList types() const;
    // Empty when the type is not registered.
    QString interfaceName(const QString& type) const;

private:
    struct Entry
    {
        Creator creator = nullptr;
        QString interfaceName;
    };

    ovkAbstractProcessFactory() = default;
    ~ovkAbstractProcessFactory() = default;

    std::map<QString, Entry> m_entries;
};
