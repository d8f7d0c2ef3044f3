#pragma once

#include "app/EventWriter.h"

#include <array>
#include <iosfwd>
#include <string>
#include <vector>

namespace scenariomatch
{

// A table for people, one event a row: who, what, from, to, duration, confidence, alarm.
//
// The columns are as wide as their widest entry, so rows are held back; they are written at the end
// or when kRowsHeld rows have come together, each such block with a header of its own. Control
// characters in names are shown as "?", so that a name cannot change the table or the terminal.
class EventWriterText : public EventWriter
{
public:
    explicit EventWriterText(std::ostream& out);

    void write(const ReportedEvent& event) override;
    void finish() override;

private:
    static constexpr std::size_t kColumns = 7;
    static constexpr std::size_t kRowsHeld = 1000;
    using Row = std::array<std::string, kColumns>;

    void writeRows();
    void writeRow(const Row& row, const std::array<std::size_t, kColumns>& widths);

    std::ostream& m_out;
    std::vector<Row> m_rows;
    // Whether a block of rows or the remark that there is none was written.
    bool m_hasWritten = false;
};

} // namespace scenariomatch
