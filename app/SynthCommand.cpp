#include "app/SynthCommand.h"

#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/OptionChecks.h"
#include "app/RunFiles.h"
#include "app/SceneReader.h"
#include "app/SceneTracks.h"
#include "app/TrackWriter.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <optional>
#include <ostream>

namespace scenariomatch
{

namespace
{

// The file's text, one byte more than the limit at most; nothing when it cannot be read.
std::optional<std::string> readFile(const std::string& fileName, std::size_t limit)
{
    std::ifstream file(fileName, std::ios::binary);
    std::string text(limit + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (file.bad() || (file.fail() && !file.eof())) {
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

// Stops early when the stream refuses, so that a full disk is noticed at once.
bool writeTracks(const Scene& scene, TrackFormat format, std::ostream& out)
{
    const std::unique_ptr<TrackWriter> writer = makeTrackWriter(format, out);
    SceneTracks tracks(scene);
    TrackFrame frame;
    while (out.good() && tracks.next(frame)) {
        writer->write(frame);
    }
    writer->finish();
    return out.good();
}

} // namespace

CLI::App* addSynthCommand(CLI::App& program, SynthOptions& options)
{
    CLI::App* const command =
        program.add_subcommand("synth", "Make tracks from a scene description");
    command->add_option("SCENE", options.scene, "Scene file (YAML, see docs/scenes.md)")
        ->type_name("FILE")
        ->required();
    command->add_option("--output", options.output, "File to write; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    const Choices<TrackFormat> formats{
        {"jsonl", TrackFormat::JsonLines},
        {"mot", TrackFormat::Mot},
        {"cvml", TrackFormat::Cvml},
        {"trajectory", TrackFormat::Trajectory}};
    addChoice(
        *command, "--format", options.format, formats, "Format of the tracks (default: jsonl)");
    command->footer(footerText(
        {.description =
             "Plays a scene, objects that follow way points and crowds that wander, and writes "
             "what a tracker would have seen of it. The same scene always gives the "
             "same tracks.",
         .examples = {
             "scenariomatch synth examples/crowd/crowd20.yaml --output crowd20.jsonl",
             "scenariomatch synth examples/crowd/crowd20.yaml --format trajectory"}}));
    return command;
}

int runSynth(const SynthOptions& options, std::ostream& out, std::ostream& talk)
{
    const std::string output = options.output == "-" ? "/dev/stdout" : options.output;
    const std::string clash = clashOf({{"SCENE", options.scene}}, {{"--output", output}});
    if (!clash.empty()) {
        talk << "scenariomatch synth: " << clash << '\n';
        return kExitUsage;
    }
    const SceneLimits limits;
    const std::optional<std::string> text = readFile(options.scene, limits.fileBytes);
    if (!text) {
        talk << "scenariomatch synth: cannot read " << options.scene << ": " << std::strerror(errno)
             << '\n';
        return kExitModel;
    }
    const SceneReading reading = readScene(*text, options.scene, limits);
    if (!reading.scene) {
        talk << reading.problem;
        return kExitModel;
    }
    if (options.output == "-") {
        if (writeTracks(*reading.scene, options.format, out)) {
            return kExitDone;
        }
        talk << "scenariomatch synth: cannot write to standard output\n";
        return kExitOutput;
    }
    std::ofstream file(options.output, std::ios::binary | std::ios::trunc);
    if (!file.good() || !writeTracks(*reading.scene, options.format, file)) {
        talk << "scenariomatch synth: cannot write " << options.output << ": "
             << std::strerror(errno) << '\n';
        return kExitOutput;
    }
    return kExitDone;
}

} // namespace scenariomatch
