#pragma once

#include "host/HostExport.h"
#include "host/ovkLogEngine.h"

#include <memory>
#include <string>

// The platform's log: what plug-ins tell whoever runs the program.
//
// A message is admitted when the logger's level is not above the message's, so errors are admitted
// below 18. One for the whole program. All calls from one thread.
//
// Example:
//     ovkLogger::instance()->log(ovkLogger::kErrorLevel, "the disk is full");
class CS_HOST_EXPORT ovkLogger
{
public:
    static constexpr int kErrorLevel = 17;

    static ovkLogger* instance();

    ovkLogger(const ovkLogger&) = delete;
    ovkLogger(ovkLogger&&) = delete;
    ovkLogger& operator=(const ovkLogger&) = delete;
    ovkLogger& operator=(ovkLogger&&) = delete;

    int level() const { return m_level; }

    void setLevel(int level) { m_level = level; }

    bool admits(int level) const { return m_level <= level; }

    // Writes the message when its level is admitted.
    void log(int level, const std::string& message);

    // Replaces the place that messages go to; null brings standard error back.
    void setEngine(std::unique_ptr<ovkLogEngine> engine);

private:
    ovkLogger();
    ~ovkLogger() = default;

    int m_level = kErrorLevel;
    std::unique_ptr<ovkLogEngine> m_engine;
};
