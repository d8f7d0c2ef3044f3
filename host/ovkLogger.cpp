#include "host/ovkLogger.h"

#include <utility>

ovkLogger* ovkLogger::instance()
{
    static ovkLogger logger;
    return &logger;
}

ovkLogger::ovkLogger()
    : m_engine(std::make_unique<ovkLogEngine>())
{
}

void ovkLogger::log(int level, const std::string& message)
{
    if (admits(level)) {
        m_engine->write(level, message);
    }
}

void ovkLogger::setEngine(std::unique_ptr<ovkLogEngine> engine)
{
    m_engine = engine != nullptr ? std::move(engine) : std::make_unique<ovkLogEngine>();
}
