#include "app/isolate/EngineMessages.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <vector>

namespace scenariomatch
{

namespace
{

TrackFrame twoActors()
{
    TrackFrame frame;
    frame.number = 7;
    frame.clock = {2026, 5, 4, 10, 20, 30, 40};
    TrackedActor whole;
    whole.id = 3;
    whole.type = "PERSON";
    whole.box = {1, 2, 3, 4};
    whole.position = TrackPoint{0.1F, 0.2F, 0.3F};
    whole.size = TrackSize{0.4F, 0.5F, 0.6F};
    frame.actors = {whole, TrackedActor()};
    return frame;
}

// Shows one event.
class OneEvent : public RecognitionView
{
public:
    void visitEvents(const EventVisitor& visit) const override
    {
        const std::array<RecognisedObject, 1> objects{{{"p", "Person", 4, "Kim"}}};
        const std::array<RecognisedPart, 1> parts{{{"c", 2, "Near"}}};
        RecognisedEvent event;
        event.id = 9;
        event.name = "Meets";
        event.kind = "CompositeState";
        event.alarmLevel = "URGENT";
        event.alarm = 1;
        event.text = "Look";
        event.confidence = 0.1;
        event.begin.frame = 5;
        event.end.frame = 6;
        event.duration = 0.04;
        event.isNew = true;
        event.objects = objects;
        event.parts = parts;
        visit(event);
    }

    RecognitionCounters counters() const override
    {
        RecognitionCounters counters;
        counters.tested = 11;
        counters.operatorFailures = 3;
        counters.candidateCuts = 4;
        counters.feed = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
        return counters;
    }

    int nextEventId() const override { return 10; }

    void setNextEventId(int /*id*/) override {}

    void visitModels(const ModelVisitor& /*visit*/) const override {}

    void printPlans(std::ostream& /*out*/) const override {}

    void setObserver(RecognitionObserver* /*observer*/) override {}
};

} // namespace

TEST(EngineMessages, CarryFramesAsTheyAre)
{
    const std::string message = frameMessage(twoActors());
    const std::optional<TrackFrame> frame = readFrameMessage(message);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frameMessage(*frame), message);
    EXPECT_EQ(frame->number, 7);
    EXPECT_EQ(frame->clock.millisecond, 40);
    ASSERT_EQ(frame->actors.size(), 2U);
    EXPECT_EQ(frame->actors[0].type, "PERSON");
    EXPECT_EQ(frame->actors[0].box.height, 4);
    EXPECT_EQ(frame->actors[0].position->z, 0.3F);
    EXPECT_EQ(frame->actors[0].size->depth, 0.6F);
    EXPECT_FALSE(frame->actors[1].position);
}

TEST(EngineMessages, CarryEventsAsTheyAre)
{
    MessageView view;
    ASSERT_TRUE(view.take(eventsMessage(OneEvent())));
    EXPECT_EQ(view.counters().tested, 11);
    EXPECT_EQ(view.counters().operatorFailures, 3U);
    EXPECT_EQ(view.nextEventId(), 10);
    int count = 0;
    view.visitEvents([&count](const RecognisedEvent& event) {
        ++count;
        EXPECT_EQ(event.id, 9);
        EXPECT_EQ(event.text, "Look");
        EXPECT_EQ(event.confidence, 0.1);
        EXPECT_EQ(event.end.frame, 6);
        EXPECT_TRUE(event.isNew);
        ASSERT_EQ(event.objects.size(), 1U);
        EXPECT_EQ(event.objects[0].name, "Kim");
        ASSERT_EQ(event.parts.size(), 1U);
        EXPECT_EQ(event.parts[0].id, 2);
    });
    EXPECT_EQ(count, 1);
}

TEST(EngineMessages, AddUpWhatProcessesHaveCountedSinceTheirStarts)
{
    MessageView view;
    ASSERT_TRUE(view.take(eventsMessage(OneEvent())));
    view.startAnew();
    // A process that ends without a frame has counted nothing.
    view.startAnew();
    EXPECT_EQ(view.counters().tested, 0);
    EXPECT_EQ(view.counters().operatorFailures, 3U);
    EXPECT_EQ(view.nextEventId(), 10);
    ASSERT_TRUE(view.take(eventsMessage(OneEvent())));
    EXPECT_EQ(view.counters().tested, 11);
    EXPECT_EQ(view.counters().operatorFailures, 6U);
    EXPECT_EQ(view.counters().candidateCuts, 8U);
    const FeedCounters feed = view.counters().feed;
    EXPECT_EQ(feed.actors, 2U);
    EXPECT_EQ(feed.missingActors, 4U);
    EXPECT_EQ(feed.duplicateIds, 6U);
    EXPECT_EQ(feed.untracked, 8U);
    EXPECT_EQ(feed.notFinite, 10U);
    EXPECT_EQ(feed.negativeBoxes, 12U);
    EXPECT_EQ(feed.unknownTypes, 14U);
    EXPECT_EQ(feed.framesGoBack, 16U);
    EXPECT_EQ(feed.clocksGoBack, 18U);
    EXPECT_EQ(feed.clockJumps, 20U);
    EXPECT_EQ(feed.badClocks, 22U);
}

TEST(EngineMessages, AreRefusedWhereTheyBreakOff)
{
    const std::string frame = frameMessage(twoActors());
    const std::string events = eventsMessage(OneEvent());
    const std::string readiness = readinessMessage({5, "no plug-in", "2"});
    for (std::size_t cut = 0; cut < frame.size(); ++cut) {
        EXPECT_FALSE(readFrameMessage(frame.substr(0, cut))) << cut;
    }
    MessageView view;
    for (std::size_t cut = 0; cut < events.size(); ++cut) {
        EXPECT_FALSE(view.take(events.substr(0, cut))) << cut;
    }
    for (std::size_t cut = 0; cut < readiness.size(); ++cut) {
        EXPECT_FALSE(readReadinessMessage(readiness.substr(0, cut))) << cut;
    }
    EXPECT_EQ(readReadinessMessage(readiness)->reason, "no plug-in");
}

TEST(EngineChannel, CarriesMessagesOfAnyLengthWhole)
{
    std::array<int, 2> sockets{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, sockets.data()), 0);
    EngineChannel left(sockets[0]);
    EngineChannel right(sockets[1]);
    const std::vector<std::string> messages{"", "a", std::string(3'000'000, 'b'), "c"};
    std::thread sender([&] {
        for (const std::string& message : messages) {
            EXPECT_TRUE(left.send(message));
        }
        left.close();
    });
    for (const std::string& message : messages) {
        std::string received;
        ASSERT_EQ(right.receive(received, -1), EngineChannel::Reading::Message);
        EXPECT_EQ(received, message);
    }
    std::string received;
    EXPECT_EQ(right.receive(received, -1), EngineChannel::Reading::Closed);
    sender.join();
    EXPECT_FALSE(right.send(std::string(3'000'000, 'b')));
}

} // namespace scenariomatch
