#pragma once

#include "CSAgent.h"

// What the types without a parent derive from.
class Agent : public CSAgent
{
};
