#pragma once

#include "app/RowReader.h"

namespace scenariomatch
{

// Reads MOTChallenge CSV, one object a row, boxes in pixels as left, top, width and height, frames
// from 1:
//
//     frame, id, left, top, width, height, confidence, x, y, z             (x, y and z are -1 where
//     they are not used) frame, id, left, top, width, height, flag, class, visibility         (rows
//     with flag 0 are passed over)
//
// There is no clock: a frame rate must be given. In rows of 10 columns x, y and z are the position
// unless all are -1, and the type is the one given; in rows of 9 columns the class names it. A file
// in which no row has an identifier that is not negative holds detections and is refused.
class MotReader : public RowReader
{
public:
    MotReader(
        std::unique_ptr<TrackInput> input,
        const TrackReaderOptions& options,
        TrackProblems& problems);

private:
    bool parseRow(std::string_view text, FieldReader& reader, Row& row) override;
    std::optional<TrackFailure> judge() override;

    void
    parseBox(const MeasuredBox& box, std::string_view field, FieldReader& reader, Row& row) const;

    bool m_hasTracked = false;
    bool m_hasUntracked = false;
};

} // namespace scenariomatch
