#include "engine/Neighbourhoods.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace scenariomatch
{

namespace
{

// So much more than the reach is looked at that no rounding loses a neighbour.
constexpr double kSlack = 1.0 + 1e-9;

// More than this many per agent, on average, are not worth remembering.
constexpr std::size_t kMostNeighbours = 64;

// Questions with about the same reach are answered together.
double rounded(double reach)
{
    return reach > 0.0 ? std::exp2(std::ceil(std::log2(reach))) : 0.0;
}

bool isPlace(const CSPlainValue& value)
{
    return value.isPoint() && std::isfinite(value.m_point.x) && std::isfinite(value.m_point.y);
}

} // namespace

double Neighbourhoods::squaredLimit(double reach)
{
    const double side = std::max(reach, 0.0) * kSlack;
    return side * side + std::numeric_limits<double>::min();
}

std::size_t Neighbourhoods::numberOf(const Side& from, const Side& to, double reach)
{
    const double upTo = rounded(reach);
    const auto found =
        std::find_if(m_questions.begin(), m_questions.end(), [&](const Question& known) {
            return known.from == from && known.to == to && known.reach == upTo;
        });
    if (found != m_questions.end()) {
        return static_cast<std::size_t>(found - m_questions.begin());
    }
    Question& question = m_questions.emplace_back();
    question.from = from;
    question.to = to;
    question.reach = upTo;
    return m_questions.size() - 1;
}

Neighbourhoods::Found Neighbourhoods::near(std::size_t number, std::uint32_t rank, FrameView& view)
{
    Question& question = m_questions[number];
    if (question.frame != view.frame()) {
        question.frame = view.frame();
        answer(question, view);
    }
    if (question.isTooMany || question.isAnyone[rank] != 0) {
        return {};
    }
    const std::span<const Neighbour> all(question.neighbours);
    const std::size_t begin = question.begins[rank];
    return {false, all.subspan(begin, question.begins[rank + 1] - begin)};
}

void Neighbourhoods::answer(Question& question, FrameView& view)
{
    const auto from = view.ofType(question.from.type);
    const auto fromValues = view.values(question.from.attribute, question.from.type);
    const auto to = view.ofType(question.to.type);
    const auto toValues = view.values(question.to.attribute, question.to.type);
    m_from.clear();
    m_to.clear();
    m_everywhere.clear();
    question.isAnyone.assign(from.size(), 0);
    for (std::uint32_t rank = 0; rank < from.size(); ++rank) {
        const CSPlainValue& value = fromValues[from[rank]];
        if (isPlace(value)) {
            m_from.push_back({value.m_point.x, value.m_point.y, rank});
        } else {
            question.isAnyone[rank] = 1;
        }
    }
    for (std::uint32_t rank = 0; rank < to.size(); ++rank) {
        const CSPlainValue& value = toValues[to[rank]];
        if (isPlace(value)) {
            m_to.push_back({value.m_point.x, value.m_point.y, rank});
        } else {
            m_everywhere.push_back(rank);
        }
    }
    std::sort(m_to.begin(), m_to.end(), [](const Place& a, const Place& b) { return a.x < b.x; });
    sweep(question);
}

// Places are sorted along x: only those in a strip as wide as the reach are looked at.
void Neighbourhoods::sweep(Question& question)
{
    const std::size_t most = (m_from.size() + 1) * kMostNeighbours;
    question.begins.assign(question.isAnyone.size() + 1, 0);
    question.neighbours.clear();
    question.isTooMany = false;
    std::size_t filled = 0;
    for (const Place& from : m_from) {
        const auto begin = static_cast<std::uint32_t>(question.neighbours.size());
        std::fill(
            question.begins.begin() + static_cast<std::ptrdiff_t>(filled),
            question.begins.begin() + static_cast<std::ptrdiff_t>(from.rank) + 1,
            begin);
        filled = from.rank + 1;
        const double left = from.x - question.reach * kSlack;
        const auto first = std::partition_point(
            m_to.begin(), m_to.end(), [left](const Place& place) { return place.x < left; });
        addNear(question, from, static_cast<std::size_t>(first - m_to.begin()));
        if (question.neighbours.size() > most) {
            question.isTooMany = true;
            return;
        }
    }
    std::fill(
        question.begins.begin() + static_cast<std::ptrdiff_t>(filled),
        question.begins.end(),
        static_cast<std::uint32_t>(question.neighbours.size()));
}

void Neighbourhoods::addNear(Question& question, const Place& from, std::size_t first)
{
    const std::size_t begin = question.neighbours.size();
    const double limit = squaredLimit(question.reach);
    const double right = from.x + question.reach * kSlack;
    for (std::size_t i = first; i < m_to.size() && m_to[i].x <= right; ++i) {
        const double dx = m_to[i].x - from.x;
        const double dy = m_to[i].y - from.y;
        const double squared = dx * dx + dy * dy;
        if (squared <= limit) {
            question.neighbours.push_back({m_to[i].rank, squared});
        }
    }
    for (const std::uint32_t rank : m_everywhere) {
        question.neighbours.push_back({rank, 0.0});
    }
    std::sort(
        question.neighbours.begin() + static_cast<std::ptrdiff_t>(begin),
        question.neighbours.end(),
        [](const Neighbour& a, const Neighbour& b) { return a.rank < b.rank; });
}

} // namespace scenariomatch
