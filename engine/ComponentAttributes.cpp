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
    if (!m_renewals.empty() && frame < latest().frame) {
        agent.makeUp();
    }
    if (m_renewals.size() >= 2 && latest(1).frame == latest().frame) {
        latest(1) = std::exchange(latest(), {start, end, frame});
        m_hasForgottenFirst = m_hasForgottenFirst || m_renewals.size() == 2;
    } else {
        add({start, end, frame});
    }
}

std::size_t ComponentAttributes::placeOf(std::size_t back) const
{
    const std::size_t count = m_renewals.size();
    const std::size_t place = m_oldest + count - 1 - back;
    return place < count ? place : place - count;
}

// Histories and frames drop their oldest entries; what they would have dropped by now need not be
// entered any more.
void ComponentAttributes::add(Renewal renewal)
{
    const auto kept = static_cast<std::size_t>(std::max(CSAgent::m_historySize, 0)) + 3;
    if (m_renewals.size() < kept) {
        straighten();
        m_renewals.push_back(std::move(renewal));
        return;
    }
    m_renewals[m_oldest] = std::move(renewal);
    m_oldest = m_oldest + 1 < m_renewals.size() ? m_oldest + 1 : 0;
    m_hasForgottenFirst = true;
}

void ComponentAttributes::straighten()
{
    const auto oldest = static_cast<std::ptrdiff_t>(std::exchange(m_oldest, 0));
    std::rotate(m_renewals.begin(), m_renewals.begin() + oldest, m_renewals.end());
}

CSPlainValue ComponentAttributes::interval() const
{
    if (m_renewals.empty()) {
        return {};
    }
    return CSPlainValue::interval(latest().start.get(), latest().end.get());
}

CSPlainValue ComponentAttributes::name() const
{
    return m_renewals.empty() ? CSPlainValue() : CSPlainValue(&m_name);
}

// The first value that an attribute ever had is flagged; where that one has been forgotten, none
// is.
void ComponentAttributes::makeUp(CSAgent& agent)
{
    straighten();
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
