#include "types/CSOperatorInterfaceAbstract.h"

CSOperatorInterfaceAbstract::~CSOperatorInterfaceAbstract() = default;

CSOperatorDescription CSOperatorInterfaceAbstract::describe() const
{
    return {};
}

CSPlainValue CSOperatorInterfaceAbstract::evaluatePlain(std::span<const CSPlainValue> /*arguments*/)
{
    return {};
}
