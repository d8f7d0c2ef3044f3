#pragma once

#include "app/explain/NearMiss.h"

#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

struct Evidence;

// A sub-event, and when it ended as far as was known then.
struct EvidencePart
{
    std::string variable;
    Moment until;
    std::shared_ptr<const Evidence> evidence;
};

// Why an event was recognised: what was seen when it was recognised first.
struct Evidence
{
    int id = 0;
    std::string model;
    std::string kind;
    double confidence = 1.0;
    double threshold = 0.0;
    // When the event begins, when it was recognised first, and until when it went on.
    Moment begin;
    Moment recognised;
    Moment end;
    // The first frame of the tracks.
    Moment start;
    std::vector<EventObject> objects;
    // One for each constraint; one that must not be asked again has neither values nor margin.
    std::vector<Finding> findings;
    std::vector<EvidencePart> parts;
};

} // namespace scenariomatch
