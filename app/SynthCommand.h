#pragma once

#include "app/TrackReader.h"

#include <CLI/CLI.hpp>
#include <iosfwd>
#include <string>

namespace scenariomatch
{

// What the command "synth" is told.
struct SynthOptions
{
    std::string scene;
    // "-" is standard output.
    std::string output = "-";
    TrackFormat format = TrackFormat::JsonLines;
};

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addSynthCommand(CLI::App& program, SynthOptions& options);

// Makes the tracks of a scene. Tracks go to out or to a file, talk to talk. Returns the exit
// status.
int runSynth(const SynthOptions& options, std::ostream& out, std::ostream& talk);

} // namespace scenariomatch
