#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>

namespace scenariomatch
{

// Sizes beyond which event files are refused.
struct EventFileLimits
{
    // Of a frame, and so of what is held in memory.
    std::size_t frameBytes = std::size_t{64} << 20U;
};

// What stands in an event file, and what of it a repair leaves out.
struct EventFileRepair
{
    std::uint64_t frames = 0;
    // Frames that break off, and their bytes together.
    std::uint64_t torn = 0;
    std::uint64_t tornBytes = 0;
    // Nothing is left out and nothing is to be added.
    bool isWhole = true;
    // "FILE:LINE: REASON"; empty unless the file is refused.
    std::string problem;
};

// Copies an event file that may break off anywhere: its frames byte for byte, between the file's
// start and its end. Frames that break off are left out, and told of in talk, one a line. Refused
// is whatever a process does not leave behind when it is ended or the disk is full: to leave that
// out might lose something.
//
// What is written before a file is refused is of no use. The file is read once, from its beginning;
// one frame at a time is in memory.
//
// The file:
//     FILE  = [ HEAD ] { FRAME | TORN } [ "</Tarvos>\n" ]
//     FRAME = " <RHVideoFrame " ... " </RHVideoFrame>\n", well-formed
//     TORN  = what a frame begins with
EventFileRepair repairEventFile(
    std::istream& in,
    const std::string& fileName,
    std::ostream& out,
    std::ostream& talk,
    const EventFileLimits& limits = {});

} // namespace scenariomatch
