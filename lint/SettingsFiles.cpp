#include "lint/SettingsFiles.h"

#include "lint/Blocks.h"
#include "lint/ModelFile.h"
#include "lint/NearNames.h"
#include "types/NumberText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fmt/format.h>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace scenariomatch::lint
{

namespace
{

using Keywords = std::span<const std::string_view>;

constexpr std::array<std::string_view, 2> kListKeywords = {"includeScenario", "includeEngine"};
constexpr std::array<std::string_view, 3> kEngineKeywords = {
    "EnvVars", "UsedModels", "InterestedObjects"};

bool isOneOf(std::string_view word, Keywords keywords)
{
    return std::find(keywords.begin(), keywords.end(), word) != keywords.end();
}

// Visits the lines of all blocks of a file that are no remarks and not empty, block after block.
void visitLines(
    const Source& source,
    std::string_view keyword,
    Diagnostics& out,
    const std::function<void(const Word&)>& visit,
    const std::function<void()>& end)
{
    std::size_t line = 1;
    bool isFirst = true;
    while (const std::optional<Block> block = findBlock(source, line, keyword, out)) {
        isFirst = false;
        for (line = block->firstLine; line < block->endLine; ++line) {
            const Word text = trimmedLine(source, line);
            if (!text.text.empty() && text.text.find('#') == std::string::npos) {
                visit(text);
            }
        }
        end();
        line = block->endLine + 1;
    }
    const bool isReported = !out.all().empty() && out.all().back().range.source == &source;
    if (isFirst && !isReported) {
        out.add("no-block", {&source, 0, 0}, fmt::format("no line contains '{}'", keyword));
    }
}

Range partOf(const Word& word, std::size_t begin, std::size_t end)
{
    return {word.range.source, word.range.begin + begin, word.range.begin + end};
}

Word sliceOf(const Word& word, std::size_t begin, std::size_t end)
{
    return {word.text.substr(begin, end - begin), partOf(word, begin, end)};
}

void reportKeyword(const Word& keyword, Keywords keywords, Diagnostics& out)
{
    const std::vector<std::string> candidates(keywords.begin(), keywords.end());
    const std::string near = nearestName(keyword.text, candidates);
    out.add(
           "unknown-keyword",
           keyword.range,
           fmt::format("'{}' is no keyword here, and is passed over", keyword.text),
           didYouMean(near))
        .suggestion = near;
}

Word withoutBlanks(const Word& word)
{
    const std::size_t begin = std::min(word.text.find_first_not_of(" \t"), word.text.size());
    return sliceOf(word, begin, word.text.find_last_not_of(" \t") + 1);
}

// Reports where the reader cuts an entry; what was meant is read all the same.
void checkListLine(const Word& line, Diagnostics& out)
{
    const std::size_t blank = line.text.find_first_of(" \t");
    const std::size_t close = line.text.find(')');
    const std::size_t start = line.range.begin;
    const std::string& file = line.range.source->text();
    const std::size_t lineBegin = file.rfind('\n', start == 0 ? 0 : start - 1) + 1;
    const std::string_view indent = std::string_view(file).substr(lineBegin, start - lineBegin);
    const bool isIndentCut = indent.find('\t') > 0 && indent.find(" \t") != std::string_view::npos;
    if (isIndentCut || (blank != std::string::npos && blank < close)) {
        out.add(
            "entry-cut",
            isIndentCut ? Range{line.range.source, lineBegin, start}
                        : partOf(line, blank, blank + 1),
            "the entry is cut at this blank or tab",
            "write the entry without blanks and tabs");
    }
}

// The keyword that a line begins with, when its "(" is missing.
std::string_view joinedKeyword(std::string_view line, Keywords keywords)
{
    for (const std::string_view keyword : keywords) {
        if (line.starts_with(keyword)) {
            return keyword;
        }
    }
    return {};
}

bool reportNoGroup(const Word& line, Keywords keywords, Diagnostics& out)
{
    const std::string_view keyword = joinedKeyword(line.text, keywords);
    if (keyword.empty()) {
        out.add("malformed", line.range, "this is no entry: KEYWORD(...)");
    } else {
        const std::size_t place = keyword.size();
        out.add("missing-parenthesis", partOf(line, place, place + 1), "'(' is missing");
    }
    return false;
}

class SettingsReader
{
public:
    explicit SettingsReader(Diagnostics& out)
        : m_out(out)
    {
    }

    void add(const Word& line)
    {
        const std::size_t open = line.text.find('(');
        if (m_isOpen && isOneOf(wordBefore(line.text, open), kEngineKeywords)) {
            reportUnclosed();
        }
        if (!m_isOpen && open == std::string::npos) {
            reportNoGroup(line, kEngineKeywords, m_out);
            return;
        }
        m_text = m_isOpen
                     ? Word{m_text.text, {m_text.range.source, m_text.range.begin, line.range.end}}
                     : line;
        m_text.text = m_text.range.source->text().substr(
            m_text.range.begin, m_text.range.end - m_text.range.begin);
        m_isOpen = true;
        const auto balance = std::count(m_text.text.begin(), m_text.text.end(), '(') -
                             std::count(m_text.text.begin(), m_text.text.end(), ')');
        if (balance < 0) {
            m_out.add(
                "stray-parenthesis",
                partOf(line, line.text.rfind(')'), line.text.rfind(')') + 1),
                "there is one ')' too many");
        }
        if (balance <= 0) {
            finish();
        }
    }

    void end()
    {
        if (m_isOpen) {
            reportUnclosed();
        }
    }

    std::vector<SettingsEntry> take() { return std::move(m_entries); }

private:
    static std::string_view wordBefore(std::string_view text, std::size_t end)
    {
        return end == std::string_view::npos ? std::string_view() : text.substr(0, end);
    }

    void reportUnclosed()
    {
        m_out.add("unclosed-parenthesis", m_text.range.after(), "')' is missing");
        m_text.text += ')';
        finish();
    }

    void finish()
    {
        m_isOpen = false;
        const std::size_t open = m_text.text.find('(');
        const std::size_t close = std::min(m_text.text.find(')'), m_text.text.size());
        SettingsEntry entry = {sliceOf(m_text, 0, open), sliceOf(m_text, open + 1, close)};
        const std::size_t end = entry.keyword.text.find_last_not_of(" \t") + 1;
        if (end != entry.keyword.text.size()) {
            m_out.add(
                "entry-cut",
                partOf(entry.keyword, end, entry.keyword.text.size()),
                fmt::format("the blank makes '{}' another word", entry.keyword.text.substr(0, end)),
                fmt::format("write {}(", entry.keyword.text.substr(0, end)));
            entry.keyword = sliceOf(entry.keyword, 0, end);
        }
        if (!isOneOf(entry.keyword.text, kEngineKeywords)) {
            reportKeyword(entry.keyword, kEngineKeywords, m_out);
            const std::vector<std::string> known(kEngineKeywords.begin(), kEngineKeywords.end());
            entry.keyword.text = nearestName(entry.keyword.text, known);
        }
        m_entries.push_back(std::move(entry));
    }

    Diagnostics& m_out;
    std::vector<SettingsEntry> m_entries;
    Word m_text;
    bool m_isOpen = false;
};

std::optional<Constant> constantOf(const Word& line, Diagnostics& out)
{
    const std::size_t open = line.text.find('(');
    const std::size_t close = line.text.find(')', open == std::string::npos ? 0 : open);
    if (open == std::string::npos || close == std::string::npos) {
        const bool isOpen = open != std::string::npos;
        const std::size_t word = line.text.find_first_of(" \t");
        const std::size_t place = word == std::string::npos ? line.text.size() : word + 1;
        out.add(
            isOpen ? "unclosed-parenthesis" : "missing-parenthesis",
            isOpen ? line.range.after() : partOf(line, place, place + 1),
            isOpen ? "')' is missing" : "'(' is missing");
        return std::nullopt;
    }
    if (const std::size_t tab = line.text.find('\t'); tab < close) {
        out.add("tab", partOf(line, tab, tab + 1), "the line is cut at this tab", "write blanks");
        return std::nullopt;
    }
    const Word inside = sliceOf(line, open + 1, close);
    const std::size_t blank = inside.text.find(' ');
    if (blank == std::string::npos || blank == 0) {
        out.add("malformed", inside.range, "a name, a blank and a number are expected here");
        return std::nullopt;
    }
    const std::size_t begin =
        std::min(inside.text.find_first_not_of(' ', blank), inside.text.size());
    const std::size_t end = std::min(inside.text.find(' ', begin), inside.text.size());
    Constant constant = {sliceOf(inside, 0, blank), sliceOf(inside, begin, end), 0.0};
    constant.number = stringToDouble(constant.value.text);
    return constant;
}

} // namespace

std::vector<SettingsEntry> readEngineFile(const Source& source, Diagnostics& out)
{
    std::vector<SettingsEntry> entries;
    const auto visit = [&](const Word& line) {
        const std::size_t open = line.text.find('(');
        if (open == std::string::npos) {
            reportNoGroup(line, kListKeywords, out);
            return;
        }
        checkListLine(line, out);
        const std::size_t close = std::min(line.text.find(')'), line.text.size());
        if (close == line.text.size()) {
            out.add("unclosed-parenthesis", line.range.after(), "')' is missing");
        }
        SettingsEntry entry = {
            withoutBlanks(sliceOf(line, 0, open)), withoutBlanks(sliceOf(line, open + 1, close))};
        if (!isOneOf(entry.keyword.text, kListKeywords)) {
            reportKeyword(entry.keyword, kListKeywords, out);
            const std::vector<std::string> known(kListKeywords.begin(), kListKeywords.end());
            entry.keyword.text = nearestName(entry.keyword.text, known);
        }
        entries.push_back(std::move(entry));
    };
    visitLines(source, "List", out, visit, [] {});
    return entries;
}

std::vector<SettingsEntry> readSettingsFile(const Source& source, Diagnostics& out)
{
    SettingsReader reader(out);
    visitLines(
        source, "Engine", out, [&](const Word& line) { reader.add(line); }, [&] { reader.end(); });
    return reader.take();
}

std::vector<Constant> readConstantsFile(const Source& source, Diagnostics& out)
{
    std::vector<Constant> constants;
    const auto visit = [&](const Word& line) {
        if (auto constant = constantOf(line, out)) {
            checkConstantValue(*constant, out);
            constants.push_back(*std::move(constant));
        }
    };
    visitLines(source, "EnvVars", out, visit, [] {});
    return constants;
}

std::vector<Word> itemsOf(const Word& list)
{
    std::vector<Word> items;
    std::size_t begin = 0;
    while (begin <= list.text.size()) {
        const std::size_t comma = std::min(list.text.find(',', begin), list.text.size());
        const std::size_t first = std::min(list.text.find_first_not_of(" \t\r\n", begin), comma);
        if (first != comma) {
            const std::size_t last = list.text.find_last_not_of(" \t\r\n", comma - 1) + 1;
            items.push_back(sliceOf(list, first, last));
        }
        begin = comma + 1;
    }
    return items;
}

} // namespace scenariomatch::lint
