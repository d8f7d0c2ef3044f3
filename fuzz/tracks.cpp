// Tracks in one of the formats; TRACK_FORMAT tells which.
#include "app/TrackReader.h"
#include "fuzz/FuzzFile.h"

#include <cmath>
#include <sstream>

namespace
{

bool isFinite(const std::optional<scenariomatch::TrackPoint>& point)
{
    return !point ||
           (std::isfinite(point->x) && std::isfinite(point->y) && std::isfinite(point->z));
}

void check(const scenariomatch::TrackFrame& frame)
{
    for (const auto& actor : frame.actors) {
        if (actor.id < 0 || !isFinite(actor.position)) {
            __builtin_trap();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    const std::string file = fuzzFolder().write("tracks", textOf(data, size));
    TrackReaderOptions options;
    options.format = TrackFormat::TRACK_FORMAT;
    options.framesPerSecond = 25.0;
    std::ostringstream talk;
    TrackProblems problems(file, talk, {});
    TrackFailure failure;
    const auto reader = openTracks(file, options, problems, failure);
    TrackFrame frame;
    std::size_t used = 0;
    while (reader && reader->next(frame)) {
        check(frame);
        used += frame.actors.size();
    }
    if (problems.actorsRead() != used + problems.actorsDropped()) {
        __builtin_trap();
    }
    return 0;
}
