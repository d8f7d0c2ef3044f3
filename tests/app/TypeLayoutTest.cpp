#include "app/TypeLayout.h"

#include "types/CAllClasses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

// The text of a range as the reader joins it.
std::string lettersOf(const lint::Range& range)
{
    std::string text = range.source->text().substr(range.begin, range.end - range.begin);
    std::erase(text, '\n');
    return text;
}

std::vector<std::string> lettersOf(const std::vector<lint::Range>& ranges)
{
    std::vector<std::string> texts(ranges.size());
    std::transform(ranges.begin(), ranges.end(), texts.begin(), [](const lint::Range& range) {
        return lettersOf(range);
    });
    return texts;
}

// "LINE:COLUMN: text" of everything that the first type of a text lacks.
std::vector<std::string> lossesIn(const std::string& text)
{
    const lint::Source source("objects.txt", text);
    CAllClasses types;
    types.readText(text);
    std::vector<std::string> losses;
    for (const PlacedFault& loss :
         layoutOf(source, static_cast<std::size_t>(types.m_classes.at(0).m_line)).losses) {
        const lint::Place place = loss.range.place();
        losses.push_back(fmt::format("{}:{}: {}", place.line, place.column, lettersOf(loss.range)));
    }
    return losses;
}

// Where layouts and what the reader has read differ, the text.
std::string differenceIn(const std::string& text)
{
    const lint::Source source("objects.txt", text);
    CAllClasses types;
    types.readText(text);
    const auto isLikeLayout = [&source](const CClass& type) {
        const TypeLayout layout = layoutOf(source, static_cast<std::size_t>(type.m_line));
        const bool hasParent = layout.parent.begin != layout.name.begin;
        return lettersOf(layout.name) == type.m_name &&
               (!hasParent || lettersOf(layout.parent) == type.m_parent) &&
               lettersOf(layout.attributeTypes) == type.m_attributeTypes &&
               lettersOf(layout.attributeNames) == type.m_attributeNames;
    };
    return std::all_of(types.m_classes.begin(), types.m_classes.end(), isLikeLayout) ? "" : text;
}

} // namespace

TEST(TypeLayout, KnowsWhereThePartsStand)
{
    const lint::Source source(
        "objects.txt", "# Cars\nclass Car:Mobile {\nconstant false;\n3DDPOINT  At;\n}\n");
    const TypeLayout layout = layoutOf(source, 2);
    EXPECT_EQ(layout.name.begin, 13U);
    EXPECT_EQ(lettersOf(layout.name), "Car");
    EXPECT_EQ(lettersOf(layout.parent), "Mobile");
    EXPECT_THAT(lettersOf(layout.attributeTypes), ElementsAre("3DDPOINT"));
    EXPECT_THAT(lettersOf(layout.attributeNames), ElementsAre("At"));
    EXPECT_EQ(layout.attributeNames.front().place().line, 4U);
    EXPECT_EQ(layout.attributeNames.front().place().column, 11U);
    EXPECT_THAT(layout.losses, IsEmpty());
}

TEST(TypeLayout, LosesNothingOfWhatIsWellWritten)
{
    EXPECT_THAT(lossesIn("class Car {constant true;}"), IsEmpty());
    EXPECT_THAT(
        lossesIn("class Car\r\n{\r\n constant  false;\r\n INT  A; INT B;\r\n } remark\r\n"),
        IsEmpty());
}

TEST(TypeLayout, LosesWhatStandsInTheHead)
{
    EXPECT_THAT(
        lossesIn("class Car : Vehicle {\nconstant true;\n}\n"), ElementsAre("1:11: : Vehicle"));
    EXPECT_THAT(lossesIn("class  Car {\nconstant true;\n}\n"), ElementsAre("1:8: Car"));
    EXPECT_THAT(
        lossesIn("class Car\nconstant true;\nINT Age;\n}\n"),
        ElementsAre("2:10: true;INT Age;}", "1:7: Carconstant"));
}

TEST(TypeLayout, LosesTheTypeBehindARemarkThatOpensOne)
{
    EXPECT_THAT(
        lossesIn("All classes are here:\nclass Car {\nconstant true;\n}\n"),
        ElementsAre("1:1: All"));
    EXPECT_THAT(lossesIn("class\tCar {\nconstant true;\n}\n"), ElementsAre("1:1: class\tCar"));
}

TEST(TypeLayout, LosesAStatementInPlaceOfTheFirst)
{
    EXPECT_THAT(lossesIn("class Car {\nINT Age;\nINT B;\n}\n"), ElementsAre("2:1: INT Age"));
    EXPECT_THAT(lossesIn("class Car {\nconstant flase;\n}\n"), ElementsAre("2:1: constant flase"));
    EXPECT_THAT(lossesIn("class Car {\nconstant true ;\n}\n"), ElementsAre("2:1: constant true "));
    EXPECT_THAT(
        lossesIn("class Car {\nconstant;\nINT Age;\n}\n"), ElementsAre("2:1: constant;INT Age"));
    EXPECT_THAT(lossesIn("class Car {\nconstant true\n}\n"), ElementsAre("2:1: constant true}"));
    EXPECT_THAT(lossesIn("class Car {\n}\n"), ElementsAre("1:7: Car"));
    EXPECT_THAT(lossesIn("class Car {}"), ElementsAre("1:7: Car"));
}

TEST(TypeLayout, LosesAnAttributeWithoutItsEnd)
{
    EXPECT_THAT(
        lossesIn("class Car {\nconstant true;\nINT A;\n INT B\n}\n"), ElementsAre("4:2: INT B"));
    EXPECT_THAT(lossesIn("class Car {\nconstant true;\nINT B }\n"), ElementsAre("3:1: INT B"));
}

TEST(TypeLayout, LosesATypeInAnotherOne)
{
    EXPECT_THAT(
        lossesIn("class Car {\nconstant true;\nclass Bus {\nconstant true;\n}\n"),
        ElementsAre("3:1: class Bus {constant true"));
    EXPECT_THAT(
        lossesIn("class Car {\nconstant true;\n} class Bus {\nconstant true;\n}\n"),
        ElementsAre("3:3: class Bus {"));
    EXPECT_THAT(
        lossesIn("class Car { constant true; } class Bus { constant true; }\n"),
        ElementsAre("1:28: } class Bus { constant true"));
    EXPECT_THAT(lossesIn("class Car {\nconstant true;\nINT A;\n"), ElementsAre("3:7: "));
}

TEST(TypeLayout, ReadsWhateverTheReaderReads)
{
    constexpr std::array<std::string_view, 14> kPieces{
        "class ",
        "class",
        "Car",
        ":",
        " ",
        "{",
        "}",
        "\n",
        ";",
        "constant ",
        "true;",
        "INT ",
        "Age;",
        "\t"};
    std::mt19937 random(4); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts every time
    for (int i = 0; i < 20'000; ++i) {
        std::string text = "class ";
        for (auto pieces = random() % 24; pieces > 0; --pieces) {
            text += kPieces.at(random() % kPieces.size());
        }
        ASSERT_EQ(differenceIn(text), "");
    }
}

} // namespace scenariomatch
