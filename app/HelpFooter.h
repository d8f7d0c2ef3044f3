#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch
{

// An environment variable that a command heeds.
struct HelpVariable
{
    std::string_view name;
    std::string_view meaning;
};

inline constexpr HelpVariable kPluginPathVariable{
    "SCENARIOMATCH_PLUGIN_PATH",
    "The recognition plug-in, or a folder of plug-ins with it, instead of the installed one"};
inline constexpr HelpVariable kTemporaryFolderVariable{
    "TMPDIR", "Folder of a temporary copy of the parameters (default: /tmp)"};

// What a command's help says below its options, and its manual page with it.
struct HelpFooter
{
    // Sentences about what it reads, does and writes.
    std::string description;
    std::vector<HelpVariable> environment = {};
    // Command lines that work as they are.
    std::vector<std::string> examples;
};

// The text below the options, each part indented below its heading:
//
//     Description:
//       Feeds the tracks of a recording, frame by frame, to the recognition
//       plug-in ...
std::string footerText(const HelpFooter& footer);

// The indented lines below a heading of such a text, without the indentation.
std::vector<std::string> linesBelow(const std::string& footer, std::string_view heading);

} // namespace scenariomatch
