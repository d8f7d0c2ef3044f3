#pragma once

#include "app/RowReader.h"

#include <utility>

namespace scenariomatch
{

// Reads trajectories as plain text, one object a row, separated by blanks or tabs:
//
//     # framerate: 25 fps
//     id frame x y [z]
//
// x and y are the place on the ground (with a homography: the foot point in the image), z is the
// height of the body, which becomes the height of the object's size. There is no box and no type.
// The frame rate is the one given or else that of a comment "framerate: N".
class TrajectoryReader : public RowReader
{
public:
    TrajectoryReader(
        std::unique_ptr<TrackInput> input,
        const TrackReaderOptions& options,
        TrackProblems& problems)
        : RowReader(std::move(input), options, problems)
    {
    }

private:
    bool parseRow(std::string_view text, FieldReader& reader, Row& row) override;
    void noteComment(std::string_view text) override;
};

} // namespace scenariomatch
