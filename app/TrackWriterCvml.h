#pragma once

#include "app/TrackWriter.h"

#include <iosfwd>
#include <string>

namespace scenariomatch
{

// CVML, the XML of the CAVIAR ground truth: the box of each object by its centre.
//
// The format has no clock and no type: an object of type BAG is written with the role "leaving
// object", one of type GROUP into the list of groups, with 10000 taken off its id where it is that
// great, and all others are people. The position is not written, readers take the middle of the
// box's lower edge. An element that stands for judgements of the people who drew the boxes
// (movement, context, situation) holds "none".
class TrackWriterCvml : public TrackWriter
{
public:
    explicit TrackWriterCvml(std::ostream& out);

    void write(const TrackFrame& frame) override;
    void finish() override;

private:
    void startFile();

    std::ostream& m_out;
    std::string m_text;
    bool m_isStarted = false;
};

} // namespace scenariomatch
