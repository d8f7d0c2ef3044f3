#include "app/sample/TrackSample.h"

#include "app/ExitStatus.h"
#include "app/FrameFeed.h"
#include "app/RunTracks.h"
#include "app/sample/SampleCheck.h"
#include "app/StreamRedirection.h"

#include <iostream>
#include <memory>

namespace scenariomatch
{

namespace
{

std::optional<RunFault> recogniseSample(
    const RunOptions& options,
    RecognitionSetup& setup,
    const lint::Project& project,
    lint::Diagnostics& out,
    TrackProblems& problems)
{
    std::optional<RunFault> fault;
    const std::unique_ptr<TrackReader> reader = openRunTracks(options, problems, fault);
    if (!reader) {
        return fault;
    }
    const auto process = setup.createProcess();
    if (!process) {
        return setup.fault();
    }
    auto* const view = dynamic_cast<RecognitionView*>(process.get());
    if (view == nullptr) {
        return RunFault{kExitPlugin, "the plug-in does not tell what it does"};
    }
    SampleObserver observer(*view);
    view->setObserver(&observer);
    FrameFeed feed(*process);
    TrackFrame frame;
    bool hasFrames = false;
    while (reader->next(frame)) {
        hasFrames = true;
        feed.addFrame(frame);
    }
    view->setObserver(nullptr);
    fault = faultOfReading(options, *reader, problems, hasFrames);
    if (!fault && hasFrames) {
        checkSample(project, observer, out);
    }
    return fault;
}

} // namespace

std::optional<RunFault> checkTracks(
    const RunOptions& options,
    const RunParameterSources& sources,
    const lint::Project& project,
    lint::Diagnostics& out,
    std::ostream& talk)
{
    RecognitionSetup setup(talk, "scenariomatch check: --set");
    if (!setup.read(sources)) {
        return setup.fault();
    }
    // From here on the plug-in's code runs, which writes to standard output as it likes.
    const StreamRedirection redirection(std::cout, nullptr);
    TrackProblems problems(
        options.tracks == "-" ? "standard input" : options.tracks,
        talk,
        TrackProblemOptions{.isStrict = options.isStrict});
    std::optional<RunFault> fault = recogniseSample(options, setup, project, out, problems);
    problems.printSummary();
    return fault;
}

} // namespace scenariomatch
