#pragma once

#include "scenario/CComponent.h"

#include <cstddef>
#include <string>

namespace scenariomatch
{

// The variable that a component passes to its sub-model at a position; null where it passes none.
inline const std::string* argumentAt(const CComponent& component, int position)
{
    const auto index = static_cast<std::size_t>(position);
    const bool isPassed =
        index < component.m_arguments.size() && !component.m_arguments[index].empty();
    return isPassed ? &component.m_arguments[index] : nullptr;
}

} // namespace scenariomatch
