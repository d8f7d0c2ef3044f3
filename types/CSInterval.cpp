#include "types/CSInterval.h"

#include <limits>
#include <ostream>
#include <utility>

CSInterval::CSInterval()
    : CSBasicType("INTERVAL")
{
}

CSInterval::CSInterval(std::shared_ptr<CSTimeStamp> start, std::shared_ptr<CSTimeStamp> end)
    : CSBasicType("INTERVAL")
    , m_start(std::move(start))
    , m_end(std::move(end))
{
}

CSInterval::CSInterval(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

double CSInterval::duration() const
{
    return m_start ? m_start->duration(m_end) : std::numeric_limits<double>::quiet_NaN();
}

bool CSInterval::operator==(const CSInterval& other) const
{
    return m_start == other.m_start && m_end == other.m_end;
}

bool CSInterval::operator!=(const CSInterval& other) const
{
    return !(*this == other);
}

std::ostream& operator<<(std::ostream& out, const CSInterval& value)
{
    return out << static_cast<const void*>(value.m_start.get()) << " "
               << static_cast<const void*>(value.m_end.get()) << " ";
}
