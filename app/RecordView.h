#pragma once

#include "host/rhmAbstractProcessEventRecognition.h"
#include "plugin/RecognitionView.h"

namespace scenariomatch
{

// Shows the platform's event records the way a process with a view of its own would: for processes
// that have none. Records name persons only, by their identifiers; there are no sub-events, alarm
// texts, counters, models and plans, and ids cannot be chosen.
//
// The process must outlive the view.
class RecordView : public RecognitionView
{
public:
    explicit RecordView(const rhmAbstractProcessEventRecognition& process)
        : m_process(process)
    {
    }

    void visitEvents(const EventVisitor& visit) const override;

    RecognitionCounters counters() const override { return {}; }

    int nextEventId() const override { return 0; }

    void setNextEventId(int /*id*/) override {}

    void visitModels(const ModelVisitor& /*visit*/) const override {}

    void printPlans(std::ostream& /*out*/) const override {}

    void setObserver(RecognitionObserver* /*observer*/) override {}

private:
    const rhmAbstractProcessEventRecognition& m_process;
};

} // namespace scenariomatch
