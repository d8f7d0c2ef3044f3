#include "app/explain/Gauge.h"

#include "app/explain/Summary.h"
#include "app/StreamRedirection.h"
#include "tests/app/explain/ExplainWorld.h"

#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

// Constraints in terms of the standard operators, about a person p at (1, 2), a person q at (4, 6),
// a zone z, 10 to 14 and 0 to 4, and sub-events c1 from 1 s to 2.4 s and c2 from 2 s to 3 s.
class GaugeTest : public testing::Test
{
protected:
    GaugeTest()
    {
        CConstraint::m_allOperators = standardOperators();
        place("p", 1, 2);
        place("q", 4, 6);
        auto vertices = std::make_shared<CS3DDPoints>();
        vertices->addPoint({10, 0, 0});
        vertices->addPoint({14, 0, 0});
        vertices->addPoint({14, 4, 0});
        vertices->addPoint({10, 4, 0});
        agent("z")->set("Vertices", vertices, 0);
        agent("z")->set("Name", std::make_shared<CSString>("Bank"), 0);
        setTime("c1", 1000, 2400);
        setTime("c2", 2000, 3000);
    }

    void TearDown() override { CConstraint::m_allOperators.clear(); }

    std::shared_ptr<CSAgent>& agent(const std::string& variable)
    {
        std::shared_ptr<CSAgent>& agent = m_bindings[variable];
        if (!agent) {
            agent = std::make_shared<CSAgent>(0, false);
        }
        return agent;
    }

    void place(const std::string& variable, double x, double y)
    {
        agent(variable)->set("Position", std::make_shared<CS3DDPoint>(x, y, 0.0), 0);
    }

    void setTime(const std::string& variable, double start, double end)
    {
        agent(variable)->set(
            "Interval",
            std::make_shared<CSInterval>(
                std::make_shared<CSTimeStamp>(0, 0, start),
                std::make_shared<CSTimeStamp>(0, 0, end)),
            0);
    }

    Finding find(const std::string& text)
    {
        CConstraint constraint;
        constraint.read(text);
        {
            const StreamRedirection silence(std::cout, nullptr);
            constraint.fillConstraintsConstants({});
        }
        std::vector<std::string> variables;
        for (const auto& [variable, agent] : m_bindings) {
            variables.push_back(variable);
        }
        assignSlots(constraint, variables);
        OperatorPromises promises;
        Gauge gauge(constraint, 0, promises, {[](const std::string&) { return 0; }, nullptr});
        BoundReader reader(m_bindings);
        gauge.holds(reader);
        m_bounded = gauge.margin(1.0);
        return gauge.finding();
    }

    CConstraint::Bindings m_bindings;
    // The margin, as long as it is less than 1.
    std::optional<double> m_bounded;
};

} // namespace

TEST_F(GaugeTest, MeasuresComparisonsOfNumbers)
{
    const Finding finding = find("distance(p->Position, q->Position) < 2");
    EXPECT_FALSE(finding.holds);
    EXPECT_EQ(finding.margin, 3.0);
    EXPECT_EQ(
        findingText(finding), "distance(p->Position, q->Position) < 2: 5, needed < 2, 3 too much");
    EXPECT_FALSE(m_bounded);
    EXPECT_EQ(
        findingText(find("distance(p->Position, q->Position) >= 7.5")),
        "distance(p->Position, q->Position) >= 7.5: 5, needed >= 7.5, 2.5 too little");
}

TEST_F(GaugeTest, TellsWhatIsToSpareWhereTheConstraintHolds)
{
    const Finding finding = find("distance(p->Position, q->Position) <= 5.5");
    EXPECT_TRUE(finding.holds);
    EXPECT_EQ(finding.margin, 0.5);
    EXPECT_EQ(m_bounded, 0.5);
    EXPECT_EQ(finding.note, "0.5 to spare");
}

TEST_F(GaugeTest, HasAMarginOfNothingAtTheLimit)
{
    const Finding finding = find("distance(p->Position, q->Position) < 5");
    EXPECT_FALSE(finding.holds);
    EXPECT_EQ(finding.margin, 0.0);
    EXPECT_EQ(finding.note, "exactly at the limit");
}

TEST_F(GaugeTest, FindsTheLimitWithWhichAnOperatorWouldHold)
{
    const Finding finding = find("near(p->Position, q->Position, 2)");
    EXPECT_NEAR(finding.margin.value(), 3.0, 1e-9);
    EXPECT_EQ(finding.seen, "5");
    EXPECT_EQ(finding.required, "<= 2");
    EXPECT_FALSE(m_bounded);
    EXPECT_NEAR(find("near(p->Position, q->Position, 4.5)").margin.value(), 0.5, 1e-9);
    EXPECT_NEAR(m_bounded.value(), 0.5, 1e-9);
    EXPECT_NEAR(find("near(p->Position, q->Position, 5.25)").margin.value(), 0.25, 1e-9);
}

TEST_F(GaugeTest, MeasuresTheWayIntoAndOutOfAZone)
{
    Finding finding = find("p->Position in z->Vertices");
    EXPECT_EQ(finding.margin, 9.0);
    EXPECT_EQ(finding.seen, "9 outside");
    EXPECT_EQ(finding.required, "inside");
    place("p", 11, 2);
    finding = find("p->Position out z->Vertices");
    EXPECT_FALSE(finding.holds);
    EXPECT_EQ(finding.margin, 1.0);
    EXPECT_EQ(finding.seen, "1 inside");
    finding = find("p->Position in z->Vertices");
    EXPECT_TRUE(finding.holds);
    EXPECT_EQ(finding.margin, 1.0);
}

TEST_F(GaugeTest, NamesWordsWithoutMargin)
{
    const Finding finding = find("z->Name = Shop");
    EXPECT_FALSE(finding.margin);
    EXPECT_EQ(finding.seen, "Bank");
    EXPECT_EQ(finding.required, "= Shop");
}

TEST_F(GaugeTest, MeasuresTimesOfSubEventsInSeconds)
{
    Finding finding = find("c1->Interval before c2->Interval");
    EXPECT_DOUBLE_EQ(finding.margin.value(), 0.4);
    EXPECT_EQ(finding.unit, "s");
    EXPECT_EQ(finding.note, "c1 ended 0.4 s after c2 began");
    EXPECT_EQ(finding.required, "c1 ends before c2 begins");
    finding = find("duration(c1->Interval) >= 2");
    EXPECT_DOUBLE_EQ(finding.margin.value(), 0.6);
    EXPECT_EQ(finding.unit, "s");
    EXPECT_EQ(finding.note, "0.6 s too little");
}

// Moving one end would not do: no margin is named, but what is wrong.
TEST_F(GaugeTest, NamesNoMarginWhereSeveralEndsAreWrong)
{
    const Finding finding = find("c2->Interval before c1->Interval");
    EXPECT_DOUBLE_EQ(finding.margin.value(), 2.0);
    const Finding several = find("c2->Interval meets c1->Interval");
    EXPECT_FALSE(several.margin);
    EXPECT_EQ(
        several.note,
        "c2 ended 2 s after c1 began, c2 began 1 s after c1 began, c2 ended 0.6 s after c1 ended");
}

TEST_F(GaugeTest, NamesNoMarginOfValuesThatAreMissing)
{
    const Finding finding = find("distance(p->Nowhere, q->Position) < 2");
    EXPECT_FALSE(finding.holds);
    EXPECT_FALSE(finding.margin);
    EXPECT_EQ(finding.seen, "no value");
}

TEST_F(GaugeTest, NamesNoMarginOfNestedTruths)
{
    const Finding finding = find(
        "(distance(p->Position, q->Position) < 2) and (distance(p->Position, q->Position) > 1)");
    EXPECT_FALSE(finding.margin);
}

} // namespace scenariomatch
