// One constraint, read and evaluated with the standard operators.
#include "fuzz/FuzzFile.h"
#include "fuzz/FuzzScene.h"

#include <stdexcept>

namespace
{

CConstraint::Bindings someBindings()
{
    CConstraint::Bindings bindings;
    for (int id = 1; id <= 2; ++id) {
        const auto agent = std::make_shared<CSAgent>(id, false);
        for (int frame = 1; frame <= 3; ++frame) {
            agent->set("P", std::make_shared<CS3DDPoint>(frame * id, 0.0, 0.0), frame);
            agent->set("N", std::make_shared<CSDouble>(frame * 0.5), frame);
            agent->set("S", std::make_shared<CSString>("word"), frame);
        }
        bindings[id == 1 ? "p" : "q"] = agent;
    }
    return bindings;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    silenceStreams();
    CSEngine engine;
    prepare(engine);
    engine.readOperatorAgent("");
    CConstraint constraint;
    try {
        constraint.read(std::string(textOf(data, size)));
    } catch (const std::out_of_range&) {
        // Text cut at a position that does not exist is refused so.
        return 0;
    }
    constraint.fillConstraintsConstants({{"limit", 2.0}});
    constraint.checkOperator(engine.operators());
    constraint.print();
    CConstraint::verify(constraint, someBindings());
    return 0;
}
