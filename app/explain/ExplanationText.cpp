#include "app/explain/ExplanationText.h"

#include "app/explain/NumberWords.h"
#include "app/explain/Summary.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <ostream>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

using Row = std::vector<std::string>;

// Columns with two blanks between them; no blanks at the end of a line.
void printTable(const std::vector<Row>& rows, const std::string& indent, std::ostream& out)
{
    std::vector<std::size_t> widths;
    for (const Row& row : rows) {
        widths.resize(std::max(widths.size(), row.size()), 0);
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    for (const Row& row : rows) {
        std::string line = indent;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i] + std::string(widths[i] - row[i].size() + 2, ' ');
        }
        out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
}

// Sentences in lines that are not too long.
void printParagraph(const std::vector<std::string>& sentences, std::ostream& out)
{
    constexpr std::size_t kWidth = 100;
    std::string line;
    const auto addWord = [&](const std::string& word) {
        if (!line.empty() && line.size() + 1 + word.size() > kWidth) {
            out << line << '\n';
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    };
    for (const std::string& sentence : sentences) {
        std::size_t begin = 0;
        while (begin <= sentence.size()) {
            const std::size_t end = std::min(sentence.find(' ', begin), sentence.size());
            addWord(sentence.substr(begin, end - begin));
            begin = end + 1;
        }
    }
    out << line << '\n';
}

std::string momentText(const Moment& moment, const Moment& start)
{
    return fmt::format("{} (frame {})", secondsText(moment, start), moment.frame);
}

void printConstraints(const WhyNot& why, std::ostream& out)
{
    if (why.constraints.empty() || why.candidates == 0) {
        return;
    }
    out << '\n';
    std::vector<Row> rows{{"constraint", "first false", "nearest", "needed", "who", "when"}};
    for (const ConstraintOutcome& outcome : why.constraints) {
        Row row{outcome.text, fmt::format("{}", outcome.firstFalse)};
        if (outcome.nearest) {
            const Finding& finding = outcome.nearest->findings.front();
            const std::string note = finding.note;
            row.push_back(
                finding.seen.empty() ? note
                                     : finding.seen + (note.empty() ? "" : " (" + note + ")"));
            row.push_back(finding.required);
            row.push_back(objectsText(outcome.nearest->objects));
            row.push_back(momentText(outcome.nearest->when, why.start));
        } else if (!outcome.isPure) {
            row.emplace_back("not known");
        }
        rows.push_back(std::move(row));
    }
    printTable(rows, "", out);
}

void printComponents(const WhyNot& why, std::ostream& out)
{
    if (why.components.empty()) {
        return;
    }
    out << '\n';
    std::vector<Row> rows{{"component", "model", "events"}};
    for (const ComponentOutcome& component : why.components) {
        std::string arguments;
        for (const std::string& argument : component.arguments) {
            arguments += (arguments.empty() ? "" : ", ") + argument;
        }
        rows.push_back(
            {component.variable,
             fmt::format("{}({})", component.model, arguments),
             fmt::format("{}", component.events)});
    }
    printTable(rows, "", out);
}

void printEvents(const WhyNot& why, std::ostream& out)
{
    if (why.events.empty()) {
        return;
    }
    constexpr std::size_t kMost = 20;
    out << '\n';
    std::vector<Row> rows{{"event", "who", "from", "to"}};
    for (std::size_t i = 0; i < std::min(why.events.size(), kMost); ++i) {
        const AppearedEvent& event = why.events[i];
        rows.push_back(
            {fmt::format("{}", event.id),
             objectsText(event.objects),
             momentText(event.begin, why.start),
             momentText(event.end, why.start)});
    }
    printTable(rows, "", out);
    if (why.events.size() > kMost) {
        out << fmt::format("and {} more\n", why.events.size() - kMost);
    }
}

void printTables(const WhyNot& why, std::ostream& out)
{
    printEvents(why, out);
    printComponents(why, out);
    printConstraints(why, out);
    for (const ComponentOutcome& component : why.components) {
        if (component.missing) {
            out << fmt::format(
                "\n{} ({}): {}\n",
                component.variable,
                component.model,
                component.missing->candidates == 1
                    ? "1 candidate"
                    : fmt::format("{} candidates", component.missing->candidates));
            printTables(*component.missing, out);
        }
    }
}

void printEvidence(
    const Evidence& evidence, const std::string& heading, std::size_t depth, std::ostream& out)
{
    const std::string indent(2 * depth, ' ');
    out << '\n' << indent << heading << '\n';
    std::vector<Row> rows;
    for (const Finding& finding : evidence.findings) {
        rows.push_back({finding.text, finding.seen, finding.required, finding.note});
    }
    printTable(rows, indent + "  ", out);
    for (const EvidencePart& part : evidence.parts) {
        const Evidence& event = *part.evidence;
        printEvidence(
            event,
            fmt::format(
                "{}: {} (event {}) with {} from {} to {}, confidence {}",
                part.variable,
                event.model,
                event.id,
                objectsText(event.objects),
                secondsText(event.begin, event.start),
                secondsText(part.until, event.start),
                numberText(event.confidence)),
            depth + 1,
            out);
    }
}

} // namespace

void printExplanation(const WhyNot& why, std::ostream& out)
{
    printParagraph(summaryOf(why), out);
    printTables(why, out);
}

void printExplanation(const Evidence& evidence, std::ostream& out)
{
    printParagraph(summaryOf(evidence), out);
    printEvidence(
        evidence,
        fmt::format(
            "{} at {}, confidence {}, needed {}",
            evidence.model,
            momentText(evidence.recognised, evidence.start),
            numberText(evidence.confidence),
            numberText(evidence.threshold)),
        0,
        out);
}

} // namespace scenariomatch
