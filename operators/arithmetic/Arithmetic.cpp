#include "operators/arithmetic/Arithmetic.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace scenariomatch
{

namespace
{

template <typename Function>
Value ofTwo(const Arguments& arguments, Function function)
{
    if (arguments.size() != 2) {
        return nullptr;
    }
    const auto left = number(arguments[0]);
    const auto right = number(arguments[1]);
    return left && right ? measure(function(*left, *right)) : nullptr;
}

template <typename Choose>
Value ofSeveral(const Arguments& arguments, Choose choose)
{
    if (arguments.size() < 2 || arguments.size() > kMaximumOperands) {
        return nullptr;
    }
    std::optional<double> chosen = number(arguments[0]);
    for (const Value& argument : std::span(arguments).subspan(1)) {
        const auto next = number(argument);
        if (!chosen || !next) {
            return nullptr;
        }
        chosen = choose(*chosen, *next);
    }
    return measure(chosen);
}

} // namespace

Value sum(const Arguments& arguments)
{
    return ofTwo(arguments, [](double left, double right) { return left + right; });
}

Value difference(const Arguments& arguments)
{
    return ofTwo(arguments, [](double left, double right) { return left - right; });
}

Value product(const Arguments& arguments)
{
    return ofTwo(arguments, [](double left, double right) { return left * right; });
}

Value quotient(const Arguments& arguments)
{
    return ofTwo(arguments, [](double left, double right) { return left / right; });
}

Value absolute(const Arguments& arguments)
{
    const auto operand = arguments.size() == 1 ? number(arguments[0]) : std::nullopt;
    return operand ? measure(std::fabs(*operand)) : nullptr;
}

Value least(const Arguments& arguments)
{
    return ofSeveral(arguments, [](double left, double right) { return std::min(left, right); });
}

Value greatest(const Arguments& arguments)
{
    return ofSeveral(arguments, [](double left, double right) { return std::max(left, right); });
}

Value handOn(const Arguments& arguments)
{
    return arguments.size() == 1 ? arguments[0] : nullptr;
}

} // namespace scenariomatch
