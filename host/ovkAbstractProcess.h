#pragma once

#include "host/HostExport.h"

#include <QString>

#include <optional>
#include <string>
#include <vector>

// Base of every process of the platform: something that is created by type name, configured by
// parameters and then driven by the platform.
//
// Owned by whoever created it; all calls from one thread.
class CS_HOST_EXPORT ovkAbstractProcess
{
public:
    ovkAbstractProcess() = default;
    ovkAbstractProcess(const ovkAbstractProcess&) = delete;
    ovkAbstractProcess(ovkAbstractProcess&&) = delete;
    ovkAbstractProcess& operator=(const ovkAbstractProcess&) = delete;
    ovkAbstractProcess& operator=(ovkAbstractProcess&&) = delete;
    virtual ~ovkAbstractProcess();

    // The name of the process type.
    virtual QString identifier() const = 0;

    // Takes over the state that both processes have. At this level there is none.
    virtual void copy(const ovkAbstractProcess& other);

    // The names of all parameters. A process without parameters overrides none of these three.
    virtual std::vector<std::string> parameterNames() const;
    // The parameter's value as text; nothing when there is no such parameter.
    virtual std::optional<std::string> parameter(const std::string& name) const;
    // False, and nothing is changed, when there is no such parameter or the text is no value of its
    // type.
    virtual bool setParameter(const std::string& name, const std::string& value);
};
