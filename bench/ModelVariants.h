#pragma once

#include "bench/Crowd.h"
#include "bench/TemporaryFolder.h"

#include <string>
#include <vector>

namespace scenariomatch
{

// Models made for a benchmark, and the zones that they are about.
struct MadeModels
{
    // The models' texts, one after the other.
    std::string text;
    std::vector<std::string> names;
    std::vector<CrowdZone> zones;
};

// The four questions so many times over, each with thresholds and zones of its own and made of
// models of its own: the distance and the time of near_long, the zone and the distance of
// near_in_A, the zone and the time of follow, both zones and the time of A_to_B are varied. Every
// five variants share a pair of zones.
MadeModels variedQuestions(const Crowd& crowd, int variants);

// One state of so many people who are all closer to each other than two metres.
MadeModels closePeople(const Crowd& crowd, int people);

// A state that is true of everybody, and events upon it, one made of the one before; so many models
// in all, of which each frame recognises every one for every person.
MadeModels levelChain(const Crowd& crowd, int levels);

// Adds states of one object of type Mobile, each true of so many objects from an id on. What they
// recognise has nothing to do with the people of the crowd.
void addSeenModels(MadeModels& made, int models, int firstId, int objectsEach);

// The four questions as they stand in bench/crowd/.
MadeModels fourQuestions(const Crowd& crowd);

// Writes engine, settings and model file into the folder; returns the name of the first.
std::string writeModels(const MadeModels& made, const TemporaryFolder& folder);

} // namespace scenariomatch
