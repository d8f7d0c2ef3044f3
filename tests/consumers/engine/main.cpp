#include "engine/CSEngine.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <set>
#include <string>

// Operators first, then the forms declared with them, then object types, then models that use all.
static void configure(CSEngine& engine, const std::string& folder)
{
    engine.m_operatorPluginPath = OPERATORS;
    engine.setAllOperators();
    engine.setLevelAlarm("NOTURGENT", 0);
    engine.setLevelAlarm("URGENT", 1);
    engine.m_constProlongation = 1;
    engine.setConstTimeSearch(60);
    engine.setHistorySize(10);
    engine.readOperatorAgent(VOCABULARY);
    engine.readAllObjects(folder + "/objects.txt");
    engine.setAllObjectTypes(CSAgent::m_allObjectTypes);
    engine.read(folder + "/engine.txt");
    engine.rewriteAgentOperator();
}

static void enterPerson(CSEngine& engine, int id, double x, int frame)
{
    const int agent = engine.getAgent(id, false);
    engine.setAgentFrameID(agent, frame);
    engine.setAgentType(agent, "Type", std::make_shared<CSString>("Person"), frame);
    engine.setAgentAttribute(agent, "ID", std::make_shared<CSInt>(id), frame);
    engine.setAgentAttribute(agent, "Position", std::make_shared<CS3DDPoint>(x, 0.0, 0.0), frame);
}

static void tell(const CSScenarioInstance& event, std::ostream& out)
{
    out << "second " << event.m_start->m_second << ": " << event.m_scenario->m_name;
    for (const auto& [variable, agent] : event.m_bindings) {
        out << ' ' << variable << '=' << agent->m_ID;
    }
    out << '\n';
}

int main(int argc, char** argv)
{
    // The engine writes traces on standard output; they are dropped here, ours go on.
    std::ostream out(std::cout.rdbuf(nullptr));
    CSEngine engine;
    configure(engine, argc > 1 ? argv[1] : ".");
    std::set<int> told;
    for (int frame = 0; frame < 14; ++frame) {
        engine.setCurrentTime(
            std::make_shared<CSTimeStamp>(frame, 2026, 5, 4, 10, 0, frame, 0), frame);
        enterPerson(engine, 1, std::min(frame, 8), frame);
        enterPerson(engine, 2, 9, frame);
        engine.infer();
        for (const auto& event : engine.recognisedScenarios()) {
            if (told.insert(event->m_id).second) {
                tell(*event, out);
            }
        }
    }
    return 0;
}
