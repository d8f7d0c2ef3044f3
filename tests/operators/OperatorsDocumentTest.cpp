// The tables of docs/operators.md are made from what the operators say about themselves. After a
// change of an operator, run this program with SCENARIOMATCH_WRITE_DOCUMENTS=1 to write them anew.

#include "LoadedOperators.h"
#include "operators/comparison/Comparison.h"
#include "operators/Values.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

constexpr const char* kBegin = "<!-- tables: begin -->\n";
constexpr const char* kEnd = "<!-- tables: end -->\n";
constexpr const char* kDocument = CS_SOURCE_FOLDER "/docs/operators.md";

std::string readDocument()
{
    std::ifstream file(kDocument);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// One word for the lists of types that come again and again; the document explains them.
std::string typesInWords(const std::vector<std::string>& types)
{
    const std::vector<std::pair<std::vector<std::string>, std::string>> words{
        {numberTypes(), "number"},
        {pointTypes(), "point"},
        {placeTypes(), "place"},
        {orderedTypes(), "ordered"},
        {equalityTypes(), "comparable"},
        {anyTypes(), "any"}};
    for (const auto& [known, word] : words) {
        if (types == known) {
            return word;
        }
    }
    std::string joined;
    for (const std::string& type : types) {
        joined += (joined.empty() ? "" : " or ") + type;
    }
    return joined;
}

// In brackets what may be left out; several of the same at the end as "up to 8".
std::string argumentsInWords(const CSOperatorDescription& description)
{
    constexpr std::size_t kTooMany = 4;
    const std::size_t count = description.m_arguments.size();
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string types = typesInWords(description.m_arguments[i]);
        if (i == description.m_requiredArguments && count > kTooMany) {
            return text + ", ... (up to " + std::to_string(count) + ")";
        }
        text += (i > 0 ? ", " : "");
        text += i < description.m_requiredArguments ? types : "[" + types + "]";
    }
    return text;
}

std::string endsFirstInWords(const CSOperatorDescription& description)
{
    if (!description.m_endsFirst) {
        return "";
    }
    return *description.m_endsFirst == 0 ? " The first ends first." : " The second ends first.";
}

std::string row(const CSOperatorInterfaceAbstract& op)
{
    const CSOperatorDescription description = op.describe();
    const std::string result = description.m_result.empty() ? "as given" : description.m_result;
    return "| `" + op.m_name + "` | " + argumentsInWords(description) + " | " + result + " | " +
           description.m_summary + endsFirstInWords(description) + " |\n";
}

std::string tables()
{
    std::string text;
    std::string family;
    for (const LoadedOperator& loaded : loadedOperators()) {
        if (loaded.family != family) {
            family = loaded.family;
            text += "\n### " + family + "\n\n| name | arguments | result | meaning |\n";
            text += "| --- | --- | --- | --- |\n";
        }
        text += row(*loaded.object);
    }
    return text + "\n";
}

} // namespace

TEST(OperatorsDocument, HoldsTheTablesOfTheDescriptions)
{
    const std::string document = readDocument();
    const std::size_t begin = document.find(kBegin);
    const std::size_t end = document.find(kEnd);
    ASSERT_NE(begin, std::string::npos);
    ASSERT_NE(end, std::string::npos);
    const std::size_t first = begin + std::string(kBegin).size();
    if (std::getenv("SCENARIOMATCH_WRITE_DOCUMENTS") != nullptr) {
        std::ofstream(kDocument) << document.substr(0, first) << tables() << document.substr(end);
        return;
    }
    EXPECT_EQ(document.substr(first, end - first), tables());
}

} // namespace scenariomatch
