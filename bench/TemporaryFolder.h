#pragma once

#include <filesystem>
#include <string>

namespace scenariomatch
{

// A folder of its own in the one for temporary files, removed with all that is in it when the
// object dies. Throws std::runtime_error where the system refuses.
class TemporaryFolder
{
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;
    ~TemporaryFolder();

    std::string path(const std::string& name) const { return (m_path / name).string(); }

    // Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& text) const;

private:
    std::filesystem::path m_path;
};

} // namespace scenariomatch
