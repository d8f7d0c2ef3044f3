#include "app/explain/NumberWords.h"

#include <fmt/format.h>

namespace scenariomatch
{

std::string numberText(double number)
{
    // No "-0".
    return fmt::format("{:.6g}", number == 0.0 ? 0.0 : number);
}

} // namespace scenariomatch
