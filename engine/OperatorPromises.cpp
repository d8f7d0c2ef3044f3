#include "engine/OperatorPromises.h"

#include <algorithm>

namespace scenariomatch
{

const OperatorPromises::Promise& OperatorPromises::of(const CSOperatorInterfaceAbstract* op)
{
    const auto [entry, isNew] = m_promises.try_emplace(op);
    Promise& promise = entry->second;
    if (isNew && op == nullptr) {
        promise.isPure = true;
    } else if (isNew) {
        const CSOperatorDescription description = describeOperator(*op);
        promise.isPure = description.m_pure;
        promise.isPlain = description.m_pure && description.m_plain;
        promise.resultKinds = kindsOfResult(description.m_result);
        promise.meaning = description.m_pure ? description.m_meaning : CSOperatorMeaning::Any;
    }
    return promise;
}

bool OperatorPromises::isPure(const CConstraint& node)
{
    return node.isLeaf() ||
           (of(node.m_operator).isPure &&
            std::all_of(node.m_children.begin(), node.m_children.end(), [&](const auto& child) {
                return isPure(*child);
            }));
}

} // namespace scenariomatch
