#include "app/report/ReportEvents.h"

namespace scenariomatch
{

void ReportEvents::write(const ReportedEvent& event)
{
    m_byId.try_emplace(event.id, m_events.size());
    m_events.push_back(event);
}

void ReportEvents::replace(const std::vector<ReportedEvent>& events)
{
    m_events.clear();
    m_byId.clear();
    for (const ReportedEvent& event : events) {
        write(event);
    }
}

std::ptrdiff_t ReportEvents::indexOf(int id) const
{
    const auto found = m_byId.find(id);
    return found == m_byId.end() ? -1 : static_cast<std::ptrdiff_t>(found->second);
}

} // namespace scenariomatch
