#include "app/RunOptions.h"

#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/OptionChecks.h"

#include <limits>

namespace scenariomatch
{

namespace
{

// Frames per second with which times stay in the range of clocks.
constexpr double kLeastRate = 1e-6;
constexpr double kMostRate = 1e6;

constexpr double kLeastTimeout = 1e-3;
constexpr double kMostTimeout = 1e6;

} // namespace

void addTrackOptions(
    CLI::App& command,
    RunOptions& options,
    const std::string& need,
    const std::string& formatOption)
{
    const Choices<TrackFormat> formats{
        {"auto", TrackFormat::Auto},
        {"jsonl", TrackFormat::JsonLines},
        {"mot", TrackFormat::Mot},
        {"cvml", TrackFormat::Cvml},
        {"trajectory", TrackFormat::Trajectory}};
    options.formatOption = formatOption;
    command
        .add_option(
            "--tracks", options.tracks, "Tracks, plain or gzip; - is standard input (" + need + ")")
        ->type_name("FILE");
    addChoice(
        command,
        formatOption,
        options.format,
        formats,
        "Format of the tracks; auto (default) tells it by the content");
    command
        .add_option("--fps", options.framesPerSecond, "Frames per second of tracks without a clock")
        ->type_name("RATE")
        ->check(numberBetween(kLeastRate, kMostRate, "a number from 0.000001 to 1000000"));
    command
        .add_option(
            "--start",
            options.start,
            "Time of the first frame of tracks without a clock (2000-01-01T00:00:00)")
        ->type_name("TIME");
    command
        .add_option(
            "--scale", options.scale, "Multiplies positions and sizes; 0.01 makes metres of cm")
        ->type_name("FACTOR")
        ->check(numberBetween(
            std::numeric_limits<double>::denorm_min(),
            std::numeric_limits<double>::max(),
            "a finite number greater than 0"));
    command
        .add_option(
            "--homography",
            options.homography,
            "OpenCV file with a 3x3 matrix from pixels to metres on the ground")
        ->type_name("FILE");
    command.add_option("--type", options.type, "Type of objects whose tracks name none (PERSON)")
        ->type_name("NAME");
    command.add_flag("--strict", options.isStrict, "Stop at the first malformed line (status 4)");
}

void addSceneOptions(CLI::App& command, SceneOptions& options)
{
    command
        .add_option(
            "--background",
            options.background,
            "Picture of the scene from above, for the page: PNG or JPEG")
        ->type_name("FILE")
        ->check(notEmpty());
    command
        .add_option(
            "--background-placement",
            options.placement,
            "Where the picture's lower left and upper right corner lie on the ground")
        ->type_name("X0,Y0,X1,Y1")
        ->check(notEmpty());
    command.add_flag(
        "--pixels",
        options.isInPixels,
        "The tracks are in pixels: y grows downwards on the page, lengths are no metres");
}

void checkSceneOptions(const SceneOptions& options)
{
    if (!options.background.empty() && options.placement.empty()) {
        throw CLI::RequiresError("--background", "--background-placement");
    }
    if (options.background.empty() && !options.placement.empty()) {
        throw CLI::RequiresError("--background-placement", "--background");
    }
}

void addParameterOptions(CLI::App& command, RunOptions& options)
{
    command.add_option("--params", options.parameterFile, "Parameter file (OpenCV's YAML or XML)")
        ->type_name("FILE")
        ->required();
    command
        .add_option(
            "--set", options.settings, "Set a parameter; wins over the file, may be repeated")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    command
        .add_option(
            "--common-path",
            options.commonPath,
            "Put before the file names in the parameter file instead of its own folder")
        ->type_name("PREFIX");
    command
        .add_option(
            "--max-candidates",
            options.maximumCandidates,
            "Tries of a model in a frame before its other candidates are left out (10000000); "
            "0 for no limit")
        ->type_name("NUMBER");
}

namespace
{

void addOutputOptions(CLI::App& command, RunOptions& options)
{
    const Choices<EventFormat> formats{
        {"jsonl", EventFormat::JsonLines}, {"csv", EventFormat::Csv}, {"text", EventFormat::Text}};
    const Choices<ProgressMode> modes{
        {"auto", ProgressMode::Auto}, {"on", ProgressMode::On}, {"off", ProgressMode::Off}};
    command
        .add_option(
            "--events", options.events, "File for the events; - (default) is standard output")
        ->type_name("FILE");
    addChoice(
        command,
        "--events-format",
        options.eventFormat,
        formats,
        "Format of the events (default: jsonl)");
    command.add_flag(
        "--every-frame",
        options.isEveryFrame,
        "Write an event in every frame that it is recognised in, not once when it is over");
    command
        .add_option("--trace", options.trace, "File for the plug-in's traces (dropped otherwise)")
        ->type_name("FILE");
    command
        .add_option(
            "--report", options.report, "Also write a page that shows what happened and why (HTML)")
        ->type_name("FILE")
        ->check(notEmpty());
    addSceneOptions(command, options.scene);
    addChoice(
        command,
        "--progress",
        options.progress,
        modes,
        "Whether progress is shown; auto (default) shows it on a terminal");
    command.add_flag(
        "--stats", options.hasStatistics, "Write figures of the run to standard error");
    command.add_flag(
        "--isolate",
        options.isIsolated,
        "Recognise in a process of its own, which starts anew where an operator ends it");
    command
        .add_option(
            "--frame-timeout",
            options.secondsPerFrame,
            "With --isolate: how long a frame may take before the process counts as hung "
            "(no limit)")
        ->type_name("SECONDS")
        ->check(numberBetween(kLeastTimeout, kMostTimeout, "a number from 0.001 to 1000000"));
    command.add_flag(
        "--print-plan",
        options.isPlan,
        "Write to standard output how the models are matched, and end; no tracks are read");
}

// What options ask of each other: said here, not in the help, which tells it in its own words.
void checkTogether(const RunOptions& options)
{
    if (options.tracks.empty() && !options.isPlan) {
        throw CLI::RequiredError("--tracks");
    }
    if (options.isPlan && options.isIsolated) {
        throw CLI::ExcludesError("--print-plan", "--isolate");
    }
    if (options.isPlan && !options.report.empty()) {
        throw CLI::ExcludesError("--report", "--print-plan");
    }
    if (options.isIsolated && !options.report.empty()) {
        throw CLI::ExcludesError("--report", "--isolate");
    }
    checkSceneOptions(options.scene);
    if (options.report.empty() && !options.scene.background.empty()) {
        throw CLI::RequiresError("--background", "--report");
    }
    if (options.report.empty() && options.scene.isInPixels) {
        throw CLI::RequiresError("--pixels", "--report");
    }
    if (options.secondsPerFrame && !options.isIsolated) {
        throw CLI::RequiresError("--frame-timeout", "--isolate");
    }
}

} // namespace

std::optional<RunParameterSources>
parameterSources(const RunOptions& options, std::optional<RunFault>& fault)
{
    RunParameterSources sources =
        RecognitionSetup::sourcesFor(options.parameterFile, options.maximumCandidates);
    sources.commonPath = options.commonPath;
    for (const std::string& text : options.settings) {
        const std::optional<NamedText> setting = parseSetting(text);
        if (!setting) {
            fault = {kExitUsage, "--set needs KEY=VALUE, not \"" + text + "\""};
            return std::nullopt;
        }
        sources.settings.push_back(*setting);
    }
    return sources;
}

CLI::App* addRunCommand(CLI::App& program, RunOptions& options)
{
    CLI::App* const command = program.add_subcommand("run", "Recognise events in tracks");
    addParameterOptions(*command, options);
    addTrackOptions(*command, options, "REQUIRED, but for --print-plan", "--format");
    addOutputOptions(*command, options);
    command->callback([&options] { checkTogether(options); });
    command->footer(footerText(
        {.description =
             "Hands the tracks of a recording, frame by frame, to the recognition plug-in, "
             "and writes an event when it is over. A parameter file names the models, "
             "the types of objects, the context and the rest; operators and their "
             "descriptions are the installed ones where it names none. Data goes to "
             "standard output, everything else to standard error.",
         .environment = {kPluginPathVariable, kTemporaryFolderVariable},
         .examples = {
             "scenariomatch synth examples/lobby/scenes/bag.yaml --output bag.jsonl",
             "scenariomatch run --params examples/lobby/lobby.yaml --tracks bag.jsonl "
             "--events-format text"}}));
    return command;
}

} // namespace scenariomatch
