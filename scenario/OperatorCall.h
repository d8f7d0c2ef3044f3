#pragma once

#include "types/CSOperatorInterfaceAbstract.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

// The one place through which operators are called. Operators are strangers' code: what they throw
// goes no further.
namespace scenariomatch
{

using OperatorFailureHandler =
    std::function<void(const CSOperatorInterfaceAbstract& op, const std::string& what)>;

// Installs the handler that is told every time an operator throws, process-wide; an empty one for
// none.
CS_EXPORT void setOperatorFailureHandler(OperatorFailureHandler handler);

// The operator's value on the arguments; a false CSBool when it throws. A failed allocation passes.
CS_EXPORT std::shared_ptr<CSBasicType> callOperator(
    CSOperatorInterfaceAbstract& op, std::vector<std::shared_ptr<CSBasicType>>&& arguments);

// Reports the exception that is being handled; a failed allocation is thrown on.
CS_EXPORT void reportOperatorFailure(const CSOperatorInterfaceAbstract& op);

// The plain value of an operator that promises one; a plain false when it throws. A failed
// allocation passes.
inline CSPlainValue
callOperatorPlain(CSOperatorInterfaceAbstract& op, std::span<const CSPlainValue> arguments)
{
    try {
        return op.evaluatePlain(arguments);
    } catch (...) {
        reportOperatorFailure(op);
        return CSPlainValue::boolean(false);
    }
}

// What the operator says about itself; nothing when it throws. A failed allocation passes.
CS_EXPORT CSOperatorDescription describeOperator(const CSOperatorInterfaceAbstract& op);

} // namespace scenariomatch
