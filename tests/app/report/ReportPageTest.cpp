#include "app/report/ReportPage.h"

#include "app/report/ReportTemplate.h"
#include "tests/app/report/DecodedReport.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace scenariomatch
{

namespace
{

const std::string kPage = "<body>\n<!-- scenariomatch:data -->\n<script>1</script></body>";

} // namespace

TEST(ReportPage, HoldsItsDataCompressed)
{
    const std::string long1(100'000, 'a');
    const std::string page =
        makeReportPage(kPage, {R"({"a":[1,2]})", R"({"b":")" + long1 + R"("})", "[]"});
    EXPECT_LT(page.size(), 2000U);
    const DecodedReport report = decodeReport(page);
    EXPECT_EQ(report.data["a"], nlohmann::json({1, 2}));
    EXPECT_EQ(report.tracks["b"], long1);
    EXPECT_TRUE(report.why.is_array());
    EXPECT_TRUE(page.starts_with("<body>\n<script type=\"text/plain\" id=\"report-data\">"));
    EXPECT_TRUE(page.ends_with("</script>\n\n<script>1</script></body>"));
}

TEST(ReportPage, IsTheSameForTheSameData)
{
    const ReportData data{R"({"a":1})", "{}", "[]"};
    EXPECT_EQ(makeReportPage(kPage, data), makeReportPage(kPage, data));
    // The compressed data's header has no time: its bytes 4 to 7 are 0.
    EXPECT_TRUE(dataIn(makeReportPage(kPage, data), "report-data").starts_with("H4sIAAAAAAAA"));
}

TEST(ReportPage, NeedsAPlaceForData)
{
    EXPECT_THROW(makeReportPage("<body></body>", {}), std::runtime_error);
}

TEST(ReportTemplate, HasThePlaceForDataOnce)
{
    const std::string_view page = reportTemplate();
    if (page.empty()) {
        GTEST_SKIP() << "built without reports";
    }
    const std::size_t place = page.find(kReportDataPlace);
    ASSERT_NE(place, std::string_view::npos);
    EXPECT_EQ(page.find(kReportDataPlace, place + 1), std::string_view::npos);
    // Everything is in the page itself.
    EXPECT_NE(page.find("default-src 'none'"), std::string_view::npos);
    EXPECT_LE(page.size(), 400'000U);
}

} // namespace scenariomatch
