#include "app/explain/ValueReader.h"

namespace scenariomatch
{

namespace
{

const std::shared_ptr<CSAgent>& noAgent()
{
    static const std::shared_ptr<CSAgent> none;
    return none;
}

} // namespace

const std::shared_ptr<CSAgent>& BoundReader::agentOf(const CConstraint& leaf)
{
    const auto bound = m_bindings.find(leaf.m_value);
    return bound == m_bindings.end() ? noAgent() : bound->second;
}

CSPlainValue BoundReader::attribute(const Expression::Node& node)
{
    const std::shared_ptr<CSAgent>& agent = agentOf(*node.source);
    if (!agent) {
        return {};
    }
    agent->makeUp();
    const auto found = agent->m_attributes.find(node.source->m_attribute);
    return CSPlainValue(found == agent->m_attributes.end() ? nullptr : found->second.get());
}

} // namespace scenariomatch
