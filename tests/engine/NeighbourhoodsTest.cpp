#include "engine/Neighbourhoods.h"

#include "tests/engine/PlanMaterial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace scenariomatch
{

namespace
{

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

using Ranks = std::vector<std::uint32_t>;

// Persons with the attribute "Position" and zones with "Centre".
class NeighbourhoodsTest : public ::testing::Test
{
protected:
    NeighbourhoodsTest()
        : m_persons{m_view.typeNumber("Person"), m_view.attributeNumber("Position")}
        , m_zones{m_view.typeNumber("Zone"), m_view.attributeNumber("Centre")}
    {
    }

    void addPerson(double x, double y)
    {
        m_scene.add("Person", 1).set("Position", std::make_shared<CS3DDPoint>(x, y, 0.0), 1);
    }

    void addZone(double x, double y)
    {
        m_scene.add("Zone", 1).set("Centre", std::make_shared<CS2DDPoint>(x, y), 1);
    }

    void begin() { m_view.begin(m_scene.m_agents, CSTimeStamp(1, 0.0, 0.0), m_types); }

    Neighbourhoods::Found nearPerson(std::uint32_t rank, double reach)
    {
        return m_neighbourhoods.near(
            m_neighbourhoods.numberOf(m_persons, m_persons, reach), rank, m_view);
    }

    static Ranks ranksOf(const Neighbourhoods::Found& found)
    {
        Ranks ranks;
        for (const auto& neighbour : found.neighbours) {
            ranks.push_back(neighbour.rank);
        }
        return ranks;
    }

    // Those of the found that count as within the reach.
    static Ranks withinReach(const Neighbourhoods::Found& found, double reach)
    {
        Ranks ranks;
        for (const auto& neighbour : found.neighbours) {
            if (neighbour.squaredDistance <= Neighbourhoods::squaredLimit(reach)) {
                ranks.push_back(neighbour.rank);
            }
        }
        return ranks;
    }

    CSPlainValue valueOf(const Neighbourhoods::Side& side, std::uint32_t rank)
    {
        return m_view.values(side.attribute, side.type)[m_view.ofType(side.type)[rank]];
    }

    // Nobody within the reach of anyone of the first side may be missing; ranks must ascend.
    void expectNobodyIsMissing(
        const Neighbourhoods::Side& from, const Neighbourhoods::Side& to, double reach)
    {
        const std::size_t number = m_neighbourhoods.numberOf(from, to, reach);
        for (std::uint32_t rank = 0; rank < m_view.ofType(from.type).size(); ++rank) {
            const auto found = m_neighbourhoods.near(number, rank, m_view);
            if (found.isAnyone) {
                ++m_anyone;
                continue;
            }
            ++m_answered;
            const Ranks ranks = withinReach(found, reach);
            ASSERT_TRUE(std::is_sorted(ranks.begin(), ranks.end()));
            const auto here = valueOf(from, rank).m_point;
            for (std::uint32_t other = 0; other < m_view.ofType(to.type).size(); ++other) {
                const CSPlainValue there = valueOf(to, other);
                const bool isNear =
                    !there.isPoint() ||
                    std::hypot(here.x - there.m_point.x, here.y - there.m_point.y) <= reach;
                const bool isFound = std::binary_search(ranks.begin(), ranks.end(), other);
                ASSERT_TRUE(isFound || !isNear) << rank << ' ' << other << ' ' << reach;
            }
        }
    }

    Scene m_scene;
    FrameView::TypeTable m_types{{"Person", {"Person"}}, {"Zone", {"Zone"}}};
    FrameView m_view;
    Neighbourhoods::Side m_persons;
    Neighbourhoods::Side m_zones;
    Neighbourhoods m_neighbourhoods;
    int m_anyone = 0;
    int m_answered = 0;
};

} // namespace

TEST_F(NeighbourhoodsTest, FindsThoseWithinTheReachAndNotTheOthers)
{
    addPerson(0.0, 0.0);
    addPerson(1.0, 1.0);
    addPerson(3.0, 0.0);
    addPerson(0.0, -1.5);
    begin();
    EXPECT_EQ(withinReach(nearPerson(0, 2.0), 2.0), (Ranks{0, 1, 3}));
    EXPECT_EQ(withinReach(nearPerson(2, 2.0), 2.0), Ranks{2});
}

TEST_F(NeighbourhoodsTest, FindsThoseExactlyAtTheReach)
{
    addPerson(0.0, 0.0);
    addPerson(3.0, 4.0);
    addPerson(-5.0, 0.0);
    addPerson(5.0, 1e-3);
    begin();
    EXPECT_EQ(withinReach(nearPerson(0, 5.0), 5.0), (Ranks{0, 1, 2}));
}

TEST_F(NeighbourhoodsTest, LooksAtTheGroundPlaneAlone)
{
    addPerson(0.0, 0.0);
    m_scene.add("Person", 1).set("Position", std::make_shared<CS3DDPoint>(1.0, 0.0, 50.0), 1);
    begin();
    EXPECT_EQ(withinReach(nearPerson(0, 2.0), 2.0), (Ranks{0, 1}));
}

TEST_F(NeighbourhoodsTest, TakesAReachOfNothingAndLessForTheSamePlace)
{
    addPerson(2.0, 1.0);
    addPerson(2.0, 1.0);
    addPerson(2.0, 1.0001);
    begin();
    EXPECT_EQ(withinReach(nearPerson(0, 0.0), 0.0), (Ranks{0, 1}));
    EXPECT_EQ(withinReach(nearPerson(0, -3.0), -3.0), (Ranks{0, 1}));
}

TEST_F(NeighbourhoodsTest, LooksOutFromOneTypeToAnother)
{
    addZone(10.0, 0.0);
    addPerson(9.5, 0.0);
    addZone(0.0, 0.0);
    addPerson(0.5, 0.0);
    addPerson(0.0, 0.25);
    begin();
    const std::size_t toPersons = m_neighbourhoods.numberOf(m_zones, m_persons, 1.0);
    const std::size_t toZones = m_neighbourhoods.numberOf(m_persons, m_zones, 1.0);
    EXPECT_NE(toPersons, toZones);
    EXPECT_EQ(ranksOf(m_neighbourhoods.near(toPersons, 0, m_view)), Ranks{0});
    EXPECT_EQ(ranksOf(m_neighbourhoods.near(toPersons, 1, m_view)), (Ranks{1, 2}));
    EXPECT_EQ(ranksOf(m_neighbourhoods.near(toZones, 2, m_view)), Ranks{1});
}

TEST_F(NeighbourhoodsTest, AnswersAboutTheSameReachOnce)
{
    EXPECT_EQ(
        m_neighbourhoods.numberOf(m_persons, m_persons, 1.1),
        m_neighbourhoods.numberOf(m_persons, m_persons, 2.0));
    EXPECT_NE(
        m_neighbourhoods.numberOf(m_persons, m_persons, 1.1),
        m_neighbourhoods.numberOf(m_persons, m_persons, 2.1));
    EXPECT_EQ(
        m_neighbourhoods.numberOf(m_persons, m_persons, 0.0),
        m_neighbourhoods.numberOf(m_persons, m_persons, -1.0));
}

TEST_F(NeighbourhoodsTest, TakesAnAgentWithoutAPlaceForNearEverybody)
{
    const std::vector<std::pair<double, double>> nowhere{
        {kNan, 0.0}, {0.0, kNan}, {kInfinity, 0.0}, {0.0, -kInfinity}};
    addPerson(0.0, 0.0);
    for (const auto& [x, y] : nowhere) {
        addPerson(x, y);
    }
    m_scene.add("Person", 1);
    m_scene.add("Person", 1).set("Position", std::make_shared<CSString>("here"), 1);
    addPerson(100.0, 0.0);
    begin();
    for (std::uint32_t rank = 1; rank <= 6; ++rank) {
        EXPECT_TRUE(nearPerson(rank, 2.0).isAnyone) << rank;
    }
    EXPECT_EQ(withinReach(nearPerson(0, 2.0), 2.0), (Ranks{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(withinReach(nearPerson(7, 2.0), 2.0), (Ranks{1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(NeighbourhoodsTest, TakesHugeDistancesForWhatTheyAre)
{
    addPerson(-1e308, 0.0);
    addPerson(1e308, 0.0);
    addPerson(0.0, 0.0);
    begin();
    expectNobodyIsMissing(m_persons, m_persons, 1e308);
    expectNobodyIsMissing(m_persons, m_persons, std::numeric_limits<double>::max());
    expectNobodyIsMissing(m_persons, m_persons, 1.0);
    EXPECT_EQ(withinReach(nearPerson(0, 1.0), 1.0), Ranks{0});
}

TEST_F(NeighbourhoodsTest, LosesNobodyAtTinyDistances)
{
    addPerson(0.0, 0.0);
    addPerson(1e-200, 0.0);
    addPerson(0.0, 5e-324);
    addPerson(1.0, 0.0);
    begin();
    expectNobodyIsMissing(m_persons, m_persons, 5e-324);
    expectNobodyIsMissing(m_persons, m_persons, 1e-200);
    expectNobodyIsMissing(m_persons, m_persons, std::numeric_limits<double>::min());
    EXPECT_EQ(m_answered, 12);
}

TEST_F(NeighbourhoodsTest, SaysAnyoneWhereThereAreTooMany)
{
    for (int i = 0; i < 200; ++i) {
        addPerson(0.01 * i, 0.0);
    }
    begin();
    EXPECT_TRUE(nearPerson(0, 4.0).isAnyone);
    EXPECT_TRUE(nearPerson(199, 4.0).isAnyone);
    EXPECT_FALSE(nearPerson(0, 0.125).isAnyone);
}

TEST_F(NeighbourhoodsTest, FindsAnewInTheNextFrame)
{
    addPerson(0.0, 0.0);
    addPerson(1.0, 0.0);
    begin();
    EXPECT_EQ(ranksOf(nearPerson(0, 2.0)), (Ranks{0, 1}));
    m_scene.m_agents[1]->set("Position", std::make_shared<CS3DDPoint>(9.0, 0.0, 0.0), 1);
    addPerson(0.0, 1.0);
    begin();
    EXPECT_EQ(ranksOf(nearPerson(0, 2.0)), (Ranks{0, 2}));
}

TEST_F(NeighbourhoodsTest, FindsNobodyAmongNobody)
{
    addPerson(0.0, 0.0);
    begin();
    const auto found =
        m_neighbourhoods.near(m_neighbourhoods.numberOf(m_persons, m_zones, 1.0), 0, m_view);
    EXPECT_FALSE(found.isAnyone);
    EXPECT_TRUE(found.neighbours.empty());
}

// Random points, half of them on a grid so that many lie exactly at the reach of others.
TEST_F(NeighbourhoodsTest, LosesNobodyOfRandomCrowds)
{
    std::mt19937 random(5); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same crowds every time
    std::uniform_real_distribution<double> anywhere(-10.0, 10.0);
    std::uniform_int_distribution<int> grid(-20, 20);
    const std::vector<double> reaches{-1.0, 0.0, 1e-9, 0.5, 1.0, 1.5, 2.5, 3.0, 5.0, 100.0};
    for (int round = 0; round < 60; ++round) {
        m_scene = {};
        const int agents = 5 + static_cast<int>(random() % 60);
        for (int i = 0; i < agents; ++i) {
            const bool isOnGrid = random() % 2 == 0;
            const double x = isOnGrid ? 0.5 * grid(random) : anywhere(random);
            const double y = isOnGrid ? 0.5 * grid(random) : anywhere(random);
            if (random() % 20 == 0) {
                m_scene.add("Person", 1);
            } else if (random() % 3 == 0) {
                addZone(x, y);
            } else {
                addPerson(x, y);
            }
        }
        begin();
        for (const double reach : reaches) {
            expectNobodyIsMissing(m_persons, m_persons, reach);
            expectNobodyIsMissing(m_persons, m_zones, reach);
            expectNobodyIsMissing(m_zones, m_persons, reach);
        }
    }
    EXPECT_GT(m_answered, 10 * m_anyone);
}

} // namespace scenariomatch
