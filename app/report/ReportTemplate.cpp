#include "app/report/ReportTemplate.h"

namespace scenariomatch
{

#ifdef SCENARIOMATCH_REPORT

std::string_view reportTemplate()
{
    static constexpr char kPage[] = {
    // NOLINT(modernize-avoid-c-arrays): its length is not known
#include "ReportPage.inc"
    };
    return {static_cast<const char*>(kPage), sizeof kPage};
}

#else

std::string_view reportTemplate()
{
    return {};
}

#endif

} // namespace scenariomatch
