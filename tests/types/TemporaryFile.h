#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace scenariomatch
{

// A file with the given bytes in a folder of its own; both disappear with the object.
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::string& bytes)
        : m_folder(makeFolder())
    {
        std::ofstream(path(), std::ios::binary) << bytes;
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile(TemporaryFile&&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    TemporaryFile& operator=(TemporaryFile&&) = delete;

    ~TemporaryFile()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    std::string path() const { return (m_folder / "file").string(); }

    std::string folder() const { return m_folder.string(); }

private:
    static std::filesystem::path makeFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "types-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder: " + name);
        }
        return name;
    }

    std::filesystem::path m_folder;
};

} // namespace scenariomatch
