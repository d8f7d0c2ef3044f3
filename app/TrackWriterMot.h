#pragma once

#include "app/TrackWriter.h"

#include <iosfwd>
#include <string>

namespace scenariomatch
{

// MOTChallenge rows of ten columns: frame, id, left, top, width, height, confidence 1, x, y, z.
//
// Frames count from 1 in this format, so each number is one greater than the frame's. A position
// that is absent is written as -1,-1,-1. The format has no clock, no type, no size and no frames
// without objects.
class TrackWriterMot : public TrackWriter
{
public:
    explicit TrackWriterMot(std::ostream& out);

    void write(const TrackFrame& frame) override;
    void finish() override;

private:
    std::ostream& m_out;
    std::string m_text;
};

} // namespace scenariomatch
