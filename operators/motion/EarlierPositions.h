#pragma once

#include "operators/motion/Motion.h"

namespace scenariomatch
{

// Walks from a value's newest earlier position to its oldest, over those whose age can be told:
// finite points of frames that have a time stamp before the value's own.
//
// Keeps references to the value and the times; both must outlive the walk.
//
// Example:
//     EarlierPositions earlier(*value, times);
//     while (earlier.next()) { look(earlier.position(), earlier.age()); }
class EarlierPositions
{
public:
    EarlierPositions(const CSBasicType& current, const FrameTimes& times);

    // Moves on to the next older position; false when there is none.
    bool next();

    const Point& position() const { return m_position; }

    // Seconds from the position to the current one, more than 0.
    double age() const { return m_age; }

private:
    using History = std::map<int, std::shared_ptr<CSBasicType>>;

    bool read(const History::value_type& entry);
    // Null when it is not known.
    const CSTimeStamp* timeOf(int frame);

    const FrameTimes& m_times;
    // Where a time was found last. The one asked for next is mostly that of the frame before, and
    // the first one the latest.
    FrameTimes::const_iterator m_time;
    const CSTimeStamp* m_now = nullptr;
    History::const_reverse_iterator m_next;
    History::const_reverse_iterator m_end;
    Point m_position{};
    double m_age = 0.0;
};

// The latest finite point stored in a frame before the current value's, whether or not its time is
// known.
std::optional<Point> previousPosition(const CSBasicType& current);

} // namespace scenariomatch
