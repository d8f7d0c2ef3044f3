#pragma once

#include "app/EventWriter.h"

#include <iosfwd>
#include <string>

namespace scenariomatch
{

// Comma-separated values as RFC 4180 has them: a header line, then one record an event, lines ended
// by CR LF, fields quoted where they hold a comma, a quote or a line break. Objects and sub-events
// are lists in one field: "p1=PERSON 17;z=Zone 3 Entrance" and "c1=2 Close".
class EventWriterCsv : public EventWriter
{
public:
    explicit EventWriterCsv(std::ostream& out);

    void write(const ReportedEvent& event) override;
    void finish() override;

private:
    void writeHeader();

    std::ostream& m_out;
    std::string m_line;
    bool m_hasHeader = false;
};

} // namespace scenariomatch
