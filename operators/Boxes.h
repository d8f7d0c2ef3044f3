#pragma once

#include "types/CSBasicType.h"
#include "types/CSPlainValue.h"

#include <memory>
#include <vector>

// The way from value objects to plain values and back, for callers that hold the objects.
//
// Example:
//     const std::vector<CSPlainValue> arguments = views(values);
//     return boxed(isLess(arguments), values);
namespace scenariomatch
{

using Value = std::shared_ptr<CSBasicType>;

// Valid as long as the values.
std::vector<CSPlainValue> views(const std::vector<Value>& values);

// The result of an operator as an object: a BOOL with its confidence, a DOUBLE, one of the
// arguments itself, or an empty pointer for no value.
Value boxed(const CSPlainValue& result, const std::vector<Value>& arguments);

} // namespace scenariomatch
