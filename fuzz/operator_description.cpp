// A description of agent operators, used by a model that calls what it may declare.
#include "fuzz/FuzzFile.h"
#include "fuzz/FuzzScene.h"

#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    silenceStreams();
    fuzzFolder().write(
        "models.txt",
        "Scenarios {\nFuzz,\nPrimitiveState (InZone,\nPhysicalObjects((p : Person)(z : Zone))\n"
        "Constraints((p inside z)(p op z))\n)\n}\n");
    fuzzFolder().write("settings.txt", "Engine {\nFuzz,\nUsedModels(InZone)\n}\n");
    const std::string file = fuzzFolder().write(
        "engine.txt",
        "List {\nFuzz,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n");
    CSEngine engine;
    prepare(engine);
    try {
        engine.readOperatorAgent(fuzzFolder().write("operators.txt", textOf(data, size)));
        engine.read(file);
    } catch (const std::out_of_range&) {
        // Text cut at a position that does not exist is refused so.
        return 0;
    }
    engine.rewriteAgentOperator();
    recogniseSomething(engine);
    return 0;
}
