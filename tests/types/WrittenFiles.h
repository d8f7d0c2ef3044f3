#pragma once

#include "TemporaryFile.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace scenariomatch
{

inline std::string contentOf(const std::filesystem::path& path)
{
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

// The contents of a folder's files by their names; without the ending where one is given.
inline std::map<std::string, std::string>
filesIn(const std::string& folder, const std::string& ending = "")
{
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        files[name.substr(0, name.size() - ending.size())] = contentOf(entry.path());
    }
    return files;
}

// A folder that is empty at first and disappears with the object.
class EmptyFolder
{
public:
    EmptyFolder() { std::filesystem::create_directory(path()); }

    std::string path() const { return m_file.folder() + "/out"; }

private:
    TemporaryFile m_file = TemporaryFile("");
};

} // namespace scenariomatch
