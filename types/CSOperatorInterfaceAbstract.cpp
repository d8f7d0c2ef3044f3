#include "types/CSOperatorInterfaceAbstract.h"

CSOperatorInterfaceAbstract::~CSOperatorInterfaceAbstract() = default;

CSOperatorDescription CSOperatorInterfaceAbstract::describe() const
{
    return {};
}
