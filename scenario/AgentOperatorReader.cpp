#include "scenario/AgentOperatorReader.h"

#include "scenario/TextPieces.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

constexpr std::string_view kKeyword = "operator";
constexpr std::string_view kWhiteSpace = " \t\n\r\f\v";

std::string_view trimmed(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(kWhiteSpace);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(kWhiteSpace) - begin + 1);
}

bool isWord(std::string_view text)
{
    return !text.empty() && text.find_first_of(kWhiteSpace) == std::string_view::npos;
}

std::string withoutComments(std::string_view text)
{
    std::string result;
    std::string_view line;
    while (takeLine(text, line)) {
        result += line.substr(0, line.find('#'));
        result += '\n';
    }
    return result;
}

// The body on one line; other white space is blanks.
std::string onOneLine(std::string_view text)
{
    std::string result;
    std::string_view line;
    while (takeLine(text, line)) {
        std::string words(line);
        std::replace_if(
            words.begin(),
            words.end(),
            [](char c) { return kWhiteSpace.find(c) != std::string_view::npos; },
            ' ');
        appendLine(result, words);
    }
    return std::string(trimmed(result));
}

// Visits the operators that a body names, in its order.
template <class Visit>
void forEachOperator(CConstraint& node, const Visit& visit)
{
    if (!node.isLeaf()) {
        visit(node);
    }
    for (const std::unique_ptr<CConstraint>& child : node.m_children) {
        forEachOperator(*child, visit);
    }
}

// The first attribute access whose variable is no parameter; null when there is none.
const CConstraint*
findForeignAttribute(const CConstraint& node, const std::map<std::string, std::string>& parameters)
{
    if (node.m_operatorName == "->" && !parameters.contains(node.m_value)) {
        return &node;
    }
    for (const std::unique_ptr<CConstraint>& child : node.m_children) {
        const CConstraint* found = findForeignAttribute(*child, parameters);
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

// The three parts of one declaration.
struct Declaration
{
    std::string_view m_name;
    std::string_view m_parameters;
    std::string_view m_body;
};

class Reader
{
public:
    Reader(const std::string& fileName, std::string text, CConstraint::OperatorTable& table)
        : m_fileName(fileName)
        , m_text(std::move(text))
        , m_table(table)
    {
    }

    AgentOperators readFile()
    {
        m_rest = trimmed(m_text);
        while (!m_rest.empty()) {
            const std::string_view word = m_rest.substr(0, m_rest.find_first_of(kWhiteSpace));
            if (word != kKeyword) {
                reportUnknown(word);
                skipToKeyword();
                continue;
            }
            m_rest.remove_prefix(kKeyword.size());
            if (const std::optional<Declaration> declaration = takeDeclaration()) {
                readDeclaration(*declaration);
            } else {
                skipToKeyword();
            }
            m_rest = trimmed(m_rest);
        }
        return std::move(m_operators);
    }

private:
    // The text up to the delimiter, which has to come before all others of "(){}"; takes both off
    // the text.
    std::optional<std::string_view> takeBefore(char delimiter)
    {
        const std::size_t end = m_rest.find_first_of("(){}");
        if (end == std::string_view::npos || m_rest[end] != delimiter) {
            return std::nullopt;
        }
        const std::string_view text = trimmed(m_rest.substr(0, end));
        m_rest.remove_prefix(end + 1);
        return text;
    }

    std::optional<Declaration> takeDeclaration();
    void readDeclaration(const Declaration& declaration);
    std::optional<std::vector<AgentOperator::Parameter>>
    readParameters(std::string_view list) const;
    bool prepareBody(
        const std::string& name,
        const std::vector<AgentOperator::Parameter>& parameters,
        CConstraint& body) const;
    bool isLoaded(CConstraint& body) const;

    void report(const std::string& text) const
    {
        std::cerr << "Error reading file: " << m_fileName << ". " << text << " Check it!\n";
    }

    void reportUnknown(std::string_view word) const
    {
        report("The word " + std::string(word) + " is not recognised.");
    }

    // Drops text up to the next word "operator".
    void skipToKeyword()
    {
        do {
            m_rest.remove_prefix(std::min(m_rest.find_first_of(kWhiteSpace), m_rest.size()));
            m_rest.remove_prefix(std::min(m_rest.find_first_not_of(kWhiteSpace), m_rest.size()));
        } while (!m_rest.empty() &&
                 m_rest.substr(0, m_rest.find_first_of(kWhiteSpace)) != kKeyword);
    }

    const std::string& m_fileName;
    std::string m_text;
    std::string_view m_rest;
    CConstraint::OperatorTable& m_table;
    AgentOperators m_operators;
};

// NAME(PARAMETERS) { BODY }, all but the keyword. Nothing after a message.
std::optional<Declaration> Reader::takeDeclaration()
{
    const std::optional<std::string_view> name = takeBefore('(');
    const std::optional<std::string_view> parameters = name ? takeBefore(')') : name;
    const std::optional<std::string_view> between = parameters ? takeBefore('{') : parameters;
    const std::size_t next = m_rest.find_first_of(between ? "{}" : "(){}");
    if (next == std::string_view::npos || (between && m_rest[next] == '{')) {
        report("The declaration operator is not closed.");
        // Without delimiters no declaration can follow.
        m_rest.remove_prefix(next == std::string_view::npos ? m_rest.size() : 0);
        return std::nullopt;
    }
    if (!between || !between->empty() || !isWord(*name)) {
        report("The declaration operator is not well formed.");
        return std::nullopt;
    }
    const std::string_view body = trimmed(m_rest.substr(0, next));
    m_rest.remove_prefix(next + 1);
    return Declaration{*name, *parameters, body};
}

void Reader::readDeclaration(const Declaration& declaration)
{
    const std::string name(declaration.m_name);
    auto parameters = readParameters(declaration.m_parameters);
    if (!parameters || declaration.m_body.empty()) {
        report("The declaration operator " + name + " is not well formed.");
        return;
    }
    auto body = std::make_unique<CConstraint>();
    body->read(onOneLine(declaration.m_body));
    if (!prepareBody(name, *parameters, *body)) {
        return;
    }
    auto declared = std::make_shared<AgentOperator>(name, std::move(*parameters), std::move(body));
    m_table.emplace(name, declared.get());
    m_operators.push_back(std::move(declared));
}

// Nothing where an item is not NAME : TYPE or a name stands twice.
std::optional<std::vector<AgentOperator::Parameter>>
Reader::readParameters(std::string_view list) const
{
    std::vector<AgentOperator::Parameter> parameters;
    bool isLast = list.empty();
    while (!isLast) {
        const std::string_view item = textBefore(list, ',');
        isLast = item.size() == list.size();
        list.remove_prefix(isLast ? list.size() : item.size() + 1);
        const std::string_view name = trimmed(textBefore(item, ':'));
        const std::string_view type = trimmed(textAfter(item, ':'));
        const bool isKnown = std::any_of(
            parameters.begin(), parameters.end(), [&](const auto& p) { return p.name == name; });
        if (item.find(':') == std::string_view::npos || !isWord(name) || !isWord(type) || isKnown) {
            return std::nullopt;
        }
        parameters.push_back({std::string(name), std::string(type)});
    }
    return parameters;
}

// Points the body at its operators and puts in the bodies of the operators declared before. False
// after a message.
bool Reader::prepareBody(
    const std::string& name,
    const std::vector<AgentOperator::Parameter>& parameters,
    CConstraint& body) const
{
    if (!isLoaded(body)) {
        return false;
    }
    std::map<std::string, std::string> types;
    for (const AgentOperator::Parameter& parameter : parameters) {
        types[parameter.name] = parameter.type;
    }
    if (const CConstraint* leaf = findForeignAttribute(body, types); leaf != nullptr) {
        report(
            "The declaration operator " + name + " uses " + leaf->m_value + "->" +
            leaf->m_attribute + ", but " + leaf->m_value + " is no parameter of it.");
        return false;
    }
    if (!rewriteCalls(body, m_operators, types).m_tooLarge.empty()) {
        report("The declaration operator " + name + " grows too large.");
        return false;
    }
    return true;
}

bool Reader::isLoaded(CConstraint& body) const
{
    std::vector<std::string> missing;
    forEachOperator(body, [&](CConstraint& node) {
        const auto op = m_table.find(node.m_operatorName);
        node.m_operator = op == m_table.end() ? nullptr : op->second;
        if (node.m_operator == nullptr &&
            std::find(missing.begin(), missing.end(), node.m_operatorName) == missing.end()) {
            missing.push_back(node.m_operatorName);
        }
    });
    for (const std::string& name : missing) {
        std::cerr << "Warning: Operator " << name
                  << " is not loaded, you can't use it (in the rules file)\n";
    }
    return missing.empty();
}

} // namespace

AgentOperators readAgentOperators(
    const std::string& fileName, const std::string& text, CConstraint::OperatorTable& table)
{
    return Reader(fileName, withoutComments(text), table).readFile();
}

} // namespace scenariomatch
