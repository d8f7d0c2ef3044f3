#pragma once

#include "tests/app/explain/ExplainWorld.h"

#include <cstdint>

namespace scenariomatch
{

// Worlds that are the same for the same seed on every machine.

// One primitive state "Asked" of one to four constraints, about two people and a zone at most.
World randomPrimitiveWorld(std::uint32_t seed);

// A composite event "Asked" of person 1's stay in zone A and person 2's in zone B.
World randomCompositeWorld(std::uint32_t seed);

} // namespace scenariomatch
