#pragma once

#include "scenario/CConstraint.h"
#include "scenario/OperatorCall.h"

#include <cstdint>
#include <unordered_map>

namespace scenariomatch
{

// What operators promise about themselves, asked for once per operator.
class CS_EXPORT OperatorPromises
{
public:
    struct Promise
    {
        bool isPure = false;
        bool isPlain = false;
        CSOperatorMeaning meaning = CSOperatorMeaning::Any;
        // See kindsOfResult().
        std::uint32_t resultKinds = kAnyKind;
    };

    // Asks the operator when it is new. An operator that is not loaded is a constant, and pure.
    const Promise& of(const CSOperatorInterfaceAbstract* op);

    // Whether all operators of the constraint are pure.
    bool isPure(const CConstraint& node);

private:
    std::unordered_map<const CSOperatorInterfaceAbstract*, Promise> m_promises;
};

} // namespace scenariomatch
