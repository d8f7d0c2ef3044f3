#pragma once

#include "app/EventWriter.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace scenariomatch
{

// The events of a report, in the order in which they are written.
class ReportEvents : public EventWriter
{
public:
    void write(const ReportedEvent& event) override;

    void finish() override {}

    // Others instead of all.
    void replace(const std::vector<ReportedEvent>& events);

    const std::vector<ReportedEvent>& all() const { return m_events; }

    bool has(int id) const { return m_byId.contains(id); }

    // The first event of this id; -1 where there is none.
    std::ptrdiff_t indexOf(int id) const;

private:
    std::vector<ReportedEvent> m_events;
    std::unordered_map<int, std::size_t> m_byId;
};

} // namespace scenariomatch
