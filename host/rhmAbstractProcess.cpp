#include "host/rhmAbstractProcess.h"

#include <utility>

rhmAbstractProcess::rhmAbstractProcess()
    : m_synchronizer(std::make_shared<CSynchronizer>())
{
}

rhmAbstractProcess::~rhmAbstractProcess() = default;

void rhmAbstractProcess::copy(const ovkAbstractProcess& other)
{
    ovkAbstractProcess::copy(other);
    if (const auto* process = dynamic_cast<const rhmAbstractProcess*>(&other)) {
        m_synchronizer = process->m_synchronizer;
    }
}

void rhmAbstractProcess::setSynchronizer(std::shared_ptr<CSynchronizer> synchronizer)
{
    if (synchronizer != nullptr) {
        m_synchronizer = std::move(synchronizer);
    }
}
