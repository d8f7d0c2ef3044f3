#include "types/TextFile.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace scenariomatch
{

std::optional<std::string> readTextFile(const std::string& fileName)
{
    std::error_code ignored;
    return std::filesystem::is_regular_file(fileName, ignored) ? readTextInput(fileName)
                                                               : std::nullopt;
}

std::string textFileFault(const std::string& fileName)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(fileName, error);
    if (error) {
        return error.message();
    }
    if (std::filesystem::is_directory(status)) {
        return std::generic_category().message(EISDIR);
    }
    if (!std::filesystem::is_regular_file(status)) {
        return "it is no ordinary file";
    }
    if (std::filesystem::file_size(fileName, error) > kMaximumTextFileBytes) {
        return "it is larger than 64 MiB";
    }
    errno = 0;
    const std::ifstream file(fileName);
    return file ? "" : std::generic_category().message(errno);
}

std::optional<std::string> readTextInput(const std::string& fileName)
{
    std::ifstream file(fileName, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    std::string text;
    constexpr std::size_t kBlock = std::size_t{1} << 16U;
    std::string block(kBlock, '\0');
    while (text.size() <= kMaximumTextFileBytes) {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        const auto count = static_cast<std::size_t>(file.gcount());
        if (count == 0) {
            return file.bad() ? std::nullopt : std::optional<std::string>(std::move(text));
        }
        text.append(block, 0, count);
    }
    return std::nullopt;
}

} // namespace scenariomatch
