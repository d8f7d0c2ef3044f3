#pragma once

#include "engine/CSEngine.h"
#include "tests/reference/ReferenceMatcher.h"

#include <map>
#include <memory>
#include <set>
#include <string>

// What differs between the engine and the reference, told for people; empty when nothing does.
namespace scenariomatch
{

std::string compareRecognised(const CSEngine& engine, const ReferenceMatcher& reference);
std::string compareStatistics(const CSEngine& engine, const ReferenceMatcher& reference);
std::string compareFirstLevelCandidates(const CSEngine& engine, const ReferenceMatcher& reference);
std::string compareTimes(const ReferenceMatcher& reference);

// Attributes that a failed look-up may enter on one side alone are passed over where they have no
// value, and so is whether their values are the first.
std::string compareAgents(
    const std::string& title,
    const std::map<int, std::shared_ptr<CSAgent>>& engine,
    const std::map<int, std::shared_ptr<CSAgent>>& reference,
    const std::set<std::string>& lookedUpByPureOperators);
// The identifiers and what they belong to alone.
std::string compareIdentities(
    const std::string& title,
    const std::map<int, std::shared_ptr<CSAgent>>& engine,
    const std::map<int, std::shared_ptr<CSAgent>>& reference);

// Two texts line by line, from the first difference on.
std::string
compareLines(const std::string& title, const std::string& engine, const std::string& reference);

} // namespace scenariomatch
