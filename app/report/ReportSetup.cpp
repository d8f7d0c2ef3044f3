#include "app/report/ReportSetup.h"

#include "app/ExitStatus.h"
#include "app/FileReplacement.h"
#include "app/FrameClock.h"
#include "app/Interrupt.h"
#include "app/report/ModelTexts.h"
#include "app/report/ReportPage.h"
#include "app/report/ReportTemplate.h"
#include "app/RunTracks.h"
#include "host/rhmDataContext.h"
#include "types/NumberText.h"

#include <cerrno>
#include <filesystem>
#include <fmt/format.h>
#include <ostream>
#include <system_error>

namespace scenariomatch
{

namespace
{

double numberOf(const rhmAbstractProcessEventRecognition& process, const std::string& parameter)
{
    return stringToDouble(process.parameter(parameter).value_or("0"));
}

std::vector<PlanObject> sceneOf(const RecognitionSetup& setup)
{
    rhmDataContext context;
    const std::string name = setup.textOf("RHMContext");
    if (!name.empty()) {
        context.read(QString::fromStdString(name));
    }
    return sceneObjects(context.getContext());
}

} // namespace

std::optional<RunFault> faultOfReports(std::string_view page)
{
    if (!page.empty()) {
        return std::nullopt;
    }
    return RunFault{
        kExitUsage, "this program writes no reports: it was built with SCENARIOMATCH_REPORT=OFF"};
}

std::optional<RunFault>
readPicture(const SceneOptions& options, std::optional<ScenePicture>& picture)
{
    if (options.background.empty()) {
        return std::nullopt;
    }
    const auto placement = parsePlacement(options.placement);
    if (!placement) {
        return RunFault{
            kExitUsage,
            fmt::format(
                "--background-placement needs X0,Y0,X1,Y1, the lower left and the upper right "
                "corner on the ground, not \"{}\"",
                options.placement)};
    }
    std::string error;
    const std::optional<std::string> image = readImage(options.background, error);
    if (!image) {
        return RunFault{kExitModel, error};
    }
    picture = ScenePicture{*image, *placement};
    return std::nullopt;
}

// What is wrong with the tracks is told when they are shown to the process.
std::optional<std::int64_t> lengthOfTracks(const RunOptions& options)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(options.tracks, error)) {
        return std::nullopt;
    }
    std::ostream nowhere(nullptr);
    TrackProblems problems(
        options.tracks, nowhere, TrackProblemOptions{.isStrict = options.isStrict});
    std::optional<RunFault> fault;
    const std::unique_ptr<TrackReader> reader = openRunTracks(options, problems, fault);
    TrackFrame frame;
    if (!reader || !reader->next(frame)) {
        return std::nullopt;
    }
    const std::int64_t start = clockToMilliseconds(frame.clock);
    while (!isInterrupted() && reader->next(frame)) {
    }
    return clockToMilliseconds(frame.clock) - start;
}

ReportTerms reportTerms(
    const RunOptions& options,
    const RecognitionSetup& setup,
    const rhmAbstractProcessEventRecognition& process)
{
    ReportTerms terms;
    terms.title = std::filesystem::path(options.parameterFile).stem().string();
    terms.scene = sceneOf(setup);
    terms.modelTexts =
        readModelTexts(options.parameterFile, setup.parameterFile(), setup.parameters());
    terms.prolongation = numberOf(process, "constProlongation");
    terms.isInPixels = options.scene.isInPixels;
    terms.lookBack = numberOf(process, "constTimeSearch");
    terms.mostCandidates = options.maximumCandidates;
    terms.length = lengthOfTracks(options);
    return terms;
}

std::optional<RunFault> writeReport(const std::string& path, const ReportData& data)
{
    if (replaceFile(path, makeReportPage(reportTemplate(), data))) {
        return std::nullopt;
    }
    return RunFault{kExitOutput, path + ": " + std::generic_category().message(errno)};
}

std::optional<RunFault> faultOfOutput(const std::string& path)
{
    if (canReplaceFile(path)) {
        return std::nullopt;
    }
    return RunFault{kExitOutput, path + ": " + std::generic_category().message(errno)};
}

} // namespace scenariomatch
