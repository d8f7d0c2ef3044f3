#include "app/RunFiles.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <system_error>

namespace scenariomatch
{

namespace
{

// Devices and pipes lose nothing when they are named twice.
bool canBeLost(const std::string& path)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    return std::filesystem::is_regular_file(status) || !std::filesystem::exists(status);
}

// The full path without links, also of a file that is still to be made; empty when there is none.
std::filesystem::path placeOf(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(path, error);
    const std::filesystem::path place = std::filesystem::weakly_canonical(whole, error);
    return error ? std::filesystem::path() : place;
}

bool isSameFile(const std::string& a, const std::string& b)
{
    if (a.empty() || b.empty() || !canBeLost(a) || !canBeLost(b)) {
        return false;
    }
    std::error_code error;
    if (std::filesystem::equivalent(a, b, error)) {
        return true;
    }
    return !placeOf(a).empty() && placeOf(a) == placeOf(b);
}

} // namespace

std::string clashOf(const std::vector<RunFile>& read, const std::vector<RunFile>& written)
{
    for (std::size_t i = 0; i < written.size(); ++i) {
        const RunFile& output = written[i];
        for (const RunFile& input : read) {
            if (isSameFile(output.path, input.path)) {
                return fmt::format(
                    "{} would overwrite {}, which is read as {}",
                    output.role,
                    output.path,
                    input.role);
            }
        }
        for (std::size_t j = 0; j < i; ++j) {
            if (isSameFile(output.path, written[j].path)) {
                return fmt::format(
                    "{} and {} would both write {}", written[j].role, output.role, output.path);
            }
        }
    }
    return "";
}

bool isWritable(const std::string& path)
{
    return !canBeLost(path) || std::ofstream(path, std::ios::binary | std::ios::app).good();
}

} // namespace scenariomatch
