#include "app/InstalledFiles.h"

#include <cstdlib>
#include <system_error>

namespace scenariomatch
{

namespace
{

std::filesystem::path programFolder()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return program.parent_path();
}

// The library folder may have a name of its own for every kind of machine.
std::filesystem::path libraryFolder()
{
    const std::filesystem::path base = programFolder().parent_path();
    std::error_code error;
    const std::filesystem::path installed = base / SCENARIOMATCH_LIBRARY_FOLDER / "scenariomatch";
    return std::filesystem::is_directory(installed, error) ? installed
                                                           : base / "lib" / "scenariomatch";
}

std::filesystem::path dataFolder()
{
    return programFolder().parent_path() / "share" / "scenariomatch";
}

} // namespace

std::filesystem::path installedPluginPath()
{
    const char* const chosen = std::getenv("SCENARIOMATCH_PLUGIN_PATH");
    return chosen != nullptr && *chosen != '\0' ? std::filesystem::path(chosen) : libraryFolder();
}

std::filesystem::path installedOperatorFolder()
{
    return libraryFolder() / "operators";
}

std::filesystem::path installedVocabulary()
{
    return dataFolder() / "vocabulary.txt";
}

std::filesystem::path installedOperatorTemplate()
{
    return dataFolder() / "templates" / "operator";
}

} // namespace scenariomatch
