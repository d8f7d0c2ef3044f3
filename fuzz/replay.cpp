// Hands the files of the folders named, one after the other, to a target. A folder that is not
// there has none.
#include "fuzz/FuzzFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

namespace
{

std::vector<std::filesystem::path> filesOf(const char* folder)
{
    std::error_code isNotThere;
    const std::filesystem::directory_iterator entries(folder, isNotThere);
    std::vector<std::filesystem::path> files(begin(entries), end(entries));
    std::sort(files.begin(), files.end());
    return files;
}

void hand(const std::filesystem::path& file)
{
    // The last name written is that of the file at fault.
    std::fprintf(stderr, "%s\n", file.c_str());
    std::ifstream input(file, std::ios::binary);
    const std::vector<char> text{std::istreambuf_iterator<char>(input), {}};
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

} // namespace

int main(int count, char** arguments)
{
    std::size_t files = 0;
    for (int i = 1; i < count; ++i) {
        for (const std::filesystem::path& file : filesOf(arguments[i])) {
            hand(file);
            ++files;
        }
    }
    // A test of nothing shall not pass.
    return files == 0 ? 1 : 0;
}
