#include "engine/ComponentAttributes.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace scenariomatch
{

ComponentAttributes::ComponentAttributes(std::string name)
    : m_name(std::move(name))
{
}

// Of the renewals in one frame the last two count: the last is the current value and, until the
// next frame, the one before it is filed under the same frame.
void ComponentAttributes::renew(
    CSAgent& agent,
    const std::shared_ptr<CSTimeStamp>& start,
    const std::shared_ptr<CSTimeStamp>& end,
    std::int32_t frame)
{
    if (!m_renewals.empty() && frame < m_renewals.back().frame) {
        agent.makeUp();
    }
    const std::size_t count = m_renewals.size();
    if (count >= 2 && m_renewals[count - 2].frame == m_renewals[count - 1].frame) {
        m_renewals[count - 2] = std::move(m_renewals[count - 1]);
        m_renewals.pop_back();
        m_hasForgottenFirst = m_hasForgottenFirst || count == 2;
    }
    m_renewals.push_back({start, end, frame});
    forgetOldest();
}

// Histories and frames drop their oldest entries; what they would have dropped by now need not be
// entered any more. Dropped in bulk, so that it costs nothing most of the time.
void ComponentAttributes::forgetOldest()
{
    const auto kept = static_cast<std::size_t>(std::max(CSAgent::m_historySize, 0)) + 3;
    if (m_renewals.size() < kept + kept / 2 + 2) {
        return;
    }
    const auto dropped = static_cast<std::ptrdiff_t>(m_renewals.size() - kept);
    m_renewals.erase(m_renewals.begin(), m_renewals.begin() + dropped);
    m_hasForgottenFirst = true;
}

CSPlainValue ComponentAttributes::interval() const
{
    if (m_renewals.empty()) {
        return {};
    }
    const Renewal& latest = m_renewals.back();
    return CSPlainValue::interval(latest.start.get(), latest.end.get());
}

CSPlainValue ComponentAttributes::name() const
{
    return m_renewals.empty() ? CSPlainValue() : CSPlainValue(&m_name);
}

// The first value that an attribute ever had is flagged; where that one has been forgotten, none
// is.
void ComponentAttributes::makeUp(CSAgent& agent)
{
    // Entering looks for late attributes in turn.
    const std::vector<Renewal> renewals = std::exchange(m_renewals, {});
    const bool isFlagged = !std::exchange(m_hasForgottenFirst, false);
    for (const Renewal& renewal : renewals) {
        const auto interval = std::make_shared<CSInterval>(renewal.start, renewal.end);
        const auto name = std::make_shared<CSString>(m_name.m_value);
        agent.set("Interval", interval, renewal.frame);
        agent.setFrameID(renewal.frame);
        agent.set("Name", name, renewal.frame);
        interval->m_flag = interval->m_flag && isFlagged;
        name->m_flag = name->m_flag && isFlagged;
    }
}

} // namespace scenariomatch
