#include "app/NewFiles.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <ostream>
#include <system_error>

namespace scenariomatch
{

namespace
{

namespace fs = std::filesystem;

// Makes the files of one call, and removes them unless it is told that all are there.
class NewFiles
{
public:
    NewFiles(const std::string& folder, OldFiles oldFiles)
        : m_folder(folder)
        , m_oldFiles(oldFiles)
    {
    }

    NewFiles(const NewFiles&) = delete;
    NewFiles(NewFiles&&) = delete;
    NewFiles& operator=(const NewFiles&) = delete;
    NewFiles& operator=(NewFiles&&) = delete;
    ~NewFiles();

    std::string makeFolder();
    std::string add(const SourceFile& file);
    // Gives all files their names.
    std::string finish();

private:
    struct Made
    {
        // Another name as long as the old file may still be wanted.
        fs::path place;
        fs::path name;
    };

    const std::string& m_folder;
    OldFiles m_oldFiles;
    bool m_isFolderMade = false;
    std::vector<Made> m_made;
};

NewFiles::~NewFiles()
{
    std::error_code ignored;
    for (const Made& file : m_made) {
        fs::remove(file.place, ignored);
    }
    if (m_isFolderMade) {
        fs::remove(m_folder, ignored);
    }
}

std::string NewFiles::makeFolder()
{
    std::error_code error;
    m_isFolderMade = fs::create_directories(m_folder, error);
    return error ? fmt::format("cannot make {}: {}", m_folder, error.message()) : "";
}

// Never opens a file that is there.
bool writeNew(const fs::path& path, const std::string& text)
{
    using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
    const Stream stream(std::fopen(path.c_str(), "wbx"), std::fclose);
    return stream != nullptr &&
           std::fwrite(text.data(), 1, text.size(), stream.get()) == text.size() &&
           std::fflush(stream.get()) == 0;
}

std::string NewFiles::add(const SourceFile& file)
{
    const fs::path name = pathIn(m_folder, file);
    fs::path place = name;
    if (m_oldFiles == OldFiles::Replace) {
        std::error_code ignored;
        place += ".new";
        fs::remove(place, ignored);
    }
    errno = 0;
    const bool isWritten = writeNew(place, file.text);
    const int reason = errno;
    if (isWritten || reason != EEXIST) {
        m_made.push_back({place, name});
    }
    return isWritten ? ""
                     : fmt::format("cannot write {}: {}", name.string(), std::strerror(reason));
}

std::string NewFiles::finish()
{
    while (!m_made.empty()) {
        const Made& file = m_made.back();
        std::error_code error;
        fs::rename(file.place, file.name, error);
        if (error) {
            return fmt::format("cannot write {}: {}", file.name.string(), error.message());
        }
        m_made.pop_back();
    }
    m_isFolderMade = false;
    return "";
}

// What stands in the way of a new file; empty when nothing does.
std::string obstacleAt(const std::string& path, OldFiles oldFiles)
{
    std::error_code error;
    // A link to nowhere is there, too.
    const fs::file_status status = fs::symlink_status(path, error);
    if (!fs::exists(status)) {
        return "";
    }
    if (oldFiles == OldFiles::Keep) {
        return path + " is there already; nothing is written";
    }
    return fs::is_directory(status) ? fmt::format("cannot write {}: Is a directory", path) : "";
}

} // namespace

std::string pathIn(const std::string& folder, const SourceFile& file)
{
    return (fs::path(folder) / file.name).string();
}

std::string writeNewFiles(
    const std::string& folder,
    const std::vector<SourceFile>& files,
    OldFiles oldFiles,
    std::ostream& out)
{
    for (const SourceFile& file : files) {
        std::string obstacle = obstacleAt(pathIn(folder, file), oldFiles);
        if (!obstacle.empty()) {
            return obstacle;
        }
    }
    NewFiles made(folder, oldFiles);
    std::string fault = made.makeFolder();
    for (auto file = files.begin(); fault.empty() && file != files.end(); ++file) {
        fault = made.add(*file);
    }
    fault = fault.empty() ? made.finish() : fault;
    if (!fault.empty()) {
        return fault;
    }
    for (const SourceFile& file : files) {
        out << pathIn(folder, file) << '\n';
    }
    out.flush();
    return out.good() ? "" : "cannot write the names of the files";
}

} // namespace scenariomatch
