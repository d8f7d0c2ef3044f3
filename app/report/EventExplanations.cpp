#include "app/report/EventExplanations.h"

#include "app/explain/ExplanationJson.h"

#include <utility>

namespace scenariomatch
{

void EventExplanations::add(const Evidence& evidence)
{
    std::string text = m_leftOut == 0 ? explanationLine(evidence) : std::string();
    if (m_leftOut > 0 || m_size + text.size() > m_most) {
        ++m_leftOut;
        return;
    }
    m_size += text.size();
    m_byId[evidence.id] = {evidence.model, evidence.end.milliseconds, std::move(text)};
}

const std::string&
EventExplanations::find(int id, const std::string& model, std::int64_t endMilliseconds) const
{
    static const std::string none = "null";
    const auto found = m_byId.find(id);
    const bool isSame = found != m_byId.end() && found->second.model == model &&
                        found->second.end == endMilliseconds;
    return isSame ? found->second.text : none;
}

} // namespace scenariomatch
