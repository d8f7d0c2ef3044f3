#include "fuzz/FuzzScene.h"

#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

constexpr int kFrames = 6;
constexpr int kPeople = 3;
constexpr int kZone = 100;

// Keeps the loaded operators; they outlive every engine that is handed them.
CSEngine& operatorOwner()
{
    static CSEngine owner;
    if (owner.operators().empty()) {
        owner.m_operatorPluginPath = OPERATOR_FOLDER;
        owner.setAllOperators();
    }
    return owner;
}

void enterZone(CSEngine& engine, int frame)
{
    const int zone = engine.getAgent(kZone, true);
    engine.setAgentFrameID(zone, frame);
    engine.setAgentType(zone, "Type", std::make_shared<CSString>("Zone"), frame);
    engine.setAgentAttribute(zone, "Name", std::make_shared<CSString>("A"), frame);
    const auto corners = std::make_shared<CS3DDPoints>();
    corners->m_points = {{0.0, 0.0, 0.0}, {2.0, 0.0, 0.0}, {2.0, 2.0, 0.0}, {0.0, 2.0, 0.0}};
    engine.setAgentAttribute(zone, "Vertices", corners, frame);
}

void enterPerson(CSEngine& engine, int id, int frame)
{
    const int person = engine.getAgent(id, false);
    engine.setAgentFrameID(person, frame);
    engine.setAgentType(person, "Type", std::make_shared<CSString>("Person"), frame);
    engine.setAgentAttribute(person, "ID", std::make_shared<CSInt>(id), frame);
    engine.setAgentAttribute(person, "Width", std::make_shared<CSDouble>(0.5 + id), frame);
    const double x = 0.5 * frame - id;
    engine.setAgentAttribute(person, "Position", std::make_shared<CS3DDPoint>(x, 1.0, 0.0), frame);
}

} // namespace

void prepare(CSEngine& engine)
{
    CConstraint::m_allOperators.clear();
    CSAgent::m_allAttributes.clear();
    CSAgent::m_constantObjects = {{"Person", false}, {"Zone", true}, {"Component", false}};
    CSAgent::m_allObjectTypes = {
        {"Person", {"Person"}}, {"Zone", {"Zone"}}, {"Component", {"Component"}}};
    engine.setAllObjectTypes(CSAgent::m_allObjectTypes);
    for (const auto& [name, op] : operatorOwner().operators()) {
        engine.addOperator(*op);
    }
}

void recogniseSomething(CSEngine& engine)
{
    for (int frame = 1; frame <= kFrames; ++frame) {
        engine.setCurrentTime(std::make_shared<CSTimeStamp>(frame, frame * 0.5, 0.0), frame);
        enterZone(engine, frame);
        for (int id = 1; id <= kPeople; ++id) {
            enterPerson(engine, id, frame);
        }
        engine.infer();
    }
}

} // namespace scenariomatch
