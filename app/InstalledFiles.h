#pragma once

#include <filesystem>

namespace scenariomatch
{

// Where the program finds what was built or installed with it: at fixed places as seen from its own
// file, in the build folder as after installation.

// The folder of the recognition plug-in, or the file or folder that the environment variable
// SCENARIOMATCH_PLUGIN_PATH names.
std::filesystem::path installedPluginPath();

std::filesystem::path installedOperatorFolder();

// The operator description that is used where a parameter file names none.
std::filesystem::path installedVocabulary();

// The project that the command "new operator" writes under another name.
std::filesystem::path installedOperatorTemplate();

} // namespace scenariomatch
