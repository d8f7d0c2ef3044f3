#pragma once

#include <string>
#include <string_view>

namespace scenariomatch
{

// What a report shows, each a text of JSON; see docs/report.md.
struct ReportData
{
    std::string tables;
    std::string tracks;
    std::string why;
};

// The page with the data in it, compressed and as letters and digits alone, so that nothing in it
// can end the element that it stands in. Always the same for the same data.
std::string makeReportPage(std::string_view page, const ReportData& data);

} // namespace scenariomatch
