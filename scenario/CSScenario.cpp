#include "scenario/CSScenario.h"

#include "scenario/SharedConstants.h"
#include "scenario/TextPieces.h"
#include "types/NumberText.h"

#include <iostream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace
{

using scenariomatch::firstWord;
using scenariomatch::stringToDouble;
using scenariomatch::takeGroup;
using scenariomatch::textAfter;
using scenariomatch::textBefore;
using scenariomatch::withoutLeadingBlanks;

// Drops the text up to and including its first opening parenthesis. False when there is none.
bool skipOpening(std::string_view& text)
{
    const std::size_t open = text.find('(');
    if (open == std::string_view::npos) {
        return false;
    }
    text.remove_prefix(open + 1);
    return true;
}

// Reads words that end at a separator. Once a separator is missing it is missing for good, and the
// word is looked for in all that follows; such words overlap, therefore their length is limited.
class WordsBefore
{
public:
    explicit WordsBefore(char separator)
        : m_separator(separator)
    {
    }

    // Takes the first word before the separator; the text goes on after the separator, if there is
    // one.
    std::string take(std::string_view& text)
    {
        std::string_view piece = text;
        if (!m_isMissing) {
            piece = textBefore(text, m_separator);
            m_isMissing = piece.size() == text.size();
            text.remove_prefix(m_isMissing ? 0 : piece.size() + 1);
        }
        const std::string_view word = firstWord(piece);
        if (word.size() > CSScenario::kMaximumNameLength) {
            throw std::out_of_range(
                "CSScenario::readPhysicalObjects: a name is longer than " +
                std::to_string(CSScenario::kMaximumNameLength) + " bytes");
        }
        return std::string(word);
    }

private:
    char m_separator;
    bool m_isMissing = false;
};

// The text of a "Components" section. Brackets are taken out one per component, each from all the
// remaining text, with a ")" left in their place; what stands before the last bracket taken out is
// kept apart, so that the rest never moves.
class ComponentsText
{
public:
    explicit ComponentsText(std::string_view text)
        : m_rest(text)
    {
    }

    // Drops the text up to and including its next opening parenthesis. False when there is none.
    bool skipOpening()
    {
        std::string_view ready = this->ready();
        if (::skipOpening(ready)) {
            m_position = m_ready.size() - ready.size();
            return true;
        }
        dropReady();
        return ::skipOpening(m_rest);
    }

    // Takes the next bracket out of the text. False when there is none.
    bool takeBracket(std::string_view& bracket)
    {
        const std::size_t open = m_hasBrackets ? m_rest.find('[') : std::string_view::npos;
        if (open == std::string_view::npos) {
            m_hasBrackets = false;
            return false;
        }
        const std::size_t close = m_rest.find(']', open);
        bracket = m_rest.substr(open + 1, close - open - 1);
        m_ready.append(m_rest.substr(0, open)).append(1, ')');
        m_rest.remove_prefix(close == std::string_view::npos ? m_rest.size() : close + 1);
        return true;
    }

    // getBetweenParentheses on the remaining text.
    std::string takeGroup()
    {
        std::size_t depth = 1;
        const std::string_view head = ready();
        const std::size_t end = scenariomatch::countParentheses(head, depth);
        if (depth == 0) {
            m_position += end;
            return std::string(head.substr(0, end - 1));
        }
        // The group goes on in the rest; where it never ends, it ends with the last parenthesis
        // there is.
        const std::size_t more = scenariomatch::countParentheses(m_rest, depth);
        std::string group(more == 0 ? head.substr(0, end) : head);
        group.append(m_rest.substr(0, more));
        m_rest.remove_prefix(more);
        dropReady();
        return group.substr(0, group.rfind(')'));
    }

private:
    std::string_view ready() const { return std::string_view(m_ready).substr(m_position); }

    void dropReady()
    {
        m_ready.clear();
        m_position = 0;
    }

    std::string m_ready;
    std::size_t m_position = 0;
    std::string_view m_rest;
    bool m_hasBrackets = true;
};

// [MIN] or [MIN, MAX], without the brackets.
void readDuration(CComponent& component, std::string_view bracket)
{
    if (bracket.find(',') != std::string_view::npos) {
        component.m_maxDuration = stringToDouble(std::string(firstWord(textAfter(bracket, ','))));
    }
    component.m_minDuration = stringToDouble(std::string(firstWord(textBefore(bracket, ','))));
}

// VARIABLE : KIND MODEL(ARGUMENTS, the arguments with their closing parenthesis and what follows
// it.
void readComponent(CComponent& component, std::string_view group)
{
    component.m_variable = firstWord(textBefore(group, ':'));
    const std::string_view call = withoutLeadingBlanks(textAfter(group, ':'));
    component.m_kind = textBefore(call, ' ');
    const std::string_view model = textAfter(call, ' ');
    component.m_modelName = firstWord(textBefore(model, '('));
    std::string_view rest = textAfter(model, '(');
    while (!rest.empty()) {
        const std::size_t end = rest.find_first_of(",)");
        component.m_arguments.emplace_back(firstWord(rest.substr(0, end)));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        rest = withoutLeadingBlanks(rest);
    }
}

void classifyTree(CConstraint& node)
{
    if (node.m_operator != nullptr) {
        node.classifyConstraints({});
    }
    for (const std::unique_ptr<CConstraint>& child : node.m_children) {
        classifyTree(*child);
    }
}

} // namespace

CSScenario::~CSScenario() = default;

std::int32_t CSScenario::m_number = 0;

void CSScenario::read(
    std::string text,
    const std::string& kind,
    std::map<std::string, double> constants,
    std::map<std::string, int> alarmLevels)
{
    scenariomatch::SharedConstants shared(std::move(constants));
    read(text, kind, shared, alarmLevels);
}

void CSScenario::read(
    const std::string& text,
    const std::string& kind,
    scenariomatch::SharedConstants& constants,
    const std::map<std::string, int>& alarmLevels)
{
    m_id = m_number++;
    m_kind = kind;
    m_constants = constants.table();
    std::string_view rest = withoutLeadingBlanks(textAfter(text, '('));
    std::string_view name = textBefore(rest, ',');
    rest = textAfter(rest, ',');
    if (const std::size_t open = name.find('['); open != std::string_view::npos) {
        m_confidenceThreshold = stringToDouble(std::string(textBefore(name.substr(open + 1), ']')));
        name = name.substr(0, open);
    } else {
        m_constants = constants.tableWithThreshold(kind);
        m_confidenceThreshold = m_constants->at(kind);
    }
    m_name = name;
    while (rest.find('(') != std::string_view::npos) {
        const std::string keyword(firstWord(textBefore(rest, '(')));
        rest = textAfter(rest, '(');
        readSection(keyword, std::string(takeGroup(rest)), alarmLevels);
    }
}

void CSScenario::readSection(
    const std::string& keyword,
    const std::string& body,
    const std::map<std::string, int>& alarmLevels)
{
    if (keyword == "PhysicalObjects") {
        readPhysicalObjects(body);
    } else if (keyword == "Constraints") {
        readConstraints(body);
    } else if (keyword == "Components") {
        readComponents(body);
    } else if (keyword == "Alarm") {
        readAlarm(body, alarmLevels);
    } else if (keyword == "Miscellaneous") {
        readMiscellaneous(body);
    } else {
        std::cerr << "Error, [CSScenario] " << keyword
                  << " is an unknown keyword to describe a scenario [" << m_name << "]!\n";
    }
}

void CSScenario::readPhysicalObjects(std::string body)
{
    std::string_view rest = body;
    WordsBefore variables(':');
    WordsBefore types(')');
    while (skipOpening(rest)) {
        rest = withoutLeadingBlanks(rest);
        const std::string variable = variables.take(rest);
        const std::string type = types.take(rest);
        m_physicalObjects[static_cast<int>(m_physicalObjects.size())] = variable;
        m_variablesByType[type].push_back(variable);
        m_variableTypes[variable] = type;
    }
}

void CSScenario::readComponents(std::string body)
{
    ComponentsText text(body);
    while (text.skipOpening()) {
        auto component = std::make_unique<CComponent>();
        if (std::string_view bracket; text.takeBracket(bracket)) {
            readDuration(*component, bracket);
        }
        readComponent(*component, text.takeGroup());
        m_variableTypes[component->m_variable] = "Component";
        m_components.push_back(std::move(component));
    }
}

void CSScenario::readConstraints(std::string body)
{
    std::string_view rest = body;
    while (skipOpening(rest)) {
        auto constraint = std::make_unique<CConstraint>();
        constraint->read(std::string(takeGroup(rest)));
        m_constraints.push_back(std::move(constraint));
    }
}

void CSScenario::readAlarm(std::string body, std::map<std::string, int> alarmLevels)
{
    std::string_view rest = body;
    while (skipOpening(rest)) {
        const std::string_view group = takeGroup(rest);
        const std::string_view key = firstWord(textBefore(group, ':'));
        const std::string value(withoutLeadingBlanks(textAfter(group, ':')));
        if (key == "Level") {
            m_alarmLevelName = value;
            m_alarmLevel = alarmLevels[value];
        } else if (key == "Text") {
            m_alarmText = value;
        }
    }
}

void CSScenario::readMiscellaneous(std::string body)
{
    std::string_view rest = withoutLeadingBlanks(textAfter(body, '('));
    const std::string_view clause = takeGroup(rest);
    std::map<std::string, std::string> values;
    std::string_view pairs = textAfter(clause, ',');
    while (skipOpening(pairs)) {
        pairs = withoutLeadingBlanks(pairs);
        const std::string_view pair = withoutLeadingBlanks(takeGroup(pairs));
        values[std::string(firstWord(pair))] = firstWord(textAfter(pair, ' '));
    }
    m_miscellaneous[std::string(firstWord(textBefore(clause, ',')))] = std::move(values);
}

void CSScenario::print() const
{
    std::cout << "ID " << m_id << ' ' << m_name << "\nPhysical Objects: ";
    for (const auto& [index, variable] : m_physicalObjects) {
        const auto type = m_variableTypes.find(variable);
        std::cout << '(' << variable << ',' << (type == m_variableTypes.end() ? "" : type->second)
                  << ") ";
    }
    std::cout << "\nComponents:\n";
    for (const std::unique_ptr<CComponent>& component : m_components) {
        component->print();
    }
    std::cout << "Constraints:\n";
    for (const std::unique_ptr<CConstraint>& constraint : m_constraints) {
        std::cout << "\t\t";
        constraint->print();
    }
    std::cout.flush();
}

void CSScenario::classifyConstraints()
{
    for (const std::unique_ptr<CConstraint>& constraint : m_constraints) {
        classifyTree(*constraint);
    }
}

void CSScenario::fillConstraintsConstants()
{
    for (const std::unique_ptr<CConstraint>& constraint : m_constraints) {
        constraint->fillConstraintsConstants(*m_constants);
    }
}
