#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace scenariomatch
{

// What a browser finds in a report.
struct DecodedReport
{
    nlohmann::json data;
    nlohmann::json tracks;
    nlohmann::json why;
};

// The compressed text in the element of this id; empty where it stands there not exactly once.
std::string dataIn(const std::string& page, const std::string& id);

DecodedReport decodeReport(const std::string& page);

// The lines that run would write of these events, made from the tables alone.
std::vector<nlohmann::json> eventLines(const nlohmann::json& data);

} // namespace scenariomatch
