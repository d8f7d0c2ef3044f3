#include "types/TextFile.h"

#include <fstream>

namespace scenariomatch
{

std::optional<std::string> readTextFile(const std::string& fileName)
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
