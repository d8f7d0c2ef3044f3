#include "host/ovkAbstractProcessFactory.h"
#include "host/ovkPlugin.h"
#include "host/rhmAbstractProcessEventRecognition.h"

#include <QPluginLoader>

#include <algorithm>
#include <iostream>
#include <memory>
#include <set>
#include <string>

using Process = rhmAbstractProcessEventRecognition;

// Loads the plug-in, which registers its process type, and creates a process of this type.
static std::unique_ptr<Process> createProcess()
{
    QPluginLoader loader(QStringLiteral(PLUGIN));
    auto* const plugin = qobject_cast<ovkPlugin*>(loader.instance());
    if (plugin == nullptr || !plugin->initialize()) {
        std::cerr << loader.errorString().toStdString() << '\n';
        return nullptr;
    }
    auto* const factory = ovkAbstractProcessFactory::instance();
    auto created = factory->create(QStringLiteral("ScenarioMatchProcess"));
    auto* const process = dynamic_cast<Process*>(created.get());
    if (process != nullptr) {
        static_cast<void>(created.release());
    }
    return std::unique_ptr<Process>(process);
}

// File names and everything else that the process is to know; a parameter file may do the same.
static bool configure(Process& process, const std::string& folder)
{
    return process.setParameter("OperatorPluginPath", OPERATORS) &&
           process.setParameter("scenarioRecognitionOperatorDescription", VOCABULARY) &&
           process.setParameter("scenarioRecognitionObjectDescription", folder + "/objects.txt") &&
           process.setParameter("scenarioRecognitionModelFileName", folder + "/engine.txt") &&
           process.setParameter("constProlongation", "1");
}

static QSharedPointer<rhmDataActor> person(int id, float x)
{
    auto actor = QSharedPointer<rhmDataActor>::create();
    actor->setIdent(id);
    actor->setType("PERSON");
    actor->setCurrentPosition({.x = x, .y = 0, .z = 0});
    return actor;
}

// One frame a second, as a tracker would see it: person 2 stands at 9 m, person 1 walks up to 8 m.
static void enterFrame(Process& process, int frame)
{
    auto& clock = *process.getSynchronizer();
    clock.setFrameNumber(frame);
    clock.setDateTime({.year = 2026, .month = 5, .day = 4, .hour = 10, .second = frame});
    const auto walked = static_cast<float>(std::min(frame, 8));
    process.setActors({person(1, walked), person(2, 9)});
}

int main(int argc, char** argv)
{
    const auto process = createProcess();
    // The plug-in writes traces on standard output; they are dropped here, ours go on.
    std::ostream out(std::cout.rdbuf(nullptr));
    if (process == nullptr || !configure(*process, argc > 1 ? argv[1] : ".") || !process->init()) {
        return 1;
    }
    std::set<unsigned> told;
    for (int frame = 0; frame < 14; ++frame) {
        enterFrame(*process, frame);
        process->performEventRecognition();
        // An event is there in every frame that it goes on in; it keeps its number.
        for (const auto& event : process->getCurrentFrameEvents()) {
            if (!told.insert(event->getTRXId()).second) {
                continue;
            }
            out << "frame " << frame << ": " << event->getTRXName() << " of";
            for (const int id : event->getInvolvedActorIds()) {
                out << ' ' << id;
            }
            out << '\n';
        }
    }
    return 0;
}
