#include "app/DiagnosticWriter.h"

#include "app/PrintableText.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>

namespace scenariomatch
{

namespace
{

using nlohmann::json;

// Letters of a source line that are shown.
constexpr std::size_t kLongestLine = 400;

std::string_view severityName(const lint::Diagnostic& diagnostic)
{
    return diagnostic.rule->severity == lint::Severity::Error ? "error" : "warning";
}

// Blanks as wide as the text; tabs stay.
std::string paddingOf(std::string_view text)
{
    std::string padding;
    for (const char letter : text) {
        const bool goesOn = (static_cast<unsigned char>(letter) & 0xC0U) == 0x80U;
        padding += letter == '\t' ? "\t" : goesOn ? "" : " ";
    }
    return padding;
}

std::string underlineOf(std::string_view text)
{
    std::string line = paddingOf(text);
    std::fill(line.begin(), line.end(), '~');
    line.resize(std::max<std::size_t>(line.size(), 1));
    line.front() = '^';
    return line;
}

// A line of a file; its tabs stay, so that what is below stands at its place.
std::string printableLine(std::string_view text)
{
    std::string line(text);
    std::replace_if(
        line.begin(),
        line.end(),
        [](char letter) { return isControl(letter) && letter != '\t'; },
        '?');
    return line;
}

lint::Place endOf(const lint::Range& range)
{
    return range.source == nullptr ? lint::Place() : range.source->placeOf(range.end);
}

// Text that is no UTF-8 is replaced where it is not.
std::string dump(const json& document)
{
    return document.dump(2, ' ', false, json::error_handler_t::replace);
}

void writeJson(std::ostream& out, std::span<const lint::Diagnostic> found)
{
    json list = json::array();
    for (const lint::Diagnostic& diagnostic : found) {
        const lint::Place begin = diagnostic.range.place();
        const lint::Place end = endOf(diagnostic.range);
        list.push_back(
            {{"name", diagnostic.rule->name},
             {"severity", severityName(diagnostic)},
             {"file", diagnostic.range.source == nullptr ? "" : diagnostic.range.source->name()},
             {"line", begin.line},
             {"column", begin.column},
             {"end_line", end.line},
             {"end_column", end.column},
             {"message", diagnostic.message},
             {"hint", diagnostic.hint},
             {"suggestion", diagnostic.suggestion}});
    }
    out << dump({{"diagnostics", list}}) << '\n';
}

json sarifRules()
{
    json list = json::array();
    for (const lint::Rule& rule : lint::rules()) {
        const bool isError = rule.severity == lint::Severity::Error;
        list.push_back(
            {{"id", rule.name},
             {"shortDescription", {{"text", rule.summary}}},
             {"defaultConfiguration", {{"level", isError ? "error" : "warning"}}}});
    }
    return list;
}

json sarifResult(const lint::Diagnostic& diagnostic)
{
    const lint::Place begin = diagnostic.range.place();
    const lint::Place end = endOf(diagnostic.range);
    const std::string file =
        diagnostic.range.source == nullptr ? "" : diagnostic.range.source->name();
    const std::string hint = diagnostic.hint.empty() ? "" : " (" + diagnostic.hint + ")";
    const json region = {
        {"startLine", begin.line},
        {"startColumn", begin.column},
        {"endLine", end.line},
        {"endColumn", end.column}};
    const json place = {{"artifactLocation", {{"uri", file}}}, {"region", region}};
    json result = {
        {"ruleId", diagnostic.rule->name},
        {"level", severityName(diagnostic)},
        {"message", {{"text", diagnostic.message + hint}}},
        {"locations", json::array({{{"physicalLocation", place}}})}};
    if (!diagnostic.suggestion.empty()) {
        const json replacement = {
            {"deletedRegion", region}, {"insertedContent", {{"text", diagnostic.suggestion}}}};
        const json change = {
            {"artifactLocation", {{"uri", file}}}, {"replacements", json::array({replacement})}};
        result["fixes"] = json::array(
            {{{"description", {{"text", diagnostic.hint}}},
              {"artifactChanges", json::array({change})}}});
    }
    return result;
}

void writeSarif(std::ostream& out, std::span<const lint::Diagnostic> found)
{
    json results = json::array();
    for (const lint::Diagnostic& diagnostic : found) {
        results.push_back(sarifResult(diagnostic));
    }
    const json driver = {{"name", "scenariomatch"}, {"rules", sarifRules()}};
    const json run = {
        {"tool", {{"driver", driver}}}, {"columnKind", "utf16CodeUnits"}, {"results", results}};
    const json document = {
        {"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
        {"version", "2.1.0"},
        {"runs", json::array({run})}};
    out << dump(document) << '\n';
}

} // namespace

void writePlacedMessage(
    std::ostream& out, const lint::Range& range, std::string_view message, const std::string& hint)
{
    const lint::Source* source = range.source;
    const lint::Place place = range.place();
    out << fmt::format(
        "{}:{}:{}: {}\n",
        source == nullptr ? "" : source->name(),
        place.line,
        place.column,
        printable(message));
    const std::string_view line = source == nullptr ? "" : source->lineText(place.line);
    if (line.empty() || line.size() > kLongestLine) {
        if (!hint.empty()) {
            out << fmt::format("      | {}\n", printable(hint));
        }
        return;
    }
    const std::size_t begin = std::min(place.column - 1, line.size());
    out << fmt::format("{:>5} | {}\n", place.line, printableLine(line));
    out << fmt::format(
        "      | {}{}{}{}\n",
        paddingOf(line.substr(0, begin)),
        underlineOf(line.substr(begin, range.end - range.begin)),
        hint.empty() ? "" : " ",
        printable(hint));
}

void writeDiagnosticText(std::ostream& out, const lint::Diagnostic& diagnostic)
{
    const std::string message = fmt::format(
        "{}: {} [{}]", severityName(diagnostic), diagnostic.message, diagnostic.rule->name);
    writePlacedMessage(out, diagnostic.range, message, diagnostic.hint);
}

void writeDiagnostics(
    std::ostream& out, std::span<const lint::Diagnostic> found, DiagnosticFormat format)
{
    if (format == DiagnosticFormat::Json) {
        writeJson(out, found);
        return;
    }
    if (format == DiagnosticFormat::Sarif) {
        writeSarif(out, found);
        return;
    }
    for (const lint::Diagnostic& diagnostic : found) {
        writeDiagnosticText(out, diagnostic);
    }
}

} // namespace scenariomatch
