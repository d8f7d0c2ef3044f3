#pragma once

#include "engine/CSEngine.h"

namespace scenariomatch
{

// Forgets what earlier inputs entered into tables of the process, and gives the engine the standard
// operators, which are loaded once, and the types of the scene below.
void prepare(CSEngine& engine);

// A zone and a few people who walk about, for some frames: enough for every kind of candidate
// to be tried.
void recogniseSomething(CSEngine& engine);

} // namespace scenariomatch
