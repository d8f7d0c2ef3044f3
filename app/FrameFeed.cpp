#include "app/FrameFeed.h"

namespace scenariomatch
{

namespace
{

DateTime dateTimeOf(const TrackClock& clock)
{
    return {
        clock.year,
        clock.month,
        clock.day,
        clock.hour,
        clock.minute,
        clock.second,
        clock.millisecond};
}

// What the tracks do not carry is 0 to the platform.
void fill(rhmDataActor& actor, const TrackedActor& tracked)
{
    const TrackPoint position = tracked.position.value_or(TrackPoint());
    const TrackSize size = tracked.size.value_or(TrackSize());
    actor.setIdent(tracked.id);
    actor.setType(tracked.type);
    actor.setBoundingBox2D({tracked.box.x, tracked.box.y, tracked.box.width, tracked.box.height});
    actor.setCurrentPosition({position.x, position.y, position.z});
    actor.setInformation3D(Information3D(size.height, size.width, size.depth));
}

} // namespace

void FrameFeed::addFrame(const TrackFrame& frame)
{
    CSynchronizer& synchronizer = *m_process.getSynchronizer();
    synchronizer.setFrameNumber(frame.number);
    synchronizer.setDateTime(dateTimeOf(frame.clock));
    setActors(frame);
    m_process.performEventRecognition();
}

// The process shares the list: it is only changed when the number of objects is another one.
void FrameFeed::setActors(const TrackFrame& frame)
{
    const auto count = static_cast<qsizetype>(frame.actors.size());
    while (m_actors.size() < count) {
        m_actors.append(QSharedPointer<rhmDataActor>::create());
    }
    if (m_actors.size() > count) {
        m_actors.resize(count);
    }
    for (qsizetype i = 0; i < count; ++i) {
        fill(*m_actors.at(i), frame.actors[static_cast<std::size_t>(i)]);
    }
    m_process.setActors(m_actors);
}

} // namespace scenariomatch
