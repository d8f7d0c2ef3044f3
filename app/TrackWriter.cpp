#include "app/TrackWriter.h"

#include "app/TrackWriterCvml.h"
#include "app/TrackWriterJsonLines.h"
#include "app/TrackWriterMot.h"
#include "app/TrackWriterTrajectory.h"

namespace scenariomatch
{

std::unique_ptr<TrackWriter> makeTrackWriter(TrackFormat format, std::ostream& out)
{
    switch (format) {
    case TrackFormat::Mot:
        return std::make_unique<TrackWriterMot>(out);
    case TrackFormat::Cvml:
        return std::make_unique<TrackWriterCvml>(out);
    case TrackFormat::Trajectory:
        return std::make_unique<TrackWriterTrajectory>(out);
    case TrackFormat::Auto:
    case TrackFormat::JsonLines:
        break;
    }
    return std::make_unique<TrackWriterJsonLines>(out);
}

} // namespace scenariomatch
