#include "host/ovkAbstractProcessFactory.h"

ovkAbstractProcessFactory* ovkAbstractProcessFactory::instance()
{
    static ovkAbstractProcessFactory factory;
    return &factory;
}

bool ovkAbstractProcessFactory::registerProcessType(
    const QString& type, Creator creator, const QString& interfaceName)
{
    if (type.isEmpty() || creator == nullptr) {
        return false;
    }
    return m_entries.try_emplace(type, Entry{creator, interfaceName}).second;
}

std::unique_ptr<ovkAbstractProcess> ovkAbstractProcessFactory::create(const QString& type) const
{
    const auto entry = m_entries.find(type);
    return entry == m_entries.end() ? nullptr : entry->second.creator();
}

QStringList ovkAbstractProcessFactory::types() const
{
    QStringList names;
    for (const auto& entry : m_entries) {
        names.append(entry.first);
    }
    return names;
}

QString ovkAbstractProcessFactory::interfaceName(const QString& type) const
{
    const auto entry = m_entries.find(type);
    return entry == m_entries.end() ? QString() : entry->second.interfaceName;
}
