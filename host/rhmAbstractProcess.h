#pragma once

#include "host/CSynchronizer.h"
#include "host/ovkAbstractProcess.h"

#include <memory>

// Base of the video analysis processes: a process with a clock.
class CS_HOST_EXPORT rhmAbstractProcess : public ovkAbstractProcess
{
public:
    rhmAbstractProcess();
    rhmAbstractProcess(const rhmAbstractProcess&) = delete;
    rhmAbstractProcess(rhmAbstractProcess&&) = delete;
    rhmAbstractProcess& operator=(const rhmAbstractProcess&) = delete;
    rhmAbstractProcess& operator=(rhmAbstractProcess&&) = delete;
    ~rhmAbstractProcess() override;

    // Shares the other's clock, when it has one.
    void copy(const ovkAbstractProcess& other) override;

    // Never null; the process starts with one of its own.
    const std::shared_ptr<CSynchronizer>& getSynchronizer() const { return m_synchronizer; }

    // Lets several processes share one clock; null is ignored.
    void setSynchronizer(std::shared_ptr<CSynchronizer> synchronizer);

private:
    std::shared_ptr<CSynchronizer> m_synchronizer;
};
