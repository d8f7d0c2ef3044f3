#pragma once

#include "app/EventWriter.h"
#include "app/explain/Finding.h"
#include "types/CSTimeStamp.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// A frame, and its wall clock in milliseconds since 1970.
struct Moment
{
    int frame = 0;
    std::int64_t milliseconds = 0;
};

Moment momentOf(const CSTimeStamp& time);

// A candidate that was not recognised: who, when, and what was false.
struct NearMiss
{
    Moment when;
    // Of a composite the physical objects.
    std::vector<EventObject> objects;
    std::vector<Finding> findings;
    // Sub-events are taken whole that were still going on then.
    bool isHindsight = false;
};

// How near a candidate came: fewer false constraints are nearer, then fewer of unknown margin, then
// margins that are small against what was asked.
struct MissRank
{
    std::size_t failing = 0;
    std::size_t unmeasured = 0;
    double share = 0.0;

    bool operator<(const MissRank& other) const;

    // With one more false constraint.
    MissRank with(std::optional<double> margin, double scale) const;
};

// What became of one constraint over all candidates.
struct ConstraintOutcome
{
    std::string text;
    // How often it was the first that was false.
    std::uint64_t firstFalse = 0;
    // False for one that must not be asked a second time: nothing is known of its values.
    bool isPure = true;
    // The candidate that came nearest to meeting it, of those for which it was the first that was
    // false; its only finding is this constraint's.
    std::optional<NearMiss> nearest;
};

} // namespace scenariomatch
