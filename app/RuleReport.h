#pragma once

#include "app/RuleTest.h"
#include "app/RuleVerdict.h"

#include <cstdint>
#include <iosfwd>
#include <memory>

namespace scenariomatch
{

enum class RuleReportFormat : std::uint8_t { Text, Tap, JUnit };

// Tells the verdicts of cases, for people or for programs.
//
// The stream must outlive the report. Cases of a file come one after the other.
class RuleReport
{
public:
    RuleReport() = default;
    RuleReport(const RuleReport&) = delete;
    RuleReport(RuleReport&&) = delete;
    RuleReport& operator=(const RuleReport&) = delete;
    RuleReport& operator=(RuleReport&&) = delete;
    virtual ~RuleReport() = default;

    virtual void
    add(const std::string& fileName, const RuleCase& ruleCase, const RuleVerdict& verdict) = 0;
    // Called once, after the last case.
    virtual void finish() = 0;
};

std::unique_ptr<RuleReport> makeRuleReport(RuleReportFormat format, std::ostream& out);

} // namespace scenariomatch
