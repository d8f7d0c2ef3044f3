#pragma once

#include "host/rhmAbstractProcessEventRecognition.h"

#include <filesystem>
#include <memory>
#include <string>

namespace scenariomatch
{

// Loads the recognition plug-in, a file or the first fitting one of a folder, and creates a process
// as the platform does: through the factory, by the name of its type. Null, and why in error, when
// there is none. Libraries stay loaded.
std::unique_ptr<rhmAbstractProcessEventRecognition>
createRecognitionProcess(const std::filesystem::path& path, std::string& error);

} // namespace scenariomatch
