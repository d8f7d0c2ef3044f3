#include "operators/arithmetic/Arithmetic.h"

#include <algorithm>
#include <cmath>

namespace scenariomatch
{

namespace
{

template <typename Function>
CSPlainValue ofTwo(Arguments arguments, Function function)
{
    if (arguments.size() != 2) {
        return {};
    }
    const auto left = number(arguments[0]);
    const auto right = number(arguments[1]);
    return left && right ? measure(function(*left, *right)) : CSPlainValue();
}

template <typename Choose>
CSPlainValue ofSeveral(Arguments arguments, Choose choose)
{
    if (arguments.size() < 2 || arguments.size() > kMaximumOperands) {
        return {};
    }
    std::optional<double> chosen = number(arguments[0]);
    for (const CSPlainValue& argument : arguments.subspan(1)) {
        const auto next = number(argument);
        if (!chosen || !next) {
            return {};
        }
        chosen = choose(*chosen, *next);
    }
    return measure(chosen);
}

} // namespace

CSPlainValue sum(Arguments arguments)
{
    return ofTwo(arguments, [](double left, double right) { return left + right; });
}

CSPlainValue difference(Arguments arguments)
{
    return ofTwo(arguments, [](double left, double right) { return left - right; });
}

CSPlainValue product(Arguments arguments)
{
    return ofTwo(arguments, [](double left, double right) { return left * right; });
}

CSPlainValue quotient(Arguments arguments)
{
    return ofTwo(arguments, [](double left, double right) { return left / right; });
}

CSPlainValue absolute(Arguments arguments)
{
    const auto operand = arguments.size() == 1 ? number(arguments[0]) : std::nullopt;
    return operand ? measure(std::fabs(*operand)) : CSPlainValue();
}

CSPlainValue least(Arguments arguments)
{
    return ofSeveral(arguments, [](double left, double right) { return std::min(left, right); });
}

CSPlainValue greatest(Arguments arguments)
{
    return ofSeveral(arguments, [](double left, double right) { return std::max(left, right); });
}

CSPlainValue handOn(Arguments arguments)
{
    return arguments.size() == 1 ? arguments[0] : CSPlainValue();
}

} // namespace scenariomatch
