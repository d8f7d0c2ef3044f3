#include "types/CSPlainValue.h"

#include "types/CSAllTypes.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

using Kind = CSPlainValue::Kind;

constexpr std::array<const char*, 14> kTags{
    "BOOL",
    "STRING",
    "INT",
    "DOUBLE",
    "3DDPOINT",
    "3DIPOINT",
    "2DDPOINT",
    "2DIPOINT",
    "TIMESTAMP",
    "INTERVAL",
    "3DDPOINTS",
    "ACCESSORAGENT",
    "3DDPOINTSX",
    ""};

template <class Class>
class Derived : public Class
{
public:
    using Class::Class;
};

std::vector<std::shared_ptr<CSBasicType>> oneOfEachClass()
{
    return {
        std::make_shared<CSBool>(true),
        std::make_shared<CSString>(std::string("Desk")),
        std::make_shared<CSInt>(3),
        std::make_shared<CSDouble>(2.5),
        std::make_shared<CS3DDPoint>(1, 2, 3),
        std::make_shared<CS3DIPoint>(),
        std::make_shared<CS2DDPoint>(1, 2),
        std::make_shared<CS2DIPoint>(),
        std::make_shared<CSTimeStamp>(1, 2.0, 3.0),
        std::make_shared<CSInterval>(),
        std::make_shared<CS3DDPoints>(),
        std::make_shared<CSAccessorAgent>("p", "Position")};
}

void expectPoint(const CSPlainValue& value, const std::array<double, 3>& place, bool hasHeight)
{
    ASSERT_TRUE(value.isPoint());
    EXPECT_EQ(value.m_point.x, place[0]);
    EXPECT_EQ(value.m_point.y, place[1]);
    EXPECT_EQ(value.m_point.z, place[2]);
    EXPECT_EQ(value.m_point.hasHeight, hasHeight);
}

} // namespace

TEST(CSPlainValue, IsNoValueByDefaultAndForNull)
{
    for (const CSPlainValue& value : {CSPlainValue(), CSPlainValue(nullptr)}) {
        EXPECT_TRUE(value.isNone());
        EXPECT_EQ(value.m_object, nullptr);
        EXPECT_EQ(value.text(), nullptr);
        EXPECT_EQ(value.timeStamp(), nullptr);
        EXPECT_EQ(value.points(), nullptr);
    }
}

TEST(CSPlainValue, ViewsTruthWithItsConfidence)
{
    const CSBool object(true, 0.25);
    const CSPlainValue value(&object);
    ASSERT_TRUE(value.isBool());
    EXPECT_TRUE(value.m_truth);
    EXPECT_EQ(value.m_number, 0.25);
    EXPECT_EQ(value.m_object, &object);
    const CSBool no(false);
    EXPECT_FALSE(CSPlainValue(&no).m_truth);
    EXPECT_EQ(CSPlainValue(&no).m_number, 1.0);
}

TEST(CSPlainValue, ViewsBothKindsOfNumbers)
{
    const CSInt whole(std::numeric_limits<int>::min());
    const CSDouble decimal(2.5);
    const CSDouble none(std::numeric_limits<double>::quiet_NaN());
    ASSERT_TRUE(CSPlainValue(&whole).isNumber());
    EXPECT_EQ(CSPlainValue(&whole).m_number, -2147483648.0);
    ASSERT_TRUE(CSPlainValue(&decimal).isNumber());
    EXPECT_EQ(CSPlainValue(&decimal).m_number, 2.5);
    ASSERT_TRUE(CSPlainValue(&none).isNumber());
    EXPECT_TRUE(std::isnan(CSPlainValue(&none).m_number));
    EXPECT_EQ(CSPlainValue(&whole).m_object, &whole);
}

TEST(CSPlainValue, ViewsAllKindsOfPoints)
{
    const CS3DDPoint space(1.5, 2.5, 3.5);
    expectPoint(CSPlainValue(&space), {1.5, 2.5, 3.5}, true);
    const CS2DDPoint plane(1.5, 2.5);
    expectPoint(CSPlainValue(&plane), {1.5, 2.5, 0.0}, false);
    CS3DIPoint wholeSpace;
    wholeSpace.m_x = 1;
    wholeSpace.m_y = -2;
    wholeSpace.m_z = 3;
    expectPoint(CSPlainValue(&wholeSpace), {1.0, -2.0, 3.0}, true);
    CS2DIPoint wholePlane;
    wholePlane.m_x = 1;
    wholePlane.m_y = -2;
    expectPoint(CSPlainValue(&wholePlane), {1.0, -2.0, 0.0}, false);
    EXPECT_EQ(CSPlainValue(&wholePlane).m_object, &wholePlane);
}

TEST(CSPlainValue, ViewsIntervalsWithAndWithoutEnds)
{
    const auto start = std::make_shared<CSTimeStamp>(1, 2.0, 3.0);
    const auto end = std::make_shared<CSTimeStamp>(4, 5.0, 6.0);
    const CSInterval whole(start, end);
    ASSERT_TRUE(CSPlainValue(&whole).isInterval());
    EXPECT_EQ(CSPlainValue(&whole).m_interval.start, start.get());
    EXPECT_EQ(CSPlainValue(&whole).m_interval.end, end.get());
    EXPECT_EQ(CSPlainValue(&whole).m_object, &whole);
    const CSInterval started(start, nullptr);
    EXPECT_EQ(CSPlainValue(&started).m_interval.start, start.get());
    EXPECT_EQ(CSPlainValue(&started).m_interval.end, nullptr);
    const CSInterval ended(nullptr, end);
    EXPECT_EQ(CSPlainValue(&ended).m_interval.start, nullptr);
    EXPECT_EQ(CSPlainValue(&ended).m_interval.end, end.get());
    const CSInterval empty;
    ASSERT_TRUE(CSPlainValue(&empty).isInterval());
    EXPECT_EQ(CSPlainValue(&empty).m_interval.start, nullptr);
    EXPECT_EQ(CSPlainValue(&empty).m_interval.end, nullptr);
}

TEST(CSPlainValue, ViewsTheObjectsOfOtherKinds)
{
    const CSString text(std::string("Desk"));
    EXPECT_EQ(CSPlainValue(&text).m_kind, Kind::Text);
    EXPECT_EQ(CSPlainValue(&text).text(), &text);
    const CSTimeStamp time(1, 2.0, 3.0);
    EXPECT_EQ(CSPlainValue(&time).m_kind, Kind::TimeStamp);
    EXPECT_EQ(CSPlainValue(&time).timeStamp(), &time);
    const CS3DDPoints points;
    EXPECT_EQ(CSPlainValue(&points).m_kind, Kind::Points);
    EXPECT_EQ(CSPlainValue(&points).points(), &points);
    const CSAccessorAgent accessor("p", "Position");
    EXPECT_EQ(CSPlainValue(&accessor).m_kind, Kind::Other);
    EXPECT_EQ(CSPlainValue(&accessor).m_object, &accessor);
}

TEST(CSPlainValue, TellsTextTimeAndPointsOfTheirKindOnly)
{
    for (const auto& object : oneOfEachClass()) {
        const CSPlainValue value(object.get());
        EXPECT_EQ(value.text() != nullptr, object->m_type == "STRING");
        EXPECT_EQ(value.timeStamp() != nullptr, object->m_type == "TIMESTAMP");
        EXPECT_EQ(value.points() != nullptr, object->m_type == "3DDPOINTS");
    }
}

TEST(CSPlainValue, IsOfNoKindWhenTheTagIsNotTheClass)
{
    for (const auto& object : oneOfEachClass()) {
        const std::string own = object->m_type;
        for (const char* tag : kTags) {
            if (tag == own) {
                continue;
            }
            object->m_type = tag;
            const CSPlainValue value(object.get());
            EXPECT_EQ(value.m_kind, Kind::Other) << own << " as " << tag;
            EXPECT_EQ(value.m_object, object.get());
            EXPECT_EQ(value.text(), nullptr);
            EXPECT_EQ(value.timeStamp(), nullptr);
            EXPECT_EQ(value.points(), nullptr);
        }
    }
}

TEST(CSPlainValue, IsOfNoKindForAConvertedValue)
{
    const CSString text(std::string("7"));
    const CSInt converted(text);
    ASSERT_EQ(converted.m_type, "STRING");
    EXPECT_EQ(CSPlainValue(&converted).m_kind, Kind::Other);
}

TEST(CSPlainValue, ViewsDerivedClassesAsTheirBase)
{
    const Derived<CSBool> truth(true, 0.5);
    EXPECT_TRUE(CSPlainValue(&truth).isBool());
    const Derived<CSInt> whole(3);
    EXPECT_EQ(CSPlainValue(&whole).m_number, 3.0);
    const Derived<CSDouble> decimal(2.5);
    EXPECT_EQ(CSPlainValue(&decimal).m_number, 2.5);
    const Derived<CS3DDPoint> space(1, 2, 3);
    expectPoint(CSPlainValue(&space), {1.0, 2.0, 3.0}, true);
    const Derived<CS2DDPoint> plane(1, 2);
    expectPoint(CSPlainValue(&plane), {1.0, 2.0, 0.0}, false);
    const Derived<CS3DIPoint> wholeSpace;
    expectPoint(CSPlainValue(&wholeSpace), {0.0, 0.0, 0.0}, true);
    const Derived<CS2DIPoint> wholePlane;
    expectPoint(CSPlainValue(&wholePlane), {0.0, 0.0, 0.0}, false);
    const Derived<CSInterval> interval;
    EXPECT_TRUE(CSPlainValue(&interval).isInterval());
    const Derived<CSString> text(std::string("Desk"));
    EXPECT_EQ(CSPlainValue(&text).text(), &text);
    const Derived<CSTimeStamp> time(1, 2.0, 3.0);
    EXPECT_EQ(CSPlainValue(&time).timeStamp(), &time);
    const Derived<CS3DDPoints> points;
    EXPECT_EQ(CSPlainValue(&points).points(), &points);
}

TEST(CSPlainValue, IsMadeWithoutAnObject)
{
    const CSPlainValue certain = CSPlainValue::boolean(true);
    ASSERT_TRUE(certain.isBool());
    EXPECT_TRUE(certain.m_truth);
    EXPECT_EQ(certain.m_number, 1.0);
    const CSPlainValue doubtful = CSPlainValue::boolean(false, 0.25);
    ASSERT_TRUE(doubtful.isBool());
    EXPECT_FALSE(doubtful.m_truth);
    EXPECT_EQ(doubtful.m_number, 0.25);
    const CSPlainValue number = CSPlainValue::number(2.5);
    ASSERT_TRUE(number.isNumber());
    EXPECT_EQ(number.m_number, 2.5);
    const CSTimeStamp start(1, 2.0, 3.0);
    const CSPlainValue interval = CSPlainValue::interval(&start, nullptr);
    ASSERT_TRUE(interval.isInterval());
    EXPECT_EQ(interval.m_interval.start, &start);
    EXPECT_EQ(interval.m_interval.end, nullptr);
    for (const CSPlainValue& made : {certain, doubtful, number, interval}) {
        EXPECT_EQ(made.m_object, nullptr);
    }
}

} // namespace scenariomatch
