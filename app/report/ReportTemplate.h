#pragma once

#include <string_view>

namespace scenariomatch
{

// Where a report's data goes; stands in the page once.
inline constexpr std::string_view kReportDataPlace = "<!-- scenariomatch:data -->";

// The page that reports are made from, without data; empty in a program that was built without it.
std::string_view reportTemplate();

} // namespace scenariomatch
