#pragma once

#include "app/TrackFrame.h"
#include "app/TrackReader.h"

#include <iosfwd>
#include <memory>

namespace scenariomatch
{

// Writes tracks in one format to a stream that its owner opened, frame by frame in order of time.
//
// The stream must outlive the writer, and its state says whether writing worked. One thread at a
// time.
//
// Example:
//     auto writer = makeTrackWriter(TrackFormat::Mot, std::cout);
//     writer->write(frame);
//     writer->finish();
class TrackWriter
{
public:
    TrackWriter() = default;
    TrackWriter(const TrackWriter&) = delete;
    TrackWriter(TrackWriter&&) = delete;
    TrackWriter& operator=(const TrackWriter&) = delete;
    TrackWriter& operator=(TrackWriter&&) = delete;
    virtual ~TrackWriter() = default;

    virtual void write(const TrackFrame& frame) = 0;
    // Writes what closes the file and flushes the stream. Called once, after the last frame.
    virtual void finish() = 0;
};

// A writer of the format; TrackFormat::Auto is JSON Lines.
std::unique_ptr<TrackWriter> makeTrackWriter(TrackFormat format, std::ostream& out);

} // namespace scenariomatch
