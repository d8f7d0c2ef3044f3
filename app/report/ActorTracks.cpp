#include "app/report/ActorTracks.h"

#include "app/report/KeyPoints.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <limits>

namespace scenariomatch
{

namespace
{

// A range of numbers that grows.
class Span
{
public:
    void add(double number)
    {
        m_least = std::min(m_least, number);
        m_most = std::max(m_most, number);
    }

    double length() const { return std::max(m_most - m_least, 0.0); }

private:
    double m_least = std::numeric_limits<double>::infinity();
    double m_most = -std::numeric_limits<double>::infinity();
};

// `"x":[100,2,-1]`: the first number, then how much each one is more than the one before.
template <typename Get>
void appendDeltas(
    std::string& text, const char* key, const std::vector<KeyPoint>& points, Get&& get)
{
    fmt::format_to(std::back_inserter(text), "\"{}\":[", key);
    std::int64_t last = 0;
    for (const KeyPoint& point : points) {
        const std::int64_t number = get(point);
        fmt::format_to(
            std::back_inserter(text), "{}{}", text.back() == '[' ? "" : ",", number - last);
        last = number;
    }
    text += "],";
}

void appendGaps(std::string& text, const std::vector<KeyPoint>& points)
{
    text += "\"gap\":[";
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (points[i].isAfterGap) {
            fmt::format_to(std::back_inserter(text), "{}{}", text.back() == '[' ? "" : ",", i);
        }
    }
    text += "]";
}

} // namespace

TrackPrecision TrackPrecision::ofScene(double side)
{
    // Half a dot where the scene fills a page; a scene in metres keeps five centimetres.
    constexpr double kLeastDeparture = 0.05;
    constexpr double kParts = 2000.0;
    constexpr double kQuanta = 5.0;
    const double departure = std::max(side / kParts, kLeastDeparture);
    return {departure / kQuanta, departure};
}

// A detector misses somebody for a few frames: that is no going away.
bool ActorTracks::isAfterGap(const Track& track, std::int64_t time) const
{
    constexpr std::int64_t kBridged = 1000;
    return !track.places.empty() && track.nextFrame != m_frames &&
           time - track.places.back().time > kBridged;
}

void ActorTracks::addStep(std::int64_t step)
{
    if (m_steps.empty() || m_steps.back().milliseconds != step) {
        m_steps.push_back({step, 0});
    }
    ++m_steps.back().times;
}

void ActorTracks::addFrame(const TrackFrame& frame, std::int64_t time)
{
    if (m_frames > 0) {
        addStep(time - m_lastTime);
    }
    m_lastTime = time;
    for (const TrackedActor& seen : frame.actors) {
        const auto [entry, isNew] = m_tracks.try_emplace(seen.id);
        Track& track = entry->second;
        if (isNew) {
            track.actor = {seen.type, time, time};
        }
        track.actor.last = time;
        if (!seen.position) {
            continue;
        }
        if (isAfterGap(track, time)) {
            track.gaps.push_back(track.places.size());
        }
        track.places.push_back({time, seen.position->x, seen.position->y});
        track.nextFrame = m_frames + 1;
    }
    ++m_frames;
}

std::map<int, ActorTracks::Actor> ActorTracks::actors() const
{
    std::map<int, Actor> actors;
    for (const auto& [id, track] : m_tracks) {
        actors.emplace_hint(actors.end(), id, track.actor);
    }
    return actors;
}

double ActorTracks::side() const
{
    Span width;
    Span depth;
    for (const auto& [id, track] : m_tracks) {
        for (const Place& place : track.places) {
            width.add(static_cast<double>(place.x));
            depth.add(static_cast<double>(place.y));
        }
    }
    return std::max(width.length(), depth.length());
}

void ActorTracks::appendTrack(
    const Track& track, const TrackPrecision& precision, std::string& text)
{
    KeyPoints finder(precision.quantum, precision.departure);
    auto gap = track.gaps.begin();
    for (std::size_t i = 0; i < track.places.size(); ++i) {
        if (gap != track.gaps.end() && *gap == i) {
            finder.interrupt();
            ++gap;
        }
        const Place& place = track.places[i];
        finder.add({place.time, static_cast<double>(place.x), static_cast<double>(place.y)});
    }
    const std::vector<KeyPoint> points = finder.take();
    text += '{';
    appendDeltas(text, "t", points, [](const KeyPoint& point) { return point.time; });
    appendDeltas(text, "x", points, [](const KeyPoint& point) { return point.x; });
    appendDeltas(text, "y", points, [](const KeyPoint& point) { return point.y; });
    appendGaps(text, points);
    text += '}';
}

std::string ActorTracks::json(const TrackPrecision& precision) const
{
    std::string text = fmt::format(R"({{"quantum":{},"steps":[)", precision.quantum);
    for (const Step& step : m_steps) {
        text += text.back() == '[' ? "" : ",";
        fmt::format_to(std::back_inserter(text), "[{},{}]", step.milliseconds, step.times);
    }
    text += R"(],"actors":[)";
    for (const auto& [id, track] : m_tracks) {
        text += text.back() == '[' ? "" : ",";
        appendTrack(track, precision, text);
    }
    return text + "]}";
}

} // namespace scenariomatch
