#include "operators/motion/LineCrossing.h"
#include "operators/motion/Motion.h"
#include "Walk.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

// Leads upwards along x = 0: its left is where x is negative.
Value upwards()
{
    return ring({{0, -100, 0}, {0, 100, 0}});
}

// What the three operators say of each step of a walk: L, R or - for a step that does not cross.
std::string story(const std::vector<Value>& positions, const Value& line)
{
    std::string told;
    for (std::size_t i = 1; i < positions.size(); ++i) {
        const CSPlainValue here(positions[i].get());
        const Value step = walked({positions[i - 1], at(here.m_point.x, here.m_point.y)});
        const bool left = isTrue(answer(crossedLeft, {step, line}));
        const bool right = isTrue(answer(crossedRight, {step, line}));
        EXPECT_EQ(isTrue(answer(crossed, {step, line})), left || right);
        EXPECT_FALSE(left && right);
        told += left ? 'L' : right ? 'R' : '-';
    }
    return told;
}

// Small whole coordinates, so that walkers step on the line and through its corners all the time.
class Lattice
{
public:
    explicit Lattice(unsigned seed)
        : m_random(seed)
    {
    }

    Point any() { return {coordinate(), coordinate(), 0.0, false}; }

    std::vector<CS3DDPoint> line(int corners)
    {
        std::vector<CS3DDPoint> result;
        for (int i = 0; i < corners; ++i) {
            const Point corner = any();
            result.emplace_back(corner.x, corner.y, 0.0);
        }
        return result;
    }

private:
    double coordinate()
    {
        constexpr unsigned kSize = 5;
        return static_cast<double>(m_random() % kSize);
    }

    std::mt19937 m_random;
};

// The position moved by what stands in for a hair's breadth: on the lattice it settles every tie
// and nothing else.
Point moved(const Point& point)
{
    constexpr double kHair = 1.0 / 1024;
    return {point.x + kHair, point.y + kHair * kHair, 0.0, false};
}

double side(const Point& a, const Point& b, const Point& c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// The plainest way to say it, for steps that meet no corner and do not end on the line.
int plainPassage(const Point& from, const Point& to, const std::vector<CS3DDPoint>& line)
{
    int sum = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const Point a{line[i - 1].m_x, line[i - 1].m_y, 0.0, false};
        const Point b{line[i].m_x, line[i].m_y, 0.0, false};
        const bool passesLine = side(a, b, from) * side(a, b, to) < 0.0;
        const bool passesPiece = side(from, to, a) * side(from, to, b) < 0.0;
        if (passesLine && passesPiece) {
            sum += side(a, b, to) > 0.0 ? 1 : -1;
        }
    }
    return sum;
}

} // namespace

TEST(Crossed, TellsSidesAsSeenAlongTheLine)
{
    EXPECT_EQ(story({at(1, 0), at(-1, 0)}, upwards()), "L");
    EXPECT_EQ(story({at(-1, 0), at(1, 0)}, upwards()), "R");
    EXPECT_EQ(story({at(1, 0), at(2, 0)}, upwards()), "-");
    EXPECT_EQ(story({at(1, 0), at(1, 0)}, upwards()), "-");
}

TEST(Crossed, TakesALineOfTwoPoints)
{
    const Value step = walked({at(1, 0, 3), at(-1, 0, 9)});
    EXPECT_TRUE(isTrue(answer(crossed, {step, at(0, -1), at(0, 1)})));
    EXPECT_TRUE(isTrue(answer(crossedLeft, {step, wholeAt(0, -1, 7), at(0, 1)})));
    EXPECT_TRUE(isTrue(answer(crossedRight, {step, at(0, 1), at(0, -1)})));
    EXPECT_TRUE(isFalse(answer(crossed, {step, at(0, 1), at(0, 2)})));
}

TEST(Crossed, EndsWhereTheLineEnds)
{
    const Value line = ring({{0, 0, 0}, {0, 10, 0}});
    EXPECT_EQ(story({at(1, 5), at(-1, 5)}, line), "L");
    EXPECT_EQ(story({at(1, 11), at(-1, 11)}, line), "-");
    EXPECT_EQ(story({at(1, -1), at(-1, -1)}, line), "-");
    EXPECT_EQ(story({at(1, 9), at(-1, 12)}, line), "-");
}

TEST(Crossed, CountsAStepOnTheLineOnce)
{
    // A position on the line is a hair's breadth to greater x, here to the right.
    EXPECT_EQ(story({at(-1, 0), at(0, 0), at(1, 0)}, upwards()), "R-");
    EXPECT_EQ(story({at(1, 0), at(0, 0), at(-1, 0)}, upwards()), "-L");
    EXPECT_EQ(story({at(1, 0), at(0, 0), at(1, 0)}, upwards()), "--");
    EXPECT_EQ(story({at(-1, 0), at(0, 0), at(-1, 0)}, upwards()), "RL");
    EXPECT_EQ(story({at(-1, 0), at(0, 0), at(0, 1), at(0, 2), at(1, 2)}, upwards()), "R---");
}

TEST(Crossed, CountsAStepOnALevelLineOnce)
{
    const Value level = ring({{-100, 0, 0}, {100, 0, 0}});
    EXPECT_EQ(story({at(0, -1), at(0, 0), at(0, 1)}, level), "L-");
    EXPECT_EQ(story({at(0, 1), at(0, 0), at(1, 0), at(0, -1)}, level), "--R");
}

TEST(Crossed, TurningTheLineRoundSwapsTheSidesAndNothingElse)
{
    const Value downwards = ring({{0, 100, 0}, {0, -100, 0}});
    EXPECT_EQ(story({at(-1, 0), at(0, 0), at(1, 0)}, downwards), "L-");
    EXPECT_EQ(story({at(1, 0), at(0, 0), at(-1, 0)}, downwards), "-R");
}

TEST(Crossed, CountsAStepThroughACornerOnce)
{
    const Value straight = ring({{0, -10, 0}, {0, 0, 0}, {0, 10, 0}});
    EXPECT_EQ(story({at(1, 0), at(-1, 0)}, straight), "L");
    EXPECT_EQ(story({at(-1, 0), at(1, 0)}, straight), "R");
    const Value bent = ring({{-10, -10, 0}, {0, 0, 0}, {-10, 10, 0}});
    EXPECT_EQ(story({at(1, 0), at(-1, 0)}, bent), "L");
    EXPECT_EQ(story({at(-1, 0), at(0, 0), at(1, 0)}, bent), "R-");
}

TEST(Crossed, PassingAFoldThereAndBackIsNoCrossing)
{
    const Value fold = ring({{0, 0, 0}, {5, 10, 0}, {10, 0, 0}});
    EXPECT_EQ(story({at(0, 5), at(10, 5)}, fold), "-");
    EXPECT_EQ(story({at(0, 5), at(5, 5), at(10, 5)}, fold), "RL");
}

TEST(Crossed, DoesNotCloseTheLine)
{
    const Value open = ring({{0, 0, 0}, {0, 10, 0}, {10, 10, 0}});
    EXPECT_EQ(story({at(6, 1), at(6, 5)}, open), "-");
    EXPECT_EQ(story({at(6, 5), at(6, 11)}, open), "L");
}

TEST(Crossed, PiecesWithoutLengthCountNothing)
{
    EXPECT_EQ(story({at(1, 0), at(-1, 0)}, ring({{0, 0, 0}, {0, 0, 0}})), "-");
    EXPECT_EQ(
        story({at(1, 0), at(-1, 0)}, ring({{0, -5, 0}, {0, 0, 0}, {0, 0, 0}, {0, 5, 0}})), "L");
}

TEST(Crossed, NeedsNoTimes)
{
    const Value position = walked({{1, at(1, 0)}, {50, at(-1, 0)}});
    EXPECT_TRUE(isTrue(answer(crossed, {position, upwards()})));
}

TEST(Crossed, LosesNoCrossingToAPositionThatIsNone)
{
    for (const Value& entry :
         Values{nullptr, word("?"), at(kNaN, 0), disguised("3DDPOINT"), square()}) {
        const Value position = walked({{1, at(1, 0)}, {2, entry}, {3, at(-1, 0)}});
        EXPECT_TRUE(isTrue(answer(crossedLeft, {position, upwards()})));
    }
}

TEST(Crossed, PassesOverAPositionStoredTwiceInTheFrame)
{
    const Value position = walked({{1, at(1, 0)}, {2, at(-1, 0)}, {2, at(-2, 0)}});
    EXPECT_TRUE(isTrue(answer(crossedLeft, {position, upwards()})));
}

TEST(Crossed, IsFalseForWrongArguments)
{
    const Value step = walked({at(1, 0), at(-1, 0)});
    for (const auto relation : {crossed, crossedLeft, crossedRight}) {
        EXPECT_TRUE(isFalse(answer(relation, {})));
        EXPECT_TRUE(isFalse(answer(relation, {step})));
        EXPECT_TRUE(isFalse(answer(relation, {step, at(0, -1), at(0, 1), at(0, 2)})));
        EXPECT_TRUE(isFalse(answer(relation, {at(-1, 0), upwards()})));
        for (const Value& wrong : Values{nullptr, whole(1), at(kNaN, 0), disguised("3DDPOINTS")}) {
            EXPECT_TRUE(isFalse(answer(relation, {wrong, upwards()})));
            EXPECT_TRUE(isFalse(answer(relation, {step, wrong})));
            EXPECT_TRUE(isFalse(answer(relation, {step, wrong, at(0, 1)})));
            EXPECT_TRUE(isFalse(answer(relation, {step, at(0, -1), wrong})));
        }
        EXPECT_TRUE(isFalse(answer(relation, {step, ring({})})));
        EXPECT_TRUE(isFalse(answer(relation, {step, ring({{0, 0, 0}})})));
        EXPECT_TRUE(isFalse(answer(relation, {step, ring({{0, -5, 0}, {0, kNaN, 0}})})));
        EXPECT_TRUE(isFalse(answer(relation, {step, ring({{0, -5, 0}, {0, 5, kNaN}})})));
        EXPECT_TRUE(isFalse(answer(relation, {step, at(0, -1)})));
        EXPECT_TRUE(isFalse(answer(relation, {step, upwards(), at(0, 1)})));
    }
}

TEST(LineCrossing, AgreesWithThePlainRuleOnMovedPositions)
{
    Lattice lattice(7);
    int crossings = 0;
    for (int i = 0; i < 200000; ++i) {
        const auto line = lattice.line(2 + i % 3);
        const Point from = lattice.any();
        const Point to = lattice.any();
        const int found = passage(from, to, line);
        ASSERT_EQ(found, plainPassage(moved(from), moved(to), line));
        crossings += std::abs(found);
    }
    EXPECT_GT(crossings, 10000);
}

TEST(LineCrossing, AWalkThatReturnsHasEnteredARingAsOftenAsItLeft)
{
    Lattice lattice(11);
    int crossings = 0;
    for (int i = 0; i < 5000; ++i) {
        auto closed = lattice.line(5);
        closed.push_back(closed.front());
        const Point start = lattice.any();
        Point here = start;
        int sum = 0;
        for (int step = 0; step < 20; ++step) {
            const Point next = step == 19 ? start : lattice.any();
            const int found = passage(here, next, closed);
            sum += found;
            crossings += std::abs(found);
            here = next;
        }
        ASSERT_EQ(sum, 0);
    }
    EXPECT_GT(crossings, 1000);
}

TEST(LineCrossing, CrossingsOfALongLineAlternate)
{
    Lattice lattice(13);
    for (int i = 0; i < 200; ++i) {
        // Through the lattice in whichever direction, far beyond it on both ends.
        const Point middle = lattice.any();
        const Point aim = lattice.any();
        const double dx = aim.x - middle.x;
        const double dy = aim.y - middle.y;
        const Point begin{middle.x - 1000 * dx, middle.y - 1000 * dy, 0.0, false};
        const Point end{middle.x + 1000 * dx, middle.y + 1000 * dy, 0.0, false};
        Point here = lattice.any();
        int last = 0;
        for (int step = 0; step < 50; ++step) {
            const Point next = lattice.any();
            const int found = passage(here, next, begin, end);
            ASSERT_TRUE(found == 0 || found != last);
            last = found != 0 ? found : last;
            here = next;
        }
    }
}

} // namespace scenariomatch
