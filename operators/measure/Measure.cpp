#include "operators/measure/Measure.h"

namespace scenariomatch
{

namespace
{

// Nothing for what has no duration.
std::optional<double> length(const CSInterval* interval)
{
    if (interval == nullptr || !interval->m_start || !interval->m_end) {
        return std::nullopt;
    }
    const double seconds = secondsBetween(*interval->m_start, *interval->m_end);
    return seconds >= 0.0 ? std::optional(seconds) : std::nullopt;
}

} // namespace

Value duration(const Arguments& arguments)
{
    return arguments.size() == 1 ? measure(length(interval(arguments[0]))) : nullptr;
}

Value gap(const Arguments& arguments)
{
    if (arguments.size() != 2) {
        return nullptr;
    }
    const CSInterval* first = interval(arguments[0]);
    const CSInterval* second = interval(arguments[1]);
    if (!length(first) || !length(second)) {
        return nullptr;
    }
    return measure(secondsBetween(*first->m_end, *second->m_start));
}

} // namespace scenariomatch
