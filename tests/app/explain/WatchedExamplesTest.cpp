// Recognition that is explained is the same as recognition that is not: over all scenes of the
// examples, with every model and an event explained.

#include "app/EventCollector.h"
#include "app/EventWriterFactory.h"
#include "app/explain/EvidenceObserver.h"
#include "app/explain/WhyNotObserver.h"
#include "app/FrameFeed.h"
#include "app/RecognitionSetup.h"
#include "app/SceneReader.h"
#include "app/SceneTracks.h"
#include "app/StreamRedirection.h"
#include "engine/CSEngine.h"
#include "types/CSAgent.h"
#include "types/TextFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace scenariomatch
{

namespace
{

const std::string kExamples = SCENARIOMATCH_TEST_DATA "/../../examples/";

struct ExampleScene
{
    std::string example;
    std::string scene;
};

std::ostream& operator<<(std::ostream& out, const ExampleScene& scene)
{
    return out << scene.example << ' ' << scene.scene;
}

using MakeObserver = std::function<std::unique_ptr<RecognitionObserver>(const RecognitionView&)>;

// The events as they are written, every frame of them.
std::string eventsOf(const ExampleScene& example, const MakeObserver& makeObserver)
{
    const std::string folder = kExamples + example.example + "/";
    const std::string file = folder + "scenes/" + example.scene + ".yaml";
    const SceneReading reading = readScene(readTextFile(file).value(), file);
    CSEngine::h_currentTime.clear();
    CSAgent::m_constantObjects.clear();
    CSAgent::m_allAttributes.clear();
    CSAgent::m_allObjectTypes.clear();
    const StreamRedirection silence(std::cout, nullptr);
    RecognitionSetup setup(std::cerr, "test");
    EXPECT_TRUE(setup.read(RecognitionSetup::sourcesFor(folder + example.example + ".yaml")));
    const auto process = setup.createProcess();
    auto& view = dynamic_cast<RecognitionView&>(*process);
    const std::unique_ptr<RecognitionObserver> observer = makeObserver(view);
    view.setObserver(observer.get());
    std::ostringstream events;
    const auto writer = makeEventWriter(EventFormat::JsonLines, events);
    EventCollector collector(*writer, 1.0, EventCollector::Reporting::EveryFrame);
    FrameFeed feed(*process);
    SceneTracks tracks(*reading.scene);
    TrackFrame frame;
    while (tracks.next(frame)) {
        feed.addFrame(frame);
        collector.addFrame(view, frame.clock);
    }
    collector.finish();
    view.setObserver(nullptr);
    return events.str();
}

std::vector<std::string> modelsOf(const ExampleScene& example)
{
    std::vector<std::string> names;
    eventsOf(example, [&names](const RecognitionView& view) {
        names = ModelSet(view).names();
        return nullptr;
    });
    return names;
}

class WatchedExamples : public testing::TestWithParam<ExampleScene>
{
};

} // namespace

TEST_P(WatchedExamples, AreRecognisedAsUnwatchedOnes)
{
    const std::string alone = eventsOf(GetParam(), [](const RecognitionView&) { return nullptr; });
    EXPECT_FALSE(alone.empty());
    const std::vector<std::string> models = modelsOf(GetParam());
    EXPECT_FALSE(models.empty());
    for (const std::string& model : models) {
        const std::string watched = eventsOf(GetParam(), [&model](const RecognitionView& view) {
            return std::make_unique<WhyNotObserver>(view, WhyNotQuestion{model});
        });
        EXPECT_EQ(watched, alone) << model;
    }
    const std::string watched = eventsOf(
        GetParam(), [](const RecognitionView&) { return std::make_unique<EvidenceObserver>(3); });
    EXPECT_EQ(watched, alone);
}

INSTANTIATE_TEST_SUITE_P(
    Explain,
    WatchedExamples,
    testing::Values(
        ExampleScene{"lobby", "bag"},
        ExampleScene{"lobby", "meeting"},
        ExampleScene{"lobby", "fall"},
        ExampleScene{"gate", "flow"}),
    [](const auto& scene) { return scene.param.example + scene.param.scene; });

} // namespace scenariomatch
