#pragma once

#include "app/explain/NearMiss.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

struct WhyNot;

// A candidate that met all constraints and was not believed enough.
struct ConfidenceMiss
{
    std::uint64_t times = 0;
    double threshold = 0.0;
    // The greatest confidence, who and when.
    double confidence = 0.0;
    NearMiss nearest;
};

// What became of one component of a composite model.
struct ComponentOutcome
{
    std::string variable;
    std::string model;
    std::vector<std::string> arguments;
    // How many events of its model there were, with objects that are asked for.
    std::uint64_t events = 0;
    // Why there were none; null where there were.
    std::shared_ptr<const WhyNot> missing;
};

// An event that did appear.
struct AppearedEvent
{
    int id = 0;
    Moment begin;
    Moment end;
    std::vector<EventObject> objects;
};

// Why a model did not match, over a window of time.
struct WhyNot
{
    std::string model;
    std::string kind;
    // The first and last frame of the window, and the first of the tracks.
    Moment start;
    Moment first;
    Moment last;
    std::uint64_t frames = 0;
    // The objects asked for, and those of them that were not seen.
    std::vector<std::string> objects;
    std::vector<std::string> unseenObjects;
    // Types of the model of which no object was seen.
    std::vector<std::string> unseenTypes;
    std::vector<AppearedEvent> events;
    std::uint64_t candidates = 0;
    // Frames in which there were too many of them to try all.
    std::uint64_t cutFrames = 0;
    std::vector<ConstraintOutcome> constraints;
    // The candidate that came nearest, with all constraints that were false for it. Nothing where
    // some constraint must not be asked again.
    std::optional<NearMiss> nearest;
    std::optional<MissRank> nearestRank;
    std::optional<ConfidenceMiss> confidence;
    std::vector<ComponentOutcome> components;
    // Why sub-events that were recognised never made a candidate; a clause without full stop.
    std::string apart;
};

} // namespace scenariomatch
