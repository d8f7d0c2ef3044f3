#pragma once

#include "types/CSBasicType.h"

#include <cstdint>
#include <iosfwd>
#include <memory>

// The time of one video frame, tag "TIMESTAMP".
//
// The instant is m_seconds + m_milliseconds / 1000; every comparison and duration uses these two
// fields only. Frame number and calendar fields are carried along for printing by others.
class CS_EXPORT CSTimeStamp : public CSBasicType
{
public:
    CSTimeStamp();
    // Stores the calendar fields (month and day from 1) and computes the instant from them.
    CSTimeStamp(
        int frameID,
        int year,
        int month,
        int day,
        int hour,
        int minute,
        int second,
        int millisecond); // NOLINT(readability-function-size): the eight fields are the interface
    // Stores the instant as it is; the calendar fields are zero.
    CSTimeStamp(int frameID, double seconds, double milliseconds);
    // Takes the base part over, not the value: the tag is the source's, the own fields are zero.
    explicit CSTimeStamp(const CSBasicType& other);

    // Seconds since the epoch of the calendar fields, read in the process's time zone without
    // daylight saving.
    void computeTime();

    // Seconds from this time stamp to the other one; positive when the other is later.
    double duration(const CSTimeStamp* other) const;
    double duration(const CSTimeStamp& other) const;
    double duration(const std::shared_ptr<CSTimeStamp>& other) const;

    bool operator==(const CSTimeStamp& other) const;
    bool operator!=(const CSTimeStamp& other) const;
    bool operator<(const CSTimeStamp& other) const;
    bool operator<=(const CSTimeStamp& other) const;
    bool operator>(const CSTimeStamp& other) const;
    bool operator>=(const CSTimeStamp& other) const;

    // Sum and difference of the two instants, in seconds.
    double operator+(const CSTimeStamp& other) const;
    double operator-(const CSTimeStamp& other) const;

    std::int32_t m_frameID = 0;
    std::int32_t m_year = 0;
    std::int32_t m_month = 0;
    std::int32_t m_day = 0;
    std::int32_t m_hour = 0;
    std::int32_t m_minute = 0;
    std::int32_t m_second = 0;
    std::int32_t m_millisecond = 0;
    // Seconds since the epoch.
    double m_seconds = 0.0;
    // The milliseconds part, never folded into m_seconds.
    double m_milliseconds = 0.0;
};

// Prints seconds and milliseconds, a blank after each.
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CSTimeStamp& value);
