#include "lint/ModelFile.h"

#include "lint/Blocks.h"
#include "lint/ModelParser.h"
#include "lint/NearNames.h"
#include "types/NumberText.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <fmt/format.h>
#include <optional>
#include <utility>

namespace scenariomatch::lint
{

namespace
{

constexpr std::string_view kConstant = "CONSTANT";

// Lines of one declaration, both included, without empty ones at its ends.
struct Lines
{
    std::size_t first = 0;
    std::size_t last = 0;

    bool operator==(const Lines&) const = default;
};

std::string firstWordOf(const std::string& line)
{
    return line.substr(0, line.find_first_of(" \t("));
}

std::ptrdiff_t balanceOf(std::string_view line)
{
    return std::count(line.begin(), line.end(), '(') - std::count(line.begin(), line.end(), ')');
}

bool isDeclarationWord(std::string_view word)
{
    return word == kConstant || isModelKind(word);
}

std::string nearestKind(std::string_view word)
{
    std::vector<std::string> kinds(kModelKinds.begin(), kModelKinds.end());
    kinds.emplace_back(kConstant);
    return nearestName(word, kinds);
}

// The declarations as the engine gathers them: lines up to the one on which as many parentheses are
// closed as were opened.
std::vector<Lines> gatheredLines(const Source& source, const Block& block)
{
    std::vector<Lines> found;
    std::size_t first = 0;
    std::ptrdiff_t balance = 0;
    bool hasGroup = false;
    for (std::size_t line = block.firstLine; line < block.endLine; ++line) {
        const std::string_view text = source.lineText(line);
        first = first == 0 && !trimmedLine(source, line).text.empty() ? line : first;
        hasGroup = hasGroup || text.find('(') != std::string_view::npos;
        balance += balanceOf(text);
        if (hasGroup && balance == 0) {
            found.push_back({first, line});
            first = 0;
            hasGroup = false;
        }
    }
    return found;
}

// The declarations as they are meant: a new one begins with a line that begins with a kind, or with
// any word where the one before is complete.
class MeantLines
{
public:
    MeantLines(const Source& source, const Block& block)
        : m_source(source)
    {
        for (std::size_t line = block.firstLine; line < block.endLine; ++line) {
            add(line);
        }
        finish();
    }

    const std::vector<Lines>& found() const { return m_found; }

private:
    void add(std::size_t line)
    {
        const std::string text = trimmedLine(m_source, line).text;
        if (text.empty()) {
            return;
        }
        if (m_current && begins(text)) {
            finish();
        }
        m_current = m_current ? Lines{m_current->first, line} : Lines{line, line};
        m_hasGroup = m_hasGroup || text.find('(') != std::string::npos;
        m_balance += balanceOf(text);
        m_isContinued = text.back() == ':';
    }

    bool begins(const std::string& text) const
    {
        const std::string word = firstWordOf(text);
        if (isDeclarationWord(word)) {
            return !m_isContinued;
        }
        const bool isComplete = m_hasGroup && m_balance <= 0;
        const bool isWord = !word.empty() && word.front() != ')';
        const std::vector<std::string> sections(kSections.begin(), kSections.end());
        const bool isSectionWord = isSection(word) || !nearestName(word, sections).empty();
        return isComplete && isWord && !(m_balance < 0 && isSectionWord) && !isSection(word);
    }

    void finish()
    {
        if (m_current) {
            m_found.push_back(*m_current);
        }
        m_current.reset();
        m_hasGroup = false;
        m_balance = 0;
        m_isContinued = false;
    }

    const Source& m_source;
    std::vector<Lines> m_found;
    std::optional<Lines> m_current;
    std::ptrdiff_t m_balance = 0;
    bool m_hasGroup = false;
    bool m_isContinued = false;
};

class Reader
{
public:
    Reader(
        const Source& source,
        std::shared_ptr<const std::vector<Constant>> constants,
        const std::set<std::string>& operators,
        Diagnostics& out)
        : m_source(source)
        , m_operators(operators)
        , m_out(out)
    {
        m_file.constants = std::move(constants);
    }

    ModelFile read()
    {
        const std::optional<Block> block = findBlock(m_source, 1, "Scenarios", m_out);
        if (!block) {
            if (m_out.all().empty() || m_out.all().back().range.source != &m_source) {
                m_out.add(
                    "no-block",
                    {&m_source, 0, 0},
                    "no line contains 'Scenarios'",
                    "a model file begins with Scenarios {");
            }
            return std::move(m_file);
        }
        m_gathered = gatheredLines(m_source, *block);
        const MeantLines meant(m_source, *block);
        for (const Lines& lines : meant.found()) {
            readDeclaration(lines);
        }
        checkRest(*block);
        takeConstants();
        return std::move(m_file);
    }

private:
    void readDeclaration(const Lines& lines);
    void readModel(const Lines& lines, const PlacedText& text);
    void readConstant(const PlacedText& text);
    void takeConstants();
    bool reportRemark(const Lines& lines, const PlacedText& text);
    void checkRest(const Block& block);

    const Source& m_source;
    const std::set<std::string>& m_operators;
    Diagnostics& m_out;
    std::vector<Lines> m_gathered;
    // Constants that no model has been read after.
    std::vector<Constant> m_newConstants;
    ModelFile m_file;
};

void Reader::readDeclaration(const Lines& lines)
{
    PlacedText text(m_source);
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        const std::size_t begin = m_source.lineStart(line);
        text.joinLine(begin, begin + m_source.lineText(line).size());
    }
    if (reportRemark(lines, text)) {
        return;
    }
    const std::string kind = firstWordOf(std::string(text.text()));
    const std::string near = isDeclarationWord(kind) ? kind : nearestKind(kind);
    if (near == kConstant) {
        if (kind != kConstant) {
            const Range range = text.range(0, kind.size());
            m_out
                .add(
                    "unknown-kind",
                    range,
                    fmt::format("'{}' is no kind of declaration", kind),
                    didYouMean(near))
                .suggestion = near;
        }
        readConstant(text);
        return;
    }
    readModel(lines, text);
}

// A line that is no declaration: the engine takes it for the begin of the next one, or for one of
// an unknown kind.
bool Reader::reportRemark(const Lines& lines, const PlacedText& text)
{
    const bool hasGroup = text.text().find_first_of("()") != std::string_view::npos;
    const auto first = static_cast<unsigned char>(text.text().front());
    const bool isSign = std::isalpha(first) == 0 && first != '\t';
    const std::string word = firstWordOf(std::string(text.text()));
    if (isDeclarationWord(word) || (hasGroup && !isSign)) {
        return false;
    }
    if (hasGroup && (first == '(' || first == ')')) {
        m_out.add(
            "stray-parenthesis", text.range(0, 1), "no declaration begins with a parenthesis");
        return true;
    }
    m_out.add(
        "remark-in-models",
        trimmedLine(m_source, lines.first).range,
        "there are no remarks here: this is taken for the begin of a declaration",
        "remarks stand before the line with Scenarios");
    return true;
}

void Reader::readModel(const Lines& lines, const PlacedText& text)
{
    Model model = ModelParser(text, m_operators, m_out).parse();
    takeConstants();
    model.constants = m_file.constants;
    model.isRead = isModelKind(model.kind.text) &&
                   std::find(m_gathered.begin(), m_gathered.end(), lines) != m_gathered.end();
    m_file.models.push_back(std::move(model));
}

// CONSTANT (NAME NUMBER)
void Reader::readConstant(const PlacedText& text)
{
    const PlacedText body = withoutLeadingBlanks(textAfter(text, '('));
    const PlacedText inside = textBefore(body, ')');
    if (text.text().find('(') == std::string_view::npos || inside.size() == body.size()) {
        const bool isOpen = text.text().find('(') != std::string_view::npos;
        m_out.add(
            isOpen ? "unclosed-parenthesis" : "missing-parenthesis",
            isOpen ? text.range().after() : text.range(kConstant.size(), kConstant.size() + 2),
            isOpen ? "')' is missing" : "'(' is missing");
        return;
    }
    if (text.text().find_first_of("()", text.text().find(')') + 1) != std::string_view::npos) {
        m_out.add("stray-parenthesis", text.range().after(), "there is one ')' too many");
    }
    Constant constant;
    constant.name = textBefore(inside, ' ').word();
    constant.value = firstWord(textAfter(inside, ' ')).word();
    constant.number = stringToDouble(constant.value.text);
    checkConstantValue(constant, m_out);
    m_newConstants.push_back(std::move(constant));
}

// Models share the table between two declarations of constants.
void Reader::takeConstants()
{
    if (m_newConstants.empty()) {
        return;
    }
    auto constants = std::make_shared<std::vector<Constant>>(*m_file.constants);
    constants->insert(constants->end(), m_newConstants.begin(), m_newConstants.end());
    m_newConstants.clear();
    m_file.constants = std::move(constants);
}

// Declarations behind the end of the block.
void Reader::checkRest(const Block& block)
{
    for (std::size_t line = block.endLine + 1; line <= m_source.lineCount(); ++line) {
        const Word text = trimmedLine(m_source, line);
        if (isDeclarationWord(firstWordOf(text.text))) {
            m_out.add(
                "malformed",
                text.range,
                fmt::format("this is not read: the block ended in line {}", block.endLine),
                "a model file has one block, which ends with the first line with '}'");
            return;
        }
    }
}

} // namespace

void checkConstantValue(const Constant& constant, Diagnostics& out)
{
    if (!wholeNumber(constant.value.text)) {
        out.add(
            "constant-value",
            constant.value.range,
            fmt::format("the value of {} is no number, and taken as 0", constant.name.text));
    }
}

ModelFile readModelFile(
    const Source& source,
    std::shared_ptr<const std::vector<Constant>> constants,
    const std::set<std::string>& operators,
    Diagnostics& out)
{
    return Reader(source, std::move(constants), operators, out).read();
}

} // namespace scenariomatch::lint
