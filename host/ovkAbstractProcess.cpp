#include "host/ovkAbstractProcess.h"

ovkAbstractProcess::~ovkAbstractProcess() = default;

void ovkAbstractProcess::copy(const ovkAbstractProcess& /*other*/) {}

std::vector<std::string> ovkAbstractProcess::parameterNames() const
{
    return {};
}

std::optional<std::string> ovkAbstractProcess::parameter(const std::string& /*name*/) const
{
    return std::nullopt;
}

bool ovkAbstractProcess::setParameter(const std::string& /*name*/, const std::string& /*value*/)
{
    return false;
}
