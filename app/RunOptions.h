#pragma once

#include "app/EventWriterFactory.h"
#include "app/RecognitionSetup.h"
#include "app/TrackReader.h"

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

enum class ProgressMode { Auto, On, Off };

// How a page shows the scene.
struct SceneOptions
{
    // A picture of the scene, and where it lies: both or none.
    std::string background;
    std::string placement;
    // Lengths of the tracks are pixels, and y grows downwards.
    bool isInPixels = false;
};

// What the command "run" is told.
struct RunOptions
{
    std::string parameterFile;
    // "-" is standard input.
    std::string tracks;
    TrackFormat format = TrackFormat::Auto;
    // What the option for it is called.
    std::string formatOption = "--format";
    std::optional<double> framesPerSecond;
    // As written; empty for the default.
    std::string start;
    double scale = 1.0;
    std::string homography;
    std::string type = "PERSON";
    std::optional<std::string> commonPath;
    // "key=value".
    std::vector<std::string> settings;
    unsigned maximumCandidates = kMaximumCandidates;
    // "-" is standard output.
    std::string events = "-";
    EventFormat eventFormat = EventFormat::JsonLines;
    bool isEveryFrame = false;
    bool isStrict = false;
    std::string trace;
    // File for the page; empty for none.
    std::string report;
    SceneOptions scene;
    ProgressMode progress = ProgressMode::Auto;
    bool hasStatistics = false;
    // Nothing is recognised: tracks and events are left alone.
    bool isPlan = false;
    // Recognition runs in a process of its own.
    bool isIsolated = false;
    std::optional<double> secondsPerFrame;
};

// Adds the options that say what is recognised in which tracks. Parsing fills the options, which
// must outlive the command. Tracks are asked for in other words where they may be left out, and
// their format is an option of this name.
void addParameterOptions(CLI::App& command, RunOptions& options);
void addTrackOptions(
    CLI::App& command,
    RunOptions& options,
    const std::string& need,
    const std::string& formatOption);

// Adds the options that say how a page shows the scene.
void addSceneOptions(CLI::App& command, SceneOptions& options);
// Throws where they do not go together.
void checkSceneOptions(const SceneOptions& options);

// Where the parameters come from that the options tell of. Nothing, and a fault, after a setting
// that is none.
std::optional<RunParameterSources>
parameterSources(const RunOptions& options, std::optional<RunFault>& fault);

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addRunCommand(CLI::App& program, RunOptions& options);

} // namespace scenariomatch
