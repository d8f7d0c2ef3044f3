#pragma once

#include "app/TrackWriter.h"

#include <iosfwd>
#include <string>

namespace scenariomatch
{

// The own format, one frame a line; the line is broken here for reading:
//     {"frame":12,"time":"2026-05-04T10:00:48.160","actors":[
//      {"id":3,"type":"PERSON","box":[84,103,25,60],"position":[2.4,4.08,0],"size":[0.5,1.75,0.3]}]}
// Carries all that a frame holds; a position or size that is absent is left out.
class TrackWriterJsonLines : public TrackWriter
{
public:
    explicit TrackWriterJsonLines(std::ostream& out);

    void write(const TrackFrame& frame) override;
    void finish() override;

private:
    std::ostream& m_out;
    std::string m_text;
};

} // namespace scenariomatch
