#pragma once

#include "engine/Expression.h"

#include <memory>
#include <utility>
#include <vector>

namespace scenariomatch
{

// Where expressions find the values of one candidate.
//
// What evaluating with value objects makes is kept until it is forgotten.
class ValueReader
{
public:
    ValueReader() = default;
    ValueReader(const ValueReader&) = delete;
    ValueReader(ValueReader&&) = delete;
    ValueReader& operator=(const ValueReader&) = delete;
    ValueReader& operator=(ValueReader&&) = delete;
    virtual ~ValueReader() = default;

    virtual CSPlainValue attribute(const Expression::Node& node) = 0;
    // The agent of an attribute's variable; empty where it is not bound.
    virtual const std::shared_ptr<CSAgent>& agentOf(const CConstraint& leaf) = 0;

    const CSBasicType* objects(const CConstraint& part)
    {
        return m_kept
            .emplace_back(evaluateConstraint(
                part,
                [this](const CConstraint& leaf) -> const std::shared_ptr<CSAgent>& {
                    return agentOf(leaf);
                }))
            .get();
    }

    template <class Compute>
    CSPlainValue shared(const Expression::Node& /*node*/, Compute&& compute)
    {
        return compute();
    }

    void forget() { m_kept.clear(); }

private:
    std::vector<std::shared_ptr<CSBasicType>> m_kept;
};

// Reads the agents that variables are bound to.
class BoundReader : public ValueReader
{
public:
    explicit BoundReader(const CConstraint::Bindings& bindings)
        : m_bindings(bindings)
    {
    }

    CSPlainValue attribute(const Expression::Node& node) override;
    const std::shared_ptr<CSAgent>& agentOf(const CConstraint& leaf) override;

private:
    const CConstraint::Bindings& m_bindings;
};

} // namespace scenariomatch
