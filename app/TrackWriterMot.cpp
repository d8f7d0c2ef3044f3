#include "app/TrackWriterMot.h"

#include <cstdint>
#include <fmt/format.h>
#include <iterator>
#include <ostream>

namespace scenariomatch
{

TrackWriterMot::TrackWriterMot(std::ostream& out)
    : m_out(out)
{
}

void TrackWriterMot::write(const TrackFrame& frame)
{
    m_text.clear();
    for (const TrackedActor& actor : frame.actors) {
        const TrackPoint position = actor.position.value_or(TrackPoint{-1.0F, -1.0F, -1.0F});
        fmt::format_to(
            std::back_inserter(m_text),
            "{},{},{},{},{},{},1,{},{},{}\n",
            std::int64_t{frame.number} + 1,
            actor.id,
            actor.box.x,
            actor.box.y,
            actor.box.width,
            actor.box.height,
            position.x,
            position.y,
            position.z);
    }
    m_out.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
}

void TrackWriterMot::finish()
{
    m_out.flush();
}

} // namespace scenariomatch
