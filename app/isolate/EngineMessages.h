#pragma once

#include "app/isolate/EngineChannel.h"
#include "app/TrackFrame.h"
#include "plugin/RecognitionView.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch
{

// What the program and its engine in a process of its own say to each other.

std::string frameMessage(const TrackFrame& frame);
// Nothing for what is no such message.
std::optional<TrackFrame> readFrameMessage(std::string_view message);

// Whether the engine is ready for frames, or why it will never be.
struct EngineReadiness
{
    // Not 0: the exit status, and the reason.
    int faultStatus = 0;
    std::string reason;
    // The process's parameter constProlongation.
    std::string prolongation;
};

std::string readinessMessage(const EngineReadiness& readiness);
std::optional<EngineReadiness> readReadinessMessage(std::string_view message);

// What recognition shows of one frame.
std::string eventsMessage(const RecognitionView& view);

// Shows what such a message says; what is counted since the start is counted over all processes.
class MessageView : public RecognitionView
{
public:
    // False, and nothing changes, for what is no such message.
    bool take(std::string message);

    // The next message is of a process that counts from 0.
    void startAnew();

    void visitEvents(const EventVisitor& visit) const override;

    RecognitionCounters counters() const override;

    int nextEventId() const override { return m_nextEventId; }

    void setNextEventId(int /*id*/) override {}

    void visitModels(const ModelVisitor& /*visit*/) const override {}

    void printPlans(std::ostream& /*out*/) const override {}

    void setObserver(RecognitionObserver* /*observer*/) override {}

private:
    std::string m_message;
    RecognitionCounters m_counters;
    // What processes that are gone have counted since their starts; nothing else of it is used.
    RecognitionCounters m_earlier;
    int m_nextEventId = 0;
};

} // namespace scenariomatch
