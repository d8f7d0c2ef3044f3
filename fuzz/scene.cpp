// A scene description.
#include "app/SceneReader.h"
#include "fuzz/FuzzFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    const SceneReading reading = readScene(std::string(textOf(data, size)), "scene.yaml");
    // Whatever is refused is refused for a reason.
    if (!reading.scene && reading.problem.empty()) {
        __builtin_trap();
    }
    return 0;
}
