#include "app/Oddities.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

std::vector<OddityText> texts()
{
    std::vector<OddityText> all;
    for (std::size_t i = 0; i < kOddities; ++i) {
        all.push_back(textOf(static_cast<Oddity>(i)));
    }
    return all;
}

// The rows of the table in the document that begin with a name of an oddity.
std::vector<std::string> rowsOfTheDocument()
{
    std::ifstream document(SCENARIOMATCH_TEST_DATA "/../../docs/statistics.md");
    std::vector<std::string> rows;
    bool isInTable = false;
    for (std::string line; std::getline(document, line);) {
        isInTable = line.rfind("| name | severity |", 0) == 0 || (isInTable && !line.empty());
        if (isInTable && line.rfind("| `", 0) == 0) {
            rows.push_back(line);
        }
    }
    return rows;
}

std::string rowOf(const OddityText& text)
{
    std::ostringstream row;
    row << "| `" << text.name << "` | " << nameOf(text.severity) << " | " << text.many << " | "
        << text.advice << " |";
    return row.str();
}

} // namespace

TEST(Oddities, HaveANameOfTheirOwnThatFitsTheColumn)
{
    std::set<std::string_view> names;
    for (const OddityText& text : texts()) {
        EXPECT_TRUE(names.insert(text.name).second) << text.name;
        EXPECT_LE(text.name.size(), 20U) << text.name;
        for (const char letter : text.name) {
            EXPECT_TRUE(letter == '-' || (letter >= 'a' && letter <= 'z')) << text.name;
        }
    }
}

TEST(Oddities, AreCountedInWordsAndAdviseInOneSentence)
{
    for (const OddityText& text : texts()) {
        ASSERT_FALSE(text.advice.empty()) << text.name;
        EXPECT_NE(std::isupper(static_cast<unsigned char>(text.advice.front())), 0) << text.name;
        EXPECT_EQ(text.advice.back(), '.') << text.name;
        EXPECT_EQ(text.advice.find(". "), std::string_view::npos) << text.name;
        EXPECT_FALSE(text.one.empty()) << text.name;
        EXPECT_NE(text.one, text.many) << text.name;
    }
}

TEST(Oddities, AreInTheDocumentAsInTheTable)
{
    std::vector<std::string> rows;
    for (const OddityText& text : texts()) {
        rows.push_back(rowOf(text));
    }
    EXPECT_EQ(rowsOfTheDocument(), rows);
}

TEST(Oddities, AreVisitedWhereTheyWereMet)
{
    OddityCounts counts;
    counts.add(Oddity::CandidateCut);
    counts.add(Oddity::Malformed, 3);
    counts.add(Oddity::Untracked, 0);
    std::vector<std::string> seen;
    counts.visit([&seen](Oddity oddity, std::uint64_t count) {
        seen.push_back(std::string(textOf(oddity).name) + " " + std::to_string(count));
    });
    EXPECT_EQ(seen, (std::vector<std::string>{"malformed 3", "candidate-cut 1"}));
    EXPECT_EQ(counts.of(Oddity::Malformed), 3U);
}

} // namespace scenariomatch
