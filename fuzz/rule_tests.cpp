// A file of tests for rules, and the file with other events in place of those expected.
#include "app/RuleTestUpdate.h"
#include "fuzz/FuzzFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    // In a folder of its own: a scene that it names is one of nobody else's.
    const std::string file = fuzzFolder().write("tests.yaml", "");
    const RuleTestReading reading = readRuleTest(std::string(textOf(data, size)), file);
    // Whatever is refused is refused for a reason.
    if (!reading.file && reading.problem.empty()) {
        __builtin_trap();
    }
    if (reading.file) {
        std::map<std::size_t, RuleVerdict> verdicts;
        for (std::size_t i = 0; i < reading.file->cases.size(); ++i) {
            verdicts[i] = {};
        }
        updatedRuleTest(*reading.file, verdicts);
    }
    return 0;
}
