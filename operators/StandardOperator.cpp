#include "operators/StandardOperator.h"

#include "operators/Boxes.h"

namespace scenariomatch
{

StandardOperator::StandardOperator()
    : m_definition(operatorDefinition())
{
    m_name = m_definition.name;
    m_isTemporal = m_definition.isTemporal;
    m_definition.description.m_plain = true;
}

std::shared_ptr<CSBasicType>
StandardOperator::evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments)
{
    return boxed(m_definition.evaluate(views(arguments)), arguments);
}

CSOperatorDescription StandardOperator::describe() const
{
    return m_definition.description;
}

CSPlainValue StandardOperator::evaluatePlain(std::span<const CSPlainValue> arguments)
{
    return m_definition.evaluate(arguments);
}

} // namespace scenariomatch
