#include "fuzz/FuzzFile.h"

#include <fstream>
#include <iostream>
#include <stdexcept>
#include <stdlib.h> // NOLINT(modernize-deprecated-headers): mkdtemp is POSIX
#include <system_error>

namespace scenariomatch
{

FuzzFolder::FuzzFolder()
{
    std::string name =
        (std::filesystem::temp_directory_path() / "scenariomatch-fuzz-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    m_path = name;
}

FuzzFolder::~FuzzFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string FuzzFolder::write(const std::string& name, std::string_view bytes) const
{
    const std::filesystem::path file = m_path / name;
    std::ofstream(file, std::ios::binary) << bytes;
    return file.string();
}

const FuzzFolder& fuzzFolder()
{
    static const FuzzFolder folder;
    return folder;
}

std::string_view takePart(std::string_view& rest)
{
    constexpr std::string_view kSeparator = "\n====\n";
    const std::size_t end = rest.find(kSeparator);
    const std::string_view part = rest.substr(0, end);
    rest =
        end == std::string_view::npos ? std::string_view() : rest.substr(end + kSeparator.size());
    return part;
}

void silenceStreams()
{
    std::cout.rdbuf(nullptr);
    std::cerr.rdbuf(nullptr);
}

} // namespace scenariomatch
