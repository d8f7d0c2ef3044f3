#pragma once

#include "types/CSPlainValue.h"
#include "types/Export.h"

#include <memory>
#include <utility>

class CSAgent;

namespace scenariomatch
{

// Attributes of an agent that are made when somebody looks at them.
class CS_EXPORT LateAttributes
{
public:
    LateAttributes() = default;
    LateAttributes(const LateAttributes&) = delete;
    LateAttributes(LateAttributes&&) = delete;
    LateAttributes& operator=(const LateAttributes&) = delete;
    LateAttributes& operator=(LateAttributes&&) = delete;
    virtual ~LateAttributes();

    // Enters what has not been made yet into the agent's attributes, histories and frames.
    virtual void makeUp(CSAgent& agent) = 0;

    // Whether models may read attributes that have not been made; else what they read is entered at
    // once.
    virtual bool isRead() const = 0;

    // The values of "Interval" and "Name" as they will be made; no values where they have been.
    virtual CSPlainValue interval() const = 0;
    virtual CSPlainValue name() const = 0;
};

// Holds an agent's late attributes, which stay with the agent: a copy of the agent has those alone
// that were made before.
class LateAttributesHolder
{
public:
    LateAttributesHolder() = default;

    LateAttributesHolder(const LateAttributesHolder& /*other*/) {}

    LateAttributesHolder(LateAttributesHolder&&) = default;
    LateAttributesHolder& operator=(LateAttributesHolder&&) = default;
    ~LateAttributesHolder() = default;

    LateAttributesHolder& operator=(const LateAttributesHolder& other)
    {
        if (this != &other) {
            m_held.reset();
        }
        return *this;
    }

    void hold(std::unique_ptr<LateAttributes> late) { m_held = std::move(late); }

    LateAttributes* get() const { return m_held.get(); }

private:
    std::unique_ptr<LateAttributes> m_held;
};

} // namespace scenariomatch
