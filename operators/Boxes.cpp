#include "operators/Boxes.h"

#include "types/CSAllTypes.h"

#include <algorithm>

namespace scenariomatch
{

std::vector<CSPlainValue> views(const std::vector<Value>& values)
{
    std::vector<CSPlainValue> found;
    found.reserve(values.size());
    for (const Value& value : values) {
        found.emplace_back(value.get());
    }
    return found;
}

Value boxed(const CSPlainValue& result, const std::vector<Value>& arguments)
{
    if (result.m_object != nullptr) {
        const auto found =
            std::find_if(arguments.begin(), arguments.end(), [&result](const Value& argument) {
                return argument.get() == result.m_object;
            });
        return found != arguments.end() ? *found : nullptr;
    }
    if (result.isBool()) {
        return std::make_shared<CSBool>(result.m_truth, result.m_number);
    }
    return result.isNumber() ? std::make_shared<CSDouble>(result.m_number) : nullptr;
}

} // namespace scenariomatch
