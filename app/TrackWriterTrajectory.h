#pragma once

#include "app/TrackWriter.h"

#include <iosfwd>
#include <string>

namespace scenariomatch
{

// Plain trajectories, a row of "id frame x y z" for each object that has a position.
//
// The format has no clock, no type, no box, no size and no frames without objects.
class TrackWriterTrajectory : public TrackWriter
{
public:
    explicit TrackWriterTrajectory(std::ostream& out);

    void write(const TrackFrame& frame) override;
    void finish() override;

private:
    std::ostream& m_out;
    std::string m_text;
};

} // namespace scenariomatch
