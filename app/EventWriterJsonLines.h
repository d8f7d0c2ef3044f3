#pragma once

#include "app/EventWriter.h"

#include <iosfwd>
#include <string>

namespace scenariomatch
{

// One JSON object a line; the line is broken here for reading:
//     {"id":4,"name":"Meet","kind":"CompositeEvent","alarm_level":"URGENT","alarm":2,"text":"",
//      "confidence":0.9,"begin":"2026-05-04T10:00:06.160","begin_frame":154,
//      "end":"2026-05-04T10:00:48.160","end_frame":1204,"duration":42,
//      "objects":[{"variable":"p1","type":"PERSON","id":17,"name":""}],
//      "sub_events":[{"variable":"c1","id":2,"name":"Close"}]}
// Times have no zone, durations are seconds rounded to the millisecond, other numbers are the
// shortest text that gives the same number back; one that is not finite is null. Bytes that are no
// UTF-8 become U+FFFD.
class EventWriterJsonLines : public EventWriter
{
public:
    explicit EventWriterJsonLines(std::ostream& out);

    void write(const ReportedEvent& event) override;
    void finish() override;

private:
    std::ostream& m_out;
    std::string m_line;
};

} // namespace scenariomatch
