// A parameter file as the process itself reads it.
#include "fuzz/FuzzFile.h"
#include "plugin/ParameterFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    silenceStreams();
    const ParameterFile file(fuzzFolder().write("parameters", textOf(data, size)));
    file.text("debug");
    file.whole("historySize");
    file.real("PersonSittingMaxHeight");
    return 0;
}
