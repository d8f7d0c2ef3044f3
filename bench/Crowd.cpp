#include "bench/Crowd.h"

#include "app/Scene.h"
#include "app/SceneTracks.h"
#include "app/TrackWriterJsonLines.h"

#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <ostream>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr int kSquareMetresPerPerson = 20;

Scene crowdScene(int people, int frames)
{
    SceneCrowd crowd;
    crowd.people = people;
    crowd.areaPerPerson = std::int64_t{1000} * kSquareMetresPerPerson;
    crowd.aspect = {4, 3};
    crowd.speeds = {800, 1800};
    crowd.fastLegs = 50;
    crowd.fastSpeeds = {2500, 4000};
    crowd.stops = 600;
    crowd.stopTimes = {0, 10'000};
    Scene scene;
    scene.frameRate = std::int64_t{1000} * Crowd::kFramesPerSecond;
    scene.duration = scene.frameTime(frames);
    scene.seed = static_cast<std::uint64_t>(people);
    scene.crowd = crowd;
    return scene;
}

double roundedToCentimetre(double metres)
{
    return std::round(metres * 100.0) / 100.0;
}

} // namespace

Crowd::Crowd(int people, int frames)
    : m_people(people)
    , m_width(std::sqrt(people * kSquareMetresPerPerson * 4.0 / 3.0))
    , m_height(std::sqrt(people * kSquareMetresPerPerson * 3.0 / 4.0))
{
    const Scene scene = crowdScene(people, frames);
    SceneTracks tracks(scene);
    m_frames.reserve(static_cast<std::size_t>(frames));
    TrackFrame frame;
    while (tracks.next(frame)) {
        m_frames.push_back(frame);
    }
}

CrowdZone Crowd::strip(std::string name, double from, double to) const
{
    constexpr double kBottom = 0.2;
    constexpr double kTop = 0.8;
    return {
        std::move(name),
        roundedToCentimetre(m_width * from),
        roundedToCentimetre(m_width * to),
        roundedToCentimetre(m_height * kBottom),
        roundedToCentimetre(m_height * kTop)};
}

CrowdZone Crowd::zoneA() const
{
    return strip("A", 0.10, 0.25);
}

CrowdZone Crowd::zoneB() const
{
    return strip("B", 0.75, 0.90);
}

void writeCrowd(int people, int frames, std::ostream& out)
{
    const Scene scene = crowdScene(people, frames);
    SceneTracks tracks(scene);
    TrackWriterJsonLines writer(out);
    TrackFrame frame;
    while (tracks.next(frame)) {
        writer.write(frame);
    }
    writer.finish();
}

std::string crowdContext(const std::vector<CrowdZone>& zones)
{
    std::string text = "<Context name=\"crowd\">\n";
    for (const CrowdZone& zone : zones) {
        text += fmt::format("<Element kind=\"zone\" name=\"{}\" shape=\"polygon\">\n", zone.name);
        const auto vertex = [&text](double x, double y) {
            text += fmt::format("<Vertex x=\"{}\" y=\"{}\" z=\"0\"/>\n", x, y);
        };
        vertex(zone.left, zone.bottom);
        vertex(zone.right, zone.bottom);
        vertex(zone.right, zone.top);
        vertex(zone.left, zone.top);
        vertex(zone.left, zone.bottom);
        text += "</Element>\n";
    }
    return text + "</Context>\n";
}

} // namespace scenariomatch
