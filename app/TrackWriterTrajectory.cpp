#include "app/TrackWriterTrajectory.h"

#include <fmt/format.h>
#include <iterator>
#include <ostream>

namespace scenariomatch
{

TrackWriterTrajectory::TrackWriterTrajectory(std::ostream& out)
    : m_out(out)
{
}

void TrackWriterTrajectory::write(const TrackFrame& frame)
{
    m_text.clear();
    for (const TrackedActor& actor : frame.actors) {
        if (actor.position) {
            fmt::format_to(
                std::back_inserter(m_text),
                "{} {} {} {} {}\n",
                actor.id,
                frame.number,
                actor.position->x,
                actor.position->y,
                actor.position->z);
        }
    }
    m_out.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
}

void TrackWriterTrajectory::finish()
{
    m_out.flush();
}

} // namespace scenariomatch
