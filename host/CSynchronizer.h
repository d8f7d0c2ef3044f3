#pragma once

#include "host/HostExport.h"

namespace scenariomatch
{

// Wall clock of a frame; month and day count from 1.
struct DateTime
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};

} // namespace scenariomatch

// The platform's clock: which frame is being processed and when it was taken.
//
// The platform sets it before each frame. A value; copies are independent.
//
// Example:
//     CSynchronizer synchronizer;
//     synchronizer.setFrameNumber(12);
//     synchronizer.setDateTime({.year = 2026, .month = 5, .day = 4, .hour = 10});
class CS_HOST_EXPORT CSynchronizer
{
public:
    int getFrameNumber() const { return m_frameNumber; }

    int getYear() const { return m_dateTime.year; }

    int getMonth() const { return m_dateTime.month; }

    int getDay() const { return m_dateTime.day; }

    int getHour() const { return m_dateTime.hour; }

    int getMinute() const { return m_dateTime.minute; }

    int getSecond() const { return m_dateTime.second; }

    int getMillisecond() const { return m_dateTime.millisecond; }

    void setFrameNumber(int frameNumber) { m_frameNumber = frameNumber; }

    void setDateTime(const scenariomatch::DateTime& dateTime) { m_dateTime = dateTime; }

private:
    int m_frameNumber = 0;
    scenariomatch::DateTime m_dateTime;
};
