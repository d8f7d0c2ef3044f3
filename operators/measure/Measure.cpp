#include "operators/measure/Measure.h"

namespace scenariomatch
{

namespace
{

// Nothing for what has no duration.
std::optional<double> length(const CSPlainValue& value)
{
    if (!hasBothEnds(value)) {
        return std::nullopt;
    }
    const double seconds = secondsBetween(*value.m_interval.start, *value.m_interval.end);
    return seconds >= 0.0 ? std::optional(seconds) : std::nullopt;
}

} // namespace

CSPlainValue duration(Arguments arguments)
{
    return arguments.size() == 1 ? measure(length(arguments[0])) : CSPlainValue();
}

CSPlainValue gap(Arguments arguments)
{
    if (arguments.size() != 2) {
        return {};
    }
    const CSPlainValue& first = arguments[0];
    const CSPlainValue& second = arguments[1];
    if (!length(first) || !length(second)) {
        return {};
    }
    return measure(secondsBetween(*first.m_interval.end, *second.m_interval.start));
}

} // namespace scenariomatch
