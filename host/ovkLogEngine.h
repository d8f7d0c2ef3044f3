#pragma once

#include "host/HostExport.h"

#include <string>

// Where the platform's log messages go; see ovkLogger. The default writes lines to standard error.
class CS_HOST_EXPORT ovkLogEngine
{
public:
    ovkLogEngine() = default;
    ovkLogEngine(const ovkLogEngine&) = delete;
    ovkLogEngine(ovkLogEngine&&) = delete;
    ovkLogEngine& operator=(const ovkLogEngine&) = delete;
    ovkLogEngine& operator=(ovkLogEngine&&) = delete;
    virtual ~ovkLogEngine();

    // Writes one admitted message, which has no line end of its own.
    virtual void write(int level, const std::string& message);
};
