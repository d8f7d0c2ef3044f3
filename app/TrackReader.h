#pragma once

#include "app/GroundMapper.h"
#include "app/TrackFrame.h"
#include "app/TrackInput.h"
#include "app/TrackProblems.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace scenariomatch
{

// The formats that tracks are read from.
enum class TrackFormat { Auto, JsonLines, Mot, Cvml, Trajectory };

// Sizes beyond which input is refused, so that no input can take all memory or time.
struct TrackLimits
{
    TrackInput::Limits input;
    // Objects of one frame.
    std::size_t mostActors = 100'000;
    // Rows of a file that has to be sorted (MOT, trajectories).
    std::size_t mostRows = 10'000'000;
    // Bytes of a type's name.
    std::size_t longestType = 256;
    // Elements within elements (CVML).
    std::size_t deepestElement = 64;
    // Bytes of one tag or text (CVML).
    std::size_t longestToken = std::size_t{32} * 1024;
};

// What a reader is told beside the tracks.
struct TrackReaderOptions
{
    TrackFormat format = TrackFormat::Auto;
    // Frames per second, for tracks without a clock.
    std::optional<double> framesPerSecond;
    // Clock of the first frame of tracks without a clock.
    TrackClock start;
    // Makes positions and sizes.
    GroundMapper ground;
    // Type of objects whose tracks say nothing about it.
    std::string defaultType = "PERSON";
    TrackLimits limits;
    // The command's option for the format, which a message names; empty where there is none.
    std::string formatOption = "--format";
};

// Why tracks cannot be read at all.
struct TrackFailure
{
    // True when the user can help it with an option; false when it is the tracks.
    bool isUsage = false;
    std::string reason;
};

// Reads tracks frame by frame, in order of time.
//
// What is wrong with single lines or objects goes to the problems, and reading goes on. Problems
// outlive the reader. One thread.
//
// Example:
//     TrackProblems problems("hall.jsonl", std::cerr, {});
//     TrackFailure failure;
//     auto reader = openTracks("hall.jsonl", options, problems, failure);
//     TrackFrame frame;
//     while (reader && reader->next(frame)) { ... }
class TrackReader
{
public:
    TrackReader() = default;
    TrackReader(const TrackReader&) = delete;
    TrackReader(TrackReader&&) = delete;
    TrackReader& operator=(const TrackReader&) = delete;
    TrackReader& operator=(TrackReader&&) = delete;
    virtual ~TrackReader() = default;

    // Fills the frame, whose old content is reused; false at the end, after a failure, and when
    // problems stop it.
    virtual bool next(TrackFrame& frame) = 0;

    // Set when the tracks cannot be read any further.
    virtual const std::optional<TrackFailure>& failure() const = 0;

    // Part that has been read, 0 to 1; negative when it is not known.
    virtual double progress() const = 0;
};

// Opens a file, or standard input for "-", and finds out its format when that is Auto. Null, and
// why in failure, when there is nothing to read.
std::unique_ptr<TrackReader> openTracks(
    const std::string& path,
    const TrackReaderOptions& options,
    TrackProblems& problems,
    TrackFailure& failure);

// The format that a text beginning like this has; nothing when more has to be seen, Auto when it
// has none of them.
std::optional<TrackFormat> detectTrackFormat(std::string_view beginning, bool isWhole);

// The frame rate of the sequence description beside a MOT file: "seqinfo.ini" in the file's folder
// or the one above, key "frameRate". Nothing without one.
std::optional<double> sequenceFrameRate(const std::string& path);

} // namespace scenariomatch
