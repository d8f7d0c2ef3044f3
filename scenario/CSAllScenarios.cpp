#include "scenario/CSAllScenarios.h"

#include "scenario/AgentOperator.h"
#include "scenario/SharedConstants.h"
#include "scenario/TextPieces.h"
#include "types/NumberText.h"
#include "types/TextFile.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <optional>
#include <string_view>
#include <utility>

namespace
{

using scenariomatch::appendLine;
using scenariomatch::firstWord;
using scenariomatch::takeLine;
using scenariomatch::textAfter;
using scenariomatch::textBefore;
using scenariomatch::withoutLeadingBlanks;

constexpr std::array<std::string_view, 4> kKinds = {
    "PrimitiveState", "PrimitiveEvent", "CompositeState", "CompositeEvent"};

std::string keywordOf(std::string_view declaration)
{
    return std::string(textBefore(textBefore(declaration, '('), ' '));
}

// Takes the header off the text and returns the name in it; nothing changes the name when there is
// no header.
void takeHeader(std::string_view& text, std::string& name)
{
    std::string header;
    std::string_view line;
    while (takeLine(text, line)) {
        if (header.empty() && line.find("Scenarios") == std::string_view::npos) {
            continue;
        }
        appendLine(header, line);
        if (line.find(',') != std::string_view::npos) {
            const std::string_view body = withoutLeadingBlanks(textAfter(header, '{'));
            name = textBefore(textBefore(body, ','), ' ');
            return;
        }
    }
}

// Takes the next declaration off the text. False where the block or the text ends, which leaves in
// `declaration` what is not closed.
bool takeDeclaration(std::string_view& text, std::string& declaration)
{
    declaration.clear();
    std::ptrdiff_t opened = 0;
    std::ptrdiff_t closed = 0;
    std::string_view line;
    while (takeLine(text, line) && line.find('}') == std::string_view::npos) {
        appendLine(declaration, line);
        opened += std::count(line.begin(), line.end(), '(');
        closed += std::count(line.begin(), line.end(), ')');
        if (opened == closed && opened != 0) {
            return true;
        }
    }
    return false;
}

template <class Visit>
void forEachModel(const CSAllScenarios& scenarios, const Visit& visit)
{
    for (const auto& [kind, models] : scenarios.m_scenariosByKind) {
        for (const std::shared_ptr<CSScenario>& model : models) {
            visit(*model);
        }
    }
}

} // namespace

CSAllScenarios::CSAllScenarios() = default;

CSAllScenarios::~CSAllScenarios() = default;

void CSAllScenarios::read(
    std::string fileName,
    std::map<std::string, double> constants,
    std::map<std::string, int> alarmLevels)
{
    const std::optional<std::string> content = scenariomatch::readTextFile(fileName);
    if (!content) {
        return;
    }
    m_constants = std::move(constants);
    readText(fileName, *content, alarmLevels);
}

void CSAllScenarios::readText(
    const std::string& fileName,
    const std::string& content,
    const std::map<std::string, int>& alarmLevels)
{
    const std::string place = "Error reading file: " + fileName + ". The ";
    std::string_view text = content;
    takeHeader(text, m_name);
    std::string declaration;
    std::optional<scenariomatch::SharedConstants> constants;
    while (takeDeclaration(text, declaration)) {
        const std::string keyword = keywordOf(declaration);
        if (keyword == "CONSTANT") {
            readConstants(declaration);
            constants.reset();
        } else if (std::find(kKinds.begin(), kKinds.end(), keyword) != kKinds.end()) {
            if (!constants) {
                constants.emplace(m_constants);
            }
            auto model = std::make_shared<CSScenario>();
            model->read(declaration, keyword, *constants, alarmLevels);
            m_scenariosByKind[keyword].push_back(std::move(model));
        } else {
            std::cerr << place << "word " << keyword << " is not recognised. Check it!\n";
        }
    }
    if (!declaration.empty()) {
        std::cerr << place << "declaration " << keywordOf(declaration)
                  << " is not closed. Check it!\n";
    }
}

void CSAllScenarios::readConstants(std::string text)
{
    const std::string_view body = withoutLeadingBlanks(textAfter(text, '('));
    const std::string_view value = firstWord(textBefore(textAfter(body, ' '), ')'));
    m_constants[std::string(textBefore(body, ' '))] =
        scenariomatch::stringToDouble(std::string(value));
}

void CSAllScenarios::print() const
{
    forEachModel(*this, [](const CSScenario& model) { model.print(); });
}

void CSAllScenarios::classifyConstraints() const
{
    forEachModel(*this, [](CSScenario& model) { model.classifyConstraints(); });
}

void CSAllScenarios::fillConstraintsConstants() const
{
    forEachModel(*this, [](CSScenario& model) { model.fillConstraintsConstants(); });
}

void CSAllScenarios::rewriteAgentOperator(const scenariomatch::AgentOperators& declared) const
{
    forEachModel(*this, [&](CSScenario& model) {
        for (const std::unique_ptr<CConstraint>& constraint : model.m_constraints) {
            const scenariomatch::RewrittenCalls calls =
                scenariomatch::rewriteCalls(*constraint, declared, model.m_variableTypes);
            for (CConstraint* node : calls.m_nodes) {
                node->fillConstraintsConstants(*model.m_constants);
            }
            if (!calls.m_tooLarge.empty()) {
                std::cerr << "Warning: Operator " << calls.m_tooLarge
                          << " is left as it is in scenario model " << model.m_name
                          << ", whose constraint grows too large.\n";
            }
        }
    });
}
