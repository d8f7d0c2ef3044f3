#include "plugin/EventFile.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace scenariomatch
{

namespace
{

// 0 where there is none.
std::uintmax_t sizeOf(const std::string& path)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? 0 : size;
}

void takeBack(const std::string& path, std::uintmax_t size)
{
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored) && sizeOf(path) > size) {
        std::filesystem::resize_file(path, size, ignored);
    }
}

} // namespace

void appendToFile(const std::string& path, std::string_view text)
{
    const std::uintmax_t size = sizeOf(path);
    std::ofstream file(path, std::ios::app);
    if (!file.is_open()) {
        return;
    }
    file << text;
    file.close();
    if (!file) {
        takeBack(path, size);
    }
}

} // namespace scenariomatch
