#pragma once

#include "app/FrameOrder.h"
#include "app/TrackReader.h"

#include <memory>
#include <optional>

namespace scenariomatch
{

class JsonLineParser;

// Reads tracks in JSON Lines, one frame a line:
//
//     {"frame":12,"time":"2026-05-04T10:00:48.160","actors":[{"id":3,"type":"PERSON",
//      "box":[x,y,w,h],"position":[x,y,z],"size":[width,height,depth]}]}
//
// "frame" and "actors" must be there; "time" may be missing where a frame rate is given. An actor
// needs "id" and one of "box" (pixels, left, top, size) and "position"; null stands for missing.
// Other members are passed over; names of members are compared as written, without escapes. A line
// that is no such object is left out whole.
//
// A line is handed out as soon as it has arrived; memory is bounded by the longest line.
class JsonLinesReader : public TrackReader
{
public:
    JsonLinesReader(
        std::unique_ptr<TrackInput> input,
        const TrackReaderOptions& options,
        TrackProblems& problems);
    JsonLinesReader(const JsonLinesReader&) = delete;
    JsonLinesReader(JsonLinesReader&&) = delete;
    JsonLinesReader& operator=(const JsonLinesReader&) = delete;
    JsonLinesReader& operator=(JsonLinesReader&&) = delete;
    ~JsonLinesReader() override;

    bool next(TrackFrame& frame) override;

    const std::optional<TrackFailure>& failure() const override { return m_failure; }

    double progress() const override { return m_input->progress(); }

private:
    std::unique_ptr<TrackInput> m_input;
    TrackProblems& m_problems;
    FrameOrder m_order;
    std::size_t m_longestLine;
    std::unique_ptr<JsonLineParser> m_parser;
    std::optional<TrackFailure> m_failure;
    bool m_isDamageReported = false;
};

} // namespace scenariomatch
