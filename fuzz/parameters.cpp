// A parameter file.
#include "app/StorageFile.h"
#include "fuzz/FuzzFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    silenceStreams();
    std::string error;
    const auto file = readStorageFile(fuzzFolder().write("parameters", textOf(data, size)), error);
    // Whatever is refused is refused for a reason.
    if (!file && error.empty()) {
        __builtin_trap();
    }
    return 0;
}
