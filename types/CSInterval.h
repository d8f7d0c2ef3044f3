#pragma once

#include "types/CSTimeStamp.h"

#include <iosfwd>
#include <memory>

// A time span between two shared time stamps, tag "INTERVAL".
class CS_EXPORT CSInterval : public CSBasicType
{
public:
    // Both ends empty; such an interval has no duration to ask for.
    CSInterval();
    CSInterval(std::shared_ptr<CSTimeStamp> start, std::shared_ptr<CSTimeStamp> end);
    // Takes the base part over, not the value: the tag is the source's, both ends are empty.
    explicit CSInterval(const CSBasicType& other);

    // Seconds from start to end; both ends must be set.
    double duration() const;

    // Two intervals are equal when they share the same two time stamp objects, not when their times
    // agree.
    bool operator==(const CSInterval& other) const;
    bool operator!=(const CSInterval& other) const;

    std::shared_ptr<CSTimeStamp> m_start;
    std::shared_ptr<CSTimeStamp> m_end;
};

// Prints the addresses of the two time stamps, a blank after each.
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CSInterval& value);
