#pragma once

#include <array>
#include <string_view>

namespace scenariomatch
{

// What the program tells its caller with its exit status.
constexpr int kExitDone = 0;
// The answer is no: problems were found, or nothing matched what was asked.
constexpr int kExitNo = 1;
constexpr int kExitUsage = 2;
// A model, parameter, scene or object-type file cannot be used.
constexpr int kExitModel = 3;
constexpr int kExitTracks = 4;
constexpr int kExitPlugin = 5;
constexpr int kExitOutput = 6;

// A status, and what it means in the program's help.
struct ExitMeaning
{
    int status;
    std::string_view meaning;
};

constexpr std::array<ExitMeaning, 7> kExitMeanings{
    {{kExitDone, "done"},
     {kExitNo,
      "the answer is no: problems were found, a test failed, or nothing matched what was asked"},
     {kExitUsage,
      "usage: an option is wrong or missing, or an output would overwrite an input or another "
      "output"},
     {kExitModel,
      "a model, parameter, scene or object-type file cannot be used; labels or events that score "
      "cannot use; a picture or events that report cannot use; a file of tests that test cannot "
      "use; an event file that repair refuses"},
     {kExitTracks, "the tracks cannot be used, or --strict stopped"},
     {kExitPlugin,
      "a plug-in cannot be loaded, there are no operators, or the engine of --isolate ends again "
      "and again"},
     {kExitOutput,
      "the output cannot be written, the XML event file included; what generate or new would "
      "write is there already, or new lacks its template"}}};

} // namespace scenariomatch
