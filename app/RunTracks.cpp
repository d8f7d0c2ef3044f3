#include "app/RunTracks.h"

#include "app/ExitStatus.h"
#include "app/FrameClock.h"
#include "app/Homography.h"

namespace scenariomatch
{

namespace
{

// False, and why in fault.
bool prepareGround(
    const RunOptions& options, TrackReaderOptions& readerOptions, std::optional<RunFault>& fault)
{
    std::optional<GroundMapper::Matrix> homography;
    if (!options.homography.empty()) {
        std::string error;
        homography = readHomography(options.homography, error);
        if (!homography) {
            fault = {kExitModel, error};
            return false;
        }
    }
    readerOptions.ground = GroundMapper(options.scale, homography);
    return true;
}

RunFault faultOf(const RunOptions& options, const TrackFailure& failure)
{
    return {failure.isUsage ? kExitUsage : kExitTracks, options.tracks + ": " + failure.reason};
}

} // namespace

std::unique_ptr<TrackReader>
openRunTracks(const RunOptions& options, TrackProblems& problems, std::optional<RunFault>& fault)
{
    TrackReaderOptions readerOptions;
    readerOptions.format = options.format;
    readerOptions.framesPerSecond = options.framesPerSecond;
    readerOptions.defaultType = options.type;
    readerOptions.formatOption = options.formatOption;
    if (!options.start.empty()) {
        const std::optional<TrackClock> start = parseClock(options.start);
        if (!start) {
            fault = {
                kExitUsage,
                "--start needs a time such as 2026-05-04T10:00:00, not \"" + options.start + "\""};
            return nullptr;
        }
        readerOptions.start = *start;
    }
    if (!prepareGround(options, readerOptions, fault)) {
        return nullptr;
    }
    TrackFailure failure;
    std::unique_ptr<TrackReader> reader =
        openTracks(options.tracks, readerOptions, problems, failure);
    if (!reader) {
        fault = faultOf(options, failure);
    }
    return reader;
}

std::optional<RunFault> faultOfReading(
    const RunOptions& options,
    const TrackReader& reader,
    const TrackProblems& problems,
    bool hasFrames)
{
    const std::optional<TrackFailure>& failure = reader.failure();
    if (failure) {
        return faultOf(options, *failure);
    }
    if (problems.isStopped()) {
        return RunFault{kExitTracks, options.tracks + ": stopped at the first problem"};
    }
    if (!hasFrames && problems.total() > 0) {
        return RunFault{kExitTracks, options.tracks + ": there is no frame that can be used"};
    }
    return std::nullopt;
}

} // namespace scenariomatch
