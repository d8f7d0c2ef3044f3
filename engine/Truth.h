#pragma once

#include "types/CSAllTypes.h"
#include "types/CSPlainValue.h"

namespace scenariomatch
{

// What the value of a constraint says: whether it holds, and with which confidence. A value that is
// no CSBool is false.
struct Truth
{
    explicit Truth(const CSBasicType* value)
    {
        if (const auto* truth = dynamic_cast<const CSBool*>(value)) {
            holds = truth->m_value;
            confidence = truth->m_confidence;
        }
    }

    explicit Truth(const CSPlainValue& value)
        : Truth(value.isBool() ? nullptr : value.m_object)
    {
        if (value.isBool()) {
            holds = value.m_truth;
            confidence = value.m_number;
        }
    }

    bool holds = false;
    double confidence = 1.0;
};

} // namespace scenariomatch
