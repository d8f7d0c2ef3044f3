#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

// What every target is: takes one input, and returns 0. It must not fail, whatever the input is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace scenariomatch
{

// A folder of the process's own for what a target reads as files; goes when the process ends.
class FuzzFolder
{
public:
    FuzzFolder();
    FuzzFolder(const FuzzFolder&) = delete;
    FuzzFolder(FuzzFolder&&) = delete;
    FuzzFolder& operator=(const FuzzFolder&) = delete;
    FuzzFolder& operator=(FuzzFolder&&) = delete;
    ~FuzzFolder();

    // The path of the file that now holds the bytes.
    std::string write(const std::string& name, std::string_view bytes) const;

private:
    std::filesystem::path m_path;
};

// The one folder of the process.
const FuzzFolder& fuzzFolder();

inline std::string_view textOf(const std::uint8_t* data, std::size_t size)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are what a file is made of
    return {reinterpret_cast<const char*>(data), size};
}

// Names the files of a few texts.
inline constexpr std::string_view kEngineFile =
    "List {\nFuzz,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n";

// The first of several texts, one behind the other with a line "====" between them; the others are
// left over.
std::string_view takePart(std::string_view& rest);

// Keeps the process's own output streams silent: what readers report would drown the fuzzer's own
// words.
void silenceStreams();

} // namespace scenariomatch
