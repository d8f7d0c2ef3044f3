#include "app/FileReplacement.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace scenariomatch
{

namespace
{

bool isReplaced(const std::filesystem::path& path)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    return !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
}

std::filesystem::path placeOf(const std::string& name)
{
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(name, error);
    const std::filesystem::path place = std::filesystem::weakly_canonical(whole, error);
    return error ? whole : place;
}

std::filesystem::path beside(const std::filesystem::path& path)
{
    return path.string() + ".new";
}

bool writeFile(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    return file.good();
}

void removeQuietly(const std::filesystem::path& path)
{
    const int reason = errno;
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    errno = reason;
}

} // namespace

bool replaceFile(const std::string& name, const std::string& text)
{
    if (!isReplaced(name)) {
        return writeFile(name, text);
    }
    const std::filesystem::path path = placeOf(name);
    if (!writeFile(beside(path), text)) {
        removeQuietly(beside(path));
        return false;
    }
    std::error_code error;
    std::filesystem::rename(beside(path), path, error);
    errno = error.value();
    return !error;
}

bool canReplaceFile(const std::string& name)
{
    if (!isReplaced(name)) {
        return std::ofstream(name, std::ios::binary | std::ios::app).good();
    }
    const std::filesystem::path path = placeOf(name);
    const bool isWritten = writeFile(beside(path), "");
    removeQuietly(beside(path));
    return isWritten;
}

} // namespace scenariomatch
