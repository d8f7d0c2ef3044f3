// An engine file with settings and models as strangers write them, and recognition with what was
// read. The input is up to four texts, one behind the other with a line "====" between them:
// models, settings, engine file, constants.
#include "fuzz/FuzzFile.h"
#include "fuzz/FuzzScene.h"

#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    silenceStreams();
    std::string_view rest = textOf(data, size);
    fuzzFolder().write("models.txt", takePart(rest));
    fuzzFolder().write("settings.txt", takePart(rest));
    const std::string_view engineText = takePart(rest);
    const std::string file =
        fuzzFolder().write("engine.txt", engineText.empty() ? kEngineFile : engineText);
    fuzzFolder().write("constants.txt", takePart(rest));
    CSEngine engine;
    prepare(engine);
    try {
        engine.readOperatorAgent("");
        engine.read(file);
    } catch (const std::out_of_range&) {
        // Text cut at a position that does not exist is refused so.
        return 0;
    }
    engine.rewriteAgentOperator();
    recogniseSomething(engine);
    return 0;
}
