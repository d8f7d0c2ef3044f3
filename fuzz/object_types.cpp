// A description of object types, and what the catalogue makes of it.
#include "fuzz/FuzzFile.h"
#include "types/CSAgent.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    silenceStreams();
    CSAgent::m_constantObjects.clear();
    CSAgent::m_allAttributes.clear();
    CSAgent::m_allObjectTypes.clear();
    CSAgent::readAllObjects(fuzzFolder().write("objects.txt", textOf(data, size)));
    return 0;
}
