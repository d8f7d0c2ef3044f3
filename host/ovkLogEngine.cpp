#include "host/ovkLogEngine.h"

#include <iostream>

ovkLogEngine::~ovkLogEngine() = default;

void ovkLogEngine::write(int /*level*/, const std::string& message)
{
    std::cerr << message << '\n';
}
