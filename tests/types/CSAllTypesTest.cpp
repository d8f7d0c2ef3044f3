#include "types/CSAllTypes.h"

#include "CapturedStream.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{
namespace
{

using Value = std::shared_ptr<CSBasicType>;

template <class T>
std::string printed(const T& value)
{
    std::ostringstream out;
    out << value;
    return out.str();
}

CS3DIPoint wholePoint3D(int x, int y, int z)
{
    CS3DIPoint point;
    point.m_x = x;
    point.m_y = y;
    point.m_z = z;
    return point;
}

CS2DIPoint wholePoint2D(int x, int y)
{
    CS2DIPoint point;
    point.m_x = x;
    point.m_y = y;
    return point;
}

CS3DDPoints pointList(const std::vector<CS3DDPoint>& points)
{
    CS3DDPoints list;
    for (const CS3DDPoint& point : points) {
        list.addPoint(point);
    }
    return list;
}

// The same value of the class twice, and one that differs from it in every comparable way.
struct Pair
{
    Value value;
    Value same;
    Value other;
};

std::vector<Pair> comparablePairs()
{
    const auto start = std::make_shared<CSTimeStamp>(1, 10.0, 0.0);
    const auto end = std::make_shared<CSTimeStamp>(2, 11.0, 0.0);
    return {
        {std::make_shared<CSInt>(3), std::make_shared<CSInt>(3), std::make_shared<CSInt>(4)},
        {std::make_shared<CS3DDPoint>(1, 2, 3),
         std::make_shared<CS3DDPoint>(1, 2, 3),
         std::make_shared<CS3DDPoint>(1, 2, 4)},
        {std::make_shared<CSBool>(true),
         std::make_shared<CSBool>(true, 0.1),
         std::make_shared<CSBool>(false)},
        {std::make_shared<CSString>("a"),
         std::make_shared<CSString>("a"),
         std::make_shared<CSString>("A")},
        {std::make_shared<CSDouble>(0.5),
         std::make_shared<CSDouble>(0.5),
         std::make_shared<CSDouble>(0.25)},
        {std::make_shared<CS3DIPoint>(wholePoint3D(1, 2, 3)),
         std::make_shared<CS3DIPoint>(wholePoint3D(1, 2, 3)),
         std::make_shared<CS3DIPoint>(wholePoint3D(1, 2, 4))},
        {std::make_shared<CS2DDPoint>(1, 2),
         std::make_shared<CS2DDPoint>(1, 2),
         std::make_shared<CS2DDPoint>(1, 3)},
        {std::make_shared<CS2DIPoint>(wholePoint2D(1, 2)),
         std::make_shared<CS2DIPoint>(wholePoint2D(1, 2)),
         std::make_shared<CS2DIPoint>(wholePoint2D(1, 3))},
        {std::make_shared<CSTimeStamp>(1, 10.0, 0.0),
         std::make_shared<CSTimeStamp>(2, 10.0, 0.0),
         std::make_shared<CSTimeStamp>(1, 10.0, 1.0)},
        {std::make_shared<CSInterval>(start, end),
         std::make_shared<CSInterval>(start, end),
         std::make_shared<CSInterval>(end, start)},
        {std::make_shared<CS3DDPoints>(pointList({{1, 2, 3}})),
         std::make_shared<CS3DDPoints>(pointList({{1, 2, 3}})),
         std::make_shared<CS3DDPoints>(pointList({{1, 2, 3}, {1, 2, 3}}))},
    };
}

// A value with a base part that differs from every default.
CSBasicType markedSource()
{
    CSBasicType source("PLAN");
    source.m_confidence = 0.25;
    source.m_flag = true;
    source.m_frame = 9;
    source.m_history[4] = std::make_shared<CSInt>(1);
    return source;
}

void expectBasePartOf(const CSBasicType& source, const CSBasicType& converted)
{
    EXPECT_EQ(converted.m_type, source.m_type);
    EXPECT_EQ(converted.m_confidence, source.m_confidence);
    EXPECT_EQ(converted.m_flag, source.m_flag);
    EXPECT_EQ(converted.m_history, source.m_history);
    EXPECT_EQ(converted.m_frame, 0);
}

TEST(CSBool, IsFalseByDefault)
{
    const CSBool value;
    EXPECT_EQ(value.m_type, "BOOL");
    EXPECT_FALSE(value.m_value);
    EXPECT_EQ(value.m_confidence, 1.0);
}

TEST(CSBool, TakesValueAndConfidence)
{
    EXPECT_TRUE(CSBool(true).m_value);
    EXPECT_EQ(CSBool(true).m_confidence, 1.0);
    const CSBool unsure(true, 0.3);
    EXPECT_EQ(unsure.m_type, "BOOL");
    EXPECT_TRUE(unsure.m_value);
    EXPECT_EQ(unsure.m_confidence, 0.3);
}

TEST(CSBool, ComparesValuesNotConfidences)
{
    EXPECT_TRUE(CSBool(true, 0.2) == CSBool(true, 0.9));
    EXPECT_FALSE(CSBool(true, 0.2) != CSBool(true, 0.9));
    EXPECT_FALSE(CSBool(true) == CSBool(false));
    EXPECT_TRUE(CSBool(true) != CSBool(false));
}

TEST(CSBool, PrintsValueAndConfidence)
{
    EXPECT_EQ(printed(CSBool(true, 0.2)), "1 [0.2]");
    EXPECT_EQ(printed(CSBool(true, 0.9)), "1 [0.9]");
    EXPECT_EQ(printed(CSBool()), "0 [1]");
}

TEST(CSBool, TakesOverTheBasePartByConversion)
{
    const CSBasicType source = markedSource();
    const CSBool converted(source);
    expectBasePartOf(source, converted);
    EXPECT_FALSE(converted.m_value);
}

TEST(CSString, IsEmptyByDefault)
{
    EXPECT_EQ(CSString().m_type, "STRING");
    EXPECT_EQ(CSString().m_value, "");
    EXPECT_EQ(CSString("text").m_type, "STRING");
    EXPECT_EQ(CSString("text").m_value, "text");
}

TEST(CSString, ComparesByteForByte)
{
    using namespace std::string_literals;
    EXPECT_TRUE(CSString("bag") == CSString("bag"));
    EXPECT_FALSE(CSString("bag") != CSString("bag"));
    EXPECT_FALSE(CSString("bag") == CSString("Bag"));
    EXPECT_TRUE(CSString("bag") != CSString("bag "));
    EXPECT_FALSE(CSString("a\0b"s) == CSString("a\0c"s));
}

TEST(CSString, PrintsWithoutQuotes)
{
    EXPECT_EQ(printed(CSString("a bag")), "a bag");
}

TEST(CSString, TakesOverTheBasePartByConversion)
{
    const CSBasicType source = markedSource();
    const CSString converted(source);
    expectBasePartOf(source, converted);
    EXPECT_EQ(converted.m_value, "");
    CSString text("kept");
    const CSString fromText(static_cast<const CSBasicType&>(text));
    EXPECT_EQ(fromText.m_type, "STRING");
    EXPECT_EQ(fromText.m_value, "");
}

TEST(CSInt, IsMinusOneByDefault)
{
    EXPECT_EQ(CSInt().m_type, "INT");
    EXPECT_EQ(CSInt().m_value, -1);
    EXPECT_EQ(CSInt(7).m_type, "INT");
    EXPECT_EQ(CSInt(7).m_value, 7);
}

TEST(CSInt, ComparesAndPrintsTheNumber)
{
    EXPECT_TRUE(CSInt(7) == CSInt(7));
    EXPECT_FALSE(CSInt(7) != CSInt(7));
    EXPECT_FALSE(CSInt(7) == CSInt(8));
    EXPECT_TRUE(CSInt(7) != CSInt(8));
    EXPECT_EQ(printed(CSInt(-7)), "-7");
}

TEST(CSInt, TakesOverTheBasePartByConversion)
{
    const CSInt converted(static_cast<const CSBasicType&>(CSDouble(2.5)));
    EXPECT_EQ(converted.m_type, "DOUBLE");
    EXPECT_EQ(converted.m_value, -1);
    const CSBasicType source = markedSource();
    expectBasePartOf(source, CSInt(source));
}

TEST(CSDouble, IsMinusOneByDefault)
{
    EXPECT_EQ(CSDouble().m_type, "DOUBLE");
    EXPECT_EQ(CSDouble().m_value, -1.0);
    EXPECT_EQ(CSDouble(2.5).m_type, "DOUBLE");
    EXPECT_EQ(CSDouble(2.5).m_value, 2.5);
}

TEST(CSDouble, ComparesExactly)
{
    EXPECT_TRUE(CSDouble(0.3) == CSDouble(0.3));
    EXPECT_FALSE(CSDouble(0.1 + 0.2) == CSDouble(0.3));
    EXPECT_TRUE(CSDouble(0.1 + 0.2) != CSDouble(0.3));
    EXPECT_TRUE(CSDouble(0.0) == CSDouble(-0.0));
    EXPECT_FALSE(CSDouble(NAN) == CSDouble(NAN));
    EXPECT_TRUE(CSDouble(NAN) != CSDouble(NAN));
}

TEST(CSDouble, PrintsInTheStreamsFormat)
{
    EXPECT_EQ(printed(CSDouble(1.0 / 3.0)), "0.333333");
    EXPECT_EQ(printed(CSDouble(1234567.0)), "1.23457e+06");
    std::ostringstream exact;
    exact.precision(10);
    exact << CSDouble(1234567.0);
    EXPECT_EQ(exact.str(), "1234567");
}

TEST(CSDouble, TakesOverTheBasePartByConversion)
{
    const CSBasicType source = markedSource();
    const CSDouble converted(source);
    expectBasePartOf(source, converted);
    EXPECT_EQ(converted.m_value, -1.0);
}

TEST(CS3DDPoint, IsZeroByDefault)
{
    const CS3DDPoint point;
    EXPECT_EQ(point.m_type, "3DDPOINT");
    EXPECT_EQ(point.m_x, 0.0);
    EXPECT_EQ(point.m_y, 0.0);
    EXPECT_EQ(point.m_z, 0.0);
}

TEST(CS3DDPoint, ComparesEachCoordinateExactly)
{
    const CS3DDPoint point(1, 2, 3);
    EXPECT_EQ(point.m_type, "3DDPOINT");
    EXPECT_TRUE(point == CS3DDPoint(1, 2, 3));
    EXPECT_FALSE(point != CS3DDPoint(1, 2, 3));
    EXPECT_TRUE(point != CS3DDPoint(0, 2, 3));
    EXPECT_TRUE(point != CS3DDPoint(1, 0, 3));
    EXPECT_TRUE(point != CS3DDPoint(1, 2, 0));
    EXPECT_FALSE(CS3DDPoint(1, NAN, 3) == CS3DDPoint(1, NAN, 3));
}

TEST(CS3DDPoint, PrintsWithATrailingBlank)
{
    EXPECT_EQ(printed(CS3DDPoint(1.5, -2, 3)), "1.5 -2 3 ");
}

TEST(CS3DDPoint, TakesOverTheBasePartByConversion)
{
    const CSBasicType source = markedSource();
    const CS3DDPoint converted(source);
    expectBasePartOf(source, converted);
    EXPECT_EQ(converted.m_x, 0.0);
}

TEST(CS3DIPoint, IsZeroByDefault)
{
    const CS3DIPoint point;
    EXPECT_EQ(point.m_type, "3DIPOINT");
    EXPECT_EQ(point.m_x, 0);
    EXPECT_EQ(point.m_y, 0);
    EXPECT_EQ(point.m_z, 0);
}

TEST(CS3DIPoint, ComparesEachCoordinateAndPrintsWithATrailingBlank)
{
    const CS3DIPoint point = wholePoint3D(1, 2, 3);
    EXPECT_TRUE(point == wholePoint3D(1, 2, 3));
    EXPECT_FALSE(point != wholePoint3D(1, 2, 3));
    EXPECT_TRUE(point != wholePoint3D(0, 2, 3));
    EXPECT_TRUE(point != wholePoint3D(1, 0, 3));
    EXPECT_TRUE(point != wholePoint3D(1, 2, 0));
    EXPECT_EQ(printed(point), "1 2 3 ");
}

TEST(CS3DIPoint, TakesOverTheBasePartByConversion)
{
    const CSBasicType source = markedSource();
    expectBasePartOf(source, CS3DIPoint(source));
}

TEST(CS2DDPoint, IsZeroByDefault)
{
    const CS2DDPoint point;
    EXPECT_EQ(point.m_type, "2DDPOINT");
    EXPECT_EQ(point.m_x, 0.0);
    EXPECT_EQ(point.m_y, 0.0);
}

TEST(CS2DDPoint, ComparesEachCoordinateAndPrintsWithATrailingBlank)
{
    const CS2DDPoint point(1.5, 2);
    EXPECT_EQ(point.m_type, "2DDPOINT");
    EXPECT_TRUE(point == CS2DDPoint(1.5, 2));
    EXPECT_FALSE(point != CS2DDPoint(1.5, 2));
    EXPECT_TRUE(point != CS2DDPoint(0, 2));
    EXPECT_TRUE(point != CS2DDPoint(1.5, 0));
    EXPECT_FALSE(CS2DDPoint(NAN, 2) == CS2DDPoint(NAN, 2));
    EXPECT_EQ(printed(point), "1.5 2 ");
}

TEST(CS2DDPoint, TakesOverTheBasePartByConversion)
{
    const CSBasicType source = markedSource();
    expectBasePartOf(source, CS2DDPoint(source));
}

TEST(CS2DIPoint, IsZeroByDefault)
{
    const CS2DIPoint point;
    EXPECT_EQ(point.m_type, "2DIPOINT");
    EXPECT_EQ(point.m_x, 0);
    EXPECT_EQ(point.m_y, 0);
}

TEST(CS2DIPoint, ComparesEachCoordinateAndPrintsWithATrailingBlank)
{
    const CS2DIPoint point = wholePoint2D(3, 4);
    EXPECT_TRUE(point == wholePoint2D(3, 4));
    EXPECT_FALSE(point != wholePoint2D(3, 4));
    EXPECT_TRUE(point != wholePoint2D(0, 4));
    EXPECT_TRUE(point != wholePoint2D(3, 0));
    EXPECT_EQ(printed(point), "3 4 ");
}

TEST(CS2DIPoint, TakesOverTheBasePartByConversion)
{
    const CSBasicType source = markedSource();
    expectBasePartOf(source, CS2DIPoint(source));
}

TEST(CS3DDPoints, IsEmptyByDefault)
{
    EXPECT_EQ(CS3DDPoints().m_type, "3DDPOINTS");
    EXPECT_TRUE(CS3DDPoints().m_points.empty());
}

TEST(CS3DDPoints, AppendsCopiesOfPoints)
{
    CS3DDPoint point(1, 2, 3);
    CS3DDPoints points;
    points.addPoint(point);
    point.m_x = 9;
    points.addPoint(point);
    ASSERT_EQ(points.m_points.size(), 2U);
    EXPECT_EQ(points.m_points[0], CS3DDPoint(1, 2, 3));
    EXPECT_EQ(points.m_points[1], CS3DDPoint(9, 2, 3));
}

TEST(CS3DDPoints, ComparesNumberAndPoints)
{
    const CS3DDPoints points = pointList({{1, 2, 3}, {4, 5, 6}});
    EXPECT_TRUE(CS3DDPoints() == CS3DDPoints());
    EXPECT_FALSE(CS3DDPoints() != CS3DDPoints());
    EXPECT_TRUE(points == pointList({{1, 2, 3}, {4, 5, 6}}));
    EXPECT_FALSE(points != pointList({{1, 2, 3}, {4, 5, 6}}));
    EXPECT_TRUE(points != pointList({{4, 5, 6}, {1, 2, 3}}));
    EXPECT_TRUE(points != pointList({{1, 2, 3}}));
    EXPECT_FALSE(pointList({{NAN, 2, 3}}) == pointList({{NAN, 2, 3}}));
}

TEST(CS3DDPoints, PrintsTwoBlanksAfterEachPoint)
{
    EXPECT_EQ(printed(CS3DDPoints()), "");
    EXPECT_EQ(printed(pointList({{1, 2, 3}, {4, 5, 6}})), "1 2 3  4 5 6  ");
}

TEST(CS3DDPoints, TakesOverTheBasePartByConversion)
{
    const CSBasicType source = markedSource();
    const CS3DDPoints converted(source);
    expectBasePartOf(source, converted);
    EXPECT_TRUE(converted.m_points.empty());
}

TEST(CSAccessorAgent, IsEmptyByDefault)
{
    EXPECT_EQ(CSAccessorAgent().m_type, "ACCESSORAGENT");
    EXPECT_EQ(CSAccessorAgent().m_agent, "");
    EXPECT_EQ(CSAccessorAgent().m_attribute, "");
}

TEST(CSAccessorAgent, ComparesBothNamesAndPrintsAnArrow)
{
    const CSAccessorAgent accessor("p", "Position");
    EXPECT_EQ(accessor.m_type, "ACCESSORAGENT");
    EXPECT_TRUE(accessor == CSAccessorAgent("p", "Position"));
    EXPECT_FALSE(accessor != CSAccessorAgent("p", "Position"));
    EXPECT_TRUE(accessor != CSAccessorAgent("q", "Position"));
    EXPECT_TRUE(accessor != CSAccessorAgent("p", "Speed"));
    EXPECT_EQ(printed(accessor), "p->Position");
}

TEST(CSAccessorAgent, TakesOverTheBasePartByConversion)
{
    const CSBasicType source = markedSource();
    const CSAccessorAgent converted(source);
    expectBasePartOf(source, converted);
    EXPECT_EQ(converted.m_agent, "");
}

TEST(CSAllTypes, CopiesKeepOwnFieldsAndHistory)
{
    CSDouble value(2.5);
    value.m_frame = 8;
    value.m_history[7] = std::make_shared<CSDouble>(1.5);
    const CSDouble copy(value);
    EXPECT_EQ(copy.m_type, "DOUBLE");
    EXPECT_EQ(copy.m_value, 2.5);
    EXPECT_EQ(copy.m_frame, 8);
    EXPECT_EQ(copy.m_history, value.m_history);
}

TEST(CSAllTypes, EqualAndDiffCompareValuesOfOneTag)
{
    const CapturedStream errors(std::cerr);
    for (const Pair& pair : comparablePairs()) {
        SCOPED_TRACE(pair.value->m_type);
        EXPECT_TRUE(equal(pair.value, pair.same));
        EXPECT_FALSE(diff(pair.value, pair.same));
        EXPECT_FALSE(equal(pair.value, pair.other));
        EXPECT_TRUE(diff(pair.value, pair.other));
    }
    EXPECT_EQ(errors.text(), "");
}

TEST(CSAllTypes, EqualIsExactForDoubles)
{
    EXPECT_FALSE(equal(std::make_shared<CSDouble>(0.1 + 0.2), std::make_shared<CSDouble>(0.3)));
    EXPECT_FALSE(equal(std::make_shared<CSDouble>(NAN), std::make_shared<CSDouble>(NAN)));
    EXPECT_TRUE(diff(std::make_shared<CSDouble>(NAN), std::make_shared<CSDouble>(NAN)));
}

TEST(CSAllTypes, ValuesOfDifferentTagsAreNeitherEqualNorDifferent)
{
    const Value whole = std::make_shared<CSInt>(3);
    const Value real = std::make_shared<CSDouble>(3.0);
    const std::string message =
        "Error in operator =, the type INT can not be compared with the type DOUBLE\n";
    {
        const CapturedStream errors(std::cerr);
        EXPECT_FALSE(equal(whole, real));
        EXPECT_EQ(errors.text(), message);
    }
    const CapturedStream errors(std::cerr);
    EXPECT_FALSE(diff(whole, real));
    EXPECT_EQ(errors.text(), message);
}

TEST(CSAllTypes, AccessorsAreNeitherEqualNorDifferent)
{
    const Value left = std::make_shared<CSAccessorAgent>("p", "Position");
    const Value right = std::make_shared<CSAccessorAgent>("p", "Position");
    const std::string message = "Error in operator =, the type ACCESSORAGENT is unknown\n";
    {
        const CapturedStream errors(std::cerr);
        EXPECT_FALSE(equal(left, right));
        EXPECT_EQ(errors.text(), message);
    }
    const CapturedStream errors(std::cerr);
    EXPECT_FALSE(diff(left, std::make_shared<CSAccessorAgent>("q", "Speed")));
    EXPECT_EQ(errors.text(), message);
}

TEST(CSAllTypes, ValuesOfAnUnknownTagAreNeitherEqualNorDifferent)
{
    const Value left = std::make_shared<CSBasicType>("PLAN");
    const Value right = std::make_shared<CSBasicType>("PLAN");
    const CapturedStream errors(std::cerr);
    EXPECT_FALSE(equal(left, right));
    EXPECT_FALSE(diff(left, right));
    EXPECT_EQ(
        errors.text(),
        "Error in operator =, the type PLAN is unknown\n"
        "Error in operator =, the type PLAN is unknown\n");
}

TEST(CSAllTypes, AConvertedValueIsNotReadAsTheClassOfItsTag)
{
    const Value converted =
        std::make_shared<CSInt>(static_cast<const CSBasicType&>(CS3DDPoint(1, 2, 3)));
    const Value real = std::make_shared<CS3DDPoint>(1, 2, 3);
    const CapturedStream errors(std::cerr);
    EXPECT_FALSE(equal(converted, real));
    EXPECT_FALSE(diff(real, converted));
    EXPECT_EQ(
        errors.text(),
        "Error in operator =, the type 3DDPOINT is unknown\n"
        "Error in operator =, the type 3DDPOINT is unknown\n");
    EXPECT_EQ(toString(converted.get()), "toString : UNKNOWN BASIC TYPE (CSAllTypes)");
}

TEST(CSAllTypes, ToStringPrintsByTheTag)
{
    const CSTimeStamp stamp(0, 1268619999.0, 40.0);
    const CSInterval interval(std::make_shared<CSTimeStamp>(stamp), nullptr);
    const CSInt whole(3);
    const CS3DDPoint point(1, 2, 3);
    const CSBool truth(true, 0.8);
    const CSString text("a bag");
    const CSDouble real(2.5);
    const CS3DIPoint wholePoint = wholePoint3D(1, 2, 3);
    const CS2DDPoint flat(1.5, 2);
    const CS2DIPoint wholeFlat = wholePoint2D(3, 4);
    const CS3DDPoints points = pointList({{1, 2, 3}});
    EXPECT_EQ(toString(&whole), "3");
    EXPECT_EQ(toString(&point), "1 2 3 ");
    EXPECT_EQ(toString(&truth), "1 [0.8]");
    EXPECT_EQ(toString(&text), "a bag");
    EXPECT_EQ(toString(&real), "2.5");
    EXPECT_EQ(toString(&wholePoint), "1 2 3 ");
    EXPECT_EQ(toString(&flat), "1.5 2 ");
    EXPECT_EQ(toString(&wholeFlat), "3 4 ");
    EXPECT_EQ(toString(&stamp), "1.26862e+09 40 ");
    EXPECT_EQ(toString(&interval), printed(interval));
    EXPECT_EQ(toString(&points), "1 2 3  ");
}

TEST(CSAllTypes, ToStringOfAnotherTagIsAFixedText)
{
    const CapturedStream errors(std::cerr);
    const CSAccessorAgent accessor("p", "Position");
    const CSBasicType plain("PLAN");
    EXPECT_EQ(toString(&accessor), "toString : UNKNOWN BASIC TYPE (CSAllTypes)");
    EXPECT_EQ(toString(&plain), "toString : UNKNOWN BASIC TYPE (CSAllTypes)");
    EXPECT_EQ(errors.text(), "");
}

} // namespace
} // namespace scenariomatch
