#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CSAccessor.h>
#include <CSComponent.h>
#include <CSObject.h>
#include <CSObjectConversion.h>
#include <iostream>
#include <memory>
#include <sstream>

namespace scenariomatch
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// Collects what is written to standard error while it lives.
class Errors
{
public:
    Errors()
        : m_before(std::cerr.rdbuf(m_written.rdbuf()))
    {
    }

    Errors(const Errors&) = delete;
    Errors(Errors&&) = delete;
    Errors& operator=(const Errors&) = delete;
    Errors& operator=(Errors&&) = delete;

    ~Errors() { std::cerr.rdbuf(m_before); }

    std::string text() const { return m_written.str(); }

private:
    std::ostringstream m_written;
    std::streambuf* m_before;
};

// What the generated code answers for an attribute that it does not know, which the caller owns.
int answered(CSBasicType* answer)
{
    const std::unique_ptr<CSBasicType> owned(answer);
    const auto* const number = dynamic_cast<CSInt*>(answer);
    return number == nullptr ? 0 : number->m_value;
}

} // namespace

TEST(GeneratedAccessors, GiveBackAValueOfEveryKind)
{
    Mobile mobile;
    CSBool visible(true);
    CSString name("bicycle");
    CSInt number(3);
    CSDouble speed(1.5);
    CS3DDPoint position({1.0, 2.0, 3.0});
    CS3DIPoint cell({1, 2, 3});
    CS2DDPoint position2d({4.0, 5.0});
    CS2DIPoint pixel({4, 5});
    CSTimeStamp seen(1000);
    CSInterval stay({1000, 2000});
    CS3DDPoints path({{0.0, 0.0, 0.0}, {1.0, 1.0, 0.0}});
    CSAccessorAgent target({"p", "Position"});
    const std::vector<std::pair<std::string, CSBasicType*>> values{
        {"Visible", &visible},
        {"Name", &name},
        {"Number", &number},
        {"Speed", &speed},
        {"Position", &position},
        {"Cell", &cell},
        {"Position2D", &position2d},
        {"Pixel", &pixel},
        {"Seen", &seen},
        {"Stay", &stay},
        {"Path", &path},
        {"Target", &target}};
    for (const auto& [attribute, value] : values) {
        EXPECT_EQ(get(&mobile, attribute), nullptr) << attribute;
        set(&mobile, attribute, value);
        setH(&mobile, attribute, value, 7);
    }
    for (const auto& [attribute, value] : values) {
        EXPECT_EQ(get(&mobile, attribute), value) << attribute;
        EXPECT_EQ(getH(&mobile, attribute, 7), value) << attribute;
    }
    EXPECT_EQ(mobile.Speed->m_value, 1.5);
    EXPECT_EQ(mobile.h_Target.at(7)->m_value.second, "Position");
}

TEST(GeneratedAccessors, ReachTheAttributesOfParents)
{
    Truck truck;
    Bus bus;
    CSString kind("tanker");
    CSDouble speed(22.0);
    CSDouble load(7.5);
    set(&truck, "Load", &load);
    set(&truck, "Kind", &kind);
    set(&truck, "Speed", &speed);
    setH(&truck, "Speed", &speed, 1);
    set(&bus, "Kind", &kind);
    setH(&bus, "Speed", &speed, 2);
    EXPECT_EQ(truck.Load, &load);
    EXPECT_EQ(truck.Vehicle::Kind, &kind);
    EXPECT_EQ(truck.Mobile::Speed, &speed);
    EXPECT_EQ(get(&truck, "Kind"), &kind);
    EXPECT_EQ(get(&truck, "Speed"), &speed);
    EXPECT_EQ(getH(&truck, "Speed", 1), &speed);
    EXPECT_EQ(get(&bus, "Kind"), &kind);
    EXPECT_EQ(getH(&bus, "Speed", 2), &speed);
}

TEST(GeneratedAccessors, TakeTheTypesOwnAttributeBeforeItsParents)
{
    Truck truck;
    CSString name("truck");
    set(&truck, "Name", &name);
    EXPECT_EQ(truck.Truck::Name, &name);
    EXPECT_EQ(truck.Mobile::Name, nullptr);
    EXPECT_EQ(get(&truck, "Name"), &name);
}

TEST(GeneratedAccessors, KeepAHistoryPerAttribute)
{
    Truck truck;
    CSDouble slow(1.0);
    CSDouble fast(2.0);
    CSDouble load(3.0);
    setH(&truck, "Speed", &slow, 10);
    setH(&truck, "Speed", &fast, 11);
    setH(&truck, "Load", &load, 10);
    EXPECT_THAT(getHAll(&truck, "Speed"), ElementsAre(Pair(10, &slow), Pair(11, &fast)));
    EXPECT_THAT(getHAll(&truck, "Load"), ElementsAre(Pair(10, &load)));
    EXPECT_THAT(getHAll(&truck, "Kind"), IsEmpty());
    EXPECT_EQ(getH(&truck, "Speed", 12), nullptr);
    EXPECT_EQ(get(&truck, "Speed"), nullptr);
}

TEST(GeneratedAccessors, AnswerMinusOneForAnUnknownAttributeAndSaySo)
{
    Truck truck;
    Zone zone;
    CSDouble value(1.0);
    const Errors errors;
    EXPECT_EQ(answered(get(&truck, "Colour")), -1);
    EXPECT_EQ(answered(getH(&zone, "Colour", 3)), -1);
    EXPECT_THAT(getHAll(&truck, "Wheels"), IsEmpty());
    set(&truck, "Roof", &value);
    setH(&zone, "Roof", &value, 3);
    EXPECT_EQ(
        errors.text(),
        "Mobile has no attribute Colour\n"
        "Place has no attribute Colour\n"
        "Mobile has no attribute Wheels\n"
        "Mobile has no attribute Roof\n"
        "Place has no attribute Roof\n");
}

TEST(GeneratedAccessors, KnowTheTypeAndWhetherItIsConstant)
{
    const Truck truck;
    const Zone zone;
    EXPECT_EQ(truck.Type, "Truck");
    EXPECT_FALSE(truck.m_constant);
    EXPECT_EQ(zone.Type, "Zone");
    EXPECT_TRUE(zone.m_constant);
}

TEST(GeneratedAccessors, DispatchComponentsAndAgentsOfOtherTypes)
{
    CSComponent component;
    CSString name("Meeting");
    set(&component, "Name", &name);
    EXPECT_EQ(component.Name, &name);
    EXPECT_EQ(get(&component, "Name"), &name);

    CSAgent agent;
    agent.Type = "Dog";
    CSDouble speed(1.0);
    set(&agent, "Speed", &speed);
    setH(&agent, "Speed", &speed, 4);
    EXPECT_EQ(get(&agent, "Speed"), &speed);
    EXPECT_EQ(getH(&agent, "Speed", 4), &speed);
    EXPECT_THAT(getHAll(&agent, "Speed"), ElementsAre(Pair(4, &speed)));
}

TEST(GeneratedAccessors, ListEveryTypeWithItsSubtypes)
{
    EXPECT_THAT(
        getAllObjectTypes(),
        ElementsAre(
            Pair("Bus", ElementsAre("Bus")),
            Pair("Mobile", ElementsAre("Mobile", "Vehicle", "Truck", "Bus")),
            Pair("Place", ElementsAre("Place", "Zone")),
            Pair("Truck", ElementsAre("Truck")),
            Pair("Vehicle", ElementsAre("Vehicle", "Truck", "Bus")),
            Pair("Zone", ElementsAre("Zone"))));
}

TEST(GeneratedAccessors, FileConvertedObjectsByTypeAndConstancy)
{
    CSObjectConversion conversion;
    Truck truck;
    Zone zone;
    conversion.addTruck(YOUROBJECTTYPE(), &truck);
    conversion.addZone(YOUROBJECTTYPE(), &zone);
    EXPECT_THAT(conversion.m_allAgents, ElementsAre(Pair("Truck", ElementsAre(&truck))));
    EXPECT_THAT(conversion.m_allConstAgents, ElementsAre(Pair("Zone", ElementsAre(&zone))));
}

} // namespace scenariomatch
