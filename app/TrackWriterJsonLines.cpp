#include "app/TrackWriterJsonLines.h"

#include "app/FrameClock.h"
#include "app/JsonString.h"

#include <fmt/format.h>
#include <iterator>
#include <ostream>

namespace scenariomatch
{

namespace
{

void appendActor(std::string& text, const TrackedActor& actor)
{
    const auto out = std::back_inserter(text);
    fmt::format_to(out, R"({{"id":{},"type":)", actor.id);
    appendJsonString(text, actor.type);
    const TrackBox& box = actor.box;
    fmt::format_to(out, R"(,"box":[{},{},{},{}])", box.x, box.y, box.width, box.height);
    if (actor.position) {
        const TrackPoint& point = *actor.position;
        fmt::format_to(out, R"(,"position":[{},{},{}])", point.x, point.y, point.z);
    }
    if (actor.size) {
        const TrackSize& size = *actor.size;
        fmt::format_to(out, R"(,"size":[{},{},{}])", size.width, size.height, size.depth);
    }
    text += '}';
}

} // namespace

TrackWriterJsonLines::TrackWriterJsonLines(std::ostream& out)
    : m_out(out)
{
}

void TrackWriterJsonLines::write(const TrackFrame& frame)
{
    m_text.clear();
    fmt::format_to(
        std::back_inserter(m_text),
        R"({{"frame":{},"time":"{}","actors":[)",
        frame.number,
        printClock(frame.clock));
    for (const TrackedActor& actor : frame.actors) {
        m_text += m_text.back() == '[' ? "" : ",";
        appendActor(m_text, actor);
    }
    m_text += "]}\n";
    m_out.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
}

void TrackWriterJsonLines::finish()
{
    m_out.flush();
}

} // namespace scenariomatch
