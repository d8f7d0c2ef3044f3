#include "engine/SettingsFile.h"

#include "scenario/CParserTool.h"
#include "scenario/TextPieces.h"
#include "types/NumberText.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace scenariomatch
{

namespace
{

// Calls visit(line) for the lines of a block's body and end() at the block's or the text's end,
// block after block.
template <class Visit, class End>
void readBlocks(std::string_view text, std::string_view keyword, Visit&& visit, End&& end)
{
    std::string_view line;
    while (takeLine(text, line)) {
        if (line.find(keyword) == std::string_view::npos) {
            continue;
        }
        while (line.find(',') == std::string_view::npos && takeLine(text, line)) {
        }
        while (takeLine(text, line) && line.find('}') == std::string_view::npos) {
            if (line.find('#') == std::string_view::npos) {
                visit(line);
            }
        }
        end();
    }
}

std::optional<SettingsEntry> entryOf(const std::string& line)
{
    const auto open = line.find('(');
    if (open == std::string::npos) {
        return std::nullopt;
    }
    if (open + 1 == line.size()) {
        throw std::out_of_range("basic_string::substr");
    }
    const std::string argument = line.substr(open + 1);
    return SettingsEntry{line.substr(0, open), argument.substr(0, argument.find(')'))};
}

std::string withoutTrailingBlanks(const std::string& text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// Gathers the lines of an entry until its parentheses balance.
class EntryGatherer
{
public:
    EntryGatherer(std::string fileName, const EntryVisitor& visit)
        : m_fileName(std::move(fileName))
        , m_visit(visit)
    {
    }

    void add(std::string_view line)
    {
        const auto begin = line.find_first_not_of(" \t");
        const auto opened = std::count(line.begin(), line.end(), '(');
        m_hasGroup = m_hasGroup || opened != 0;
        if (!m_hasGroup) {
            return;
        }
        appendLine(m_text, begin == std::string_view::npos ? "" : line.substr(begin));
        m_depth += opened - std::count(line.begin(), line.end(), ')');
        if (m_depth == 0) {
            finish();
        }
    }

    void end()
    {
        if (m_hasGroup) {
            std::cerr << "Error reading file: " << m_fileName << ". The declaration " << keyword()
                      << " is not closed. Check it!\n";
        }
        restart();
    }

private:
    std::string keyword() const
    {
        return withoutTrailingBlanks(m_text.substr(0, m_text.find('(')));
    }

    void finish()
    {
        const auto entry = entryOf(m_text);
        restart();
        if (entry) {
            m_visit(*entry);
        }
    }

    void restart()
    {
        m_text.clear();
        m_depth = 0;
        m_hasGroup = false;
    }

    std::string m_fileName;
    const EntryVisitor& m_visit;
    std::string m_text;
    std::ptrdiff_t m_depth = 0;
    bool m_hasGroup = false;
};

} // namespace

std::string directoryOf(const std::string& fileName)
{
    return fileName.substr(0, fileName.rfind('/') + 1);
}

void readListEntries(const std::string& text, const EntryVisitor& visit)
{
    const auto readLine = [&visit](std::string_view line) {
        std::string word(line);
        removeAllTabulation(word);
        removeAllSpaces(word);
        if (const auto entry = entryOf(word)) {
            visit(*entry);
        }
    };
    readBlocks(text, "List", readLine, [] {});
}

void readEngineEntries(
    const std::string& fileName, const std::string& text, const EntryVisitor& visit)
{
    EntryGatherer gatherer(fileName, visit);
    readBlocks(
        text,
        "Engine",
        [&gatherer](std::string_view line) { gatherer.add(line); },
        [&gatherer] { gatherer.end(); });
}

void readConstantEntries(
    const std::string& text, const std::function<void(const std::string&, double)>& visit)
{
    const auto readLine = [&visit](std::string_view line) {
        std::string entry(line);
        removeAllTabulation(entry);
        removeBeginSpaces(entry);
        const auto open = entry.find('(');
        if (open == std::string::npos) {
            return;
        }
        if (open + 1 == entry.size()) {
            throw std::out_of_range("basic_string::substr");
        }
        const std::string pair = entry.substr(open + 1);
        const auto blank = pair.find(' ');
        std::string value = pair.substr(blank + 1);
        value = value.substr(0, value.find(')'));
        removeAllSpaces(value);
        visit(pair.substr(0, blank), stringToDouble(value));
    };
    readBlocks(text, "EnvVars", readLine, [] {});
}

void appendItems(const std::string& list, std::vector<std::string>& items)
{
    std::string_view rest = list;
    while (true) {
        const auto comma = rest.find(',');
        const std::string item(withoutLeadingBlanks(rest.substr(0, comma)));
        if (!item.empty()) {
            items.push_back(withoutTrailingBlanks(item));
        }
        if (comma == std::string_view::npos) {
            return;
        }
        rest.remove_prefix(comma + 1);
    }
}

} // namespace scenariomatch
