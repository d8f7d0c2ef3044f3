#pragma once

#include "types/CSAgent.h"
#include "types/CSTimeStamp.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

// The attributes of a component pseudo-agent, "Interval" and "Name", which are renewed whenever the
// recognised instance takes part in something and made into value objects when somebody looks.
//
// Remembers no more renewals than the agent's histories can need.
class CS_EXPORT ComponentAttributes : public LateAttributes
{
public:
    explicit ComponentAttributes(std::string name);

    // The sub-event from `start` to `end`, as it is known in this frame.
    void renew(
        CSAgent& agent,
        const std::shared_ptr<CSTimeStamp>& start,
        const std::shared_ptr<CSTimeStamp>& end,
        std::int32_t frame);

    void makeUp(CSAgent& agent) override;

    bool isRead() const override { return true; }

    CSPlainValue interval() const override;
    CSPlainValue name() const override;

private:
    struct Renewal
    {
        std::shared_ptr<CSTimeStamp> start;
        std::shared_ptr<CSTimeStamp> end;
        std::int32_t frame = 0;
    };

    // Where the latest renewal stands, the one before it and so on.
    std::size_t placeOf(std::size_t back) const;

    Renewal& latest(std::size_t back = 0) { return m_renewals[placeOf(back)]; }

    const Renewal& latest() const { return m_renewals[placeOf(0)]; }

    void add(Renewal renewal);
    // Puts the oldest in front.
    void straighten();

    CSString m_name;
    // A ring: the oldest stands at m_oldest, the latest just before it.
    std::vector<Renewal> m_renewals;
    std::size_t m_oldest = 0;
    // Whether the first renewal since the attributes were made up last has been forgotten.
    bool m_hasForgottenFirst = false;
};

} // namespace scenariomatch
