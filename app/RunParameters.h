#pragma once

#include "app/StorageFile.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

// A parameter and its value as text.
using NamedText = std::pair<std::string, std::string>;

// Where the parameters of a run come from.
struct RunParameterSources
{
    // The user's parameter file; values in it that are file names are relative to its folder.
    std::string file;
    // "--set" in the order given; a later one replaces an earlier one and the file's value. Values
    // that are file names are relative to the current folder.
    std::vector<NamedText> settings;
    // Put in front of the names of model, description and context files instead of the folder.
    std::optional<std::string> commonPath;
    // Used where nothing is said.
    std::string operatorFolder;
    std::string operatorDescription;

    bool hasSetting(const std::string& key) const;

    // No event file is written, whatever is said elsewhere. (The process empties the file that is
    // named, whether it is to be written or not, and an earlier one is to stay.)
    void leaveEventFileAlone();
};

// The parameters of a run as the process has to be given them.
struct RunParameters
{
    // All of them with their resolved values, in the file's order, as they stand in the text below
    // or are set by name.
    std::vector<NamedText> values;
    // Text of a parameter file for the process. A value of 0, which a file cannot set, is left out.
    std::string text;
    // To be set by name before the process reads its file: zeros, and what a file cannot hold.
    std::vector<NamedText> setters;

    // Nothing when the parameter is given nowhere.
    std::optional<std::string> value(const std::string& key) const;
};

// Puts file, settings and defaults together. Nothing, and why in error, when a setting is no value
// of its parameter's type. Parameters that a file cannot hold, and unknown ones, become setters.
std::optional<RunParameters>
mergeParameters(const StorageFile& file, const RunParameterSources& sources, std::string& error);

// The keys that a parameter file may hold.
std::vector<std::string> knownParameters();

// Whether the parameter's value is the name of a file or folder.
bool isFileParameter(const std::string& key);

// What the process makes of an alarm level that there is not; empty for the others, and for none.
std::string alarmLevelWarning(const std::string& level);

// Cuts "key=value". Nothing without a key.
std::optional<NamedText> parseSetting(const std::string& text);

} // namespace scenariomatch
