#include "operators/StandardOperator.h"

namespace scenariomatch
{

StandardOperator::StandardOperator()
    : m_definition(operatorDefinition())
{
    m_name = m_definition.name;
    m_isTemporal = m_definition.isTemporal;
}

std::shared_ptr<CSBasicType>
StandardOperator::evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments)
{
    return m_definition.evaluate(arguments);
}

CSOperatorDescription StandardOperator::describe() const
{
    return m_definition.description;
}

} // namespace scenariomatch
