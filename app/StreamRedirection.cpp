#include "app/StreamRedirection.h"

#include <utility>

namespace scenariomatch
{

StreamRedirection::StreamRedirection(std::ostream& stream, std::streambuf* target)
    : m_stream(stream)
    , m_original(stream.rdbuf(target))
{
}

StreamRedirection::~StreamRedirection()
{
    m_stream.flush();
    m_stream.rdbuf(m_original);
}

LineFilter::LineFilter(Judge isTakenOut, std::streambuf& talk, std::ostream& trace)
    : m_isTakenOut(std::move(isTakenOut))
    , m_talk(talk)
    , m_trace(trace)
{
}

LineFilter::~LineFilter()
{
    pass();
}

LineFilter::int_type LineFilter::overflow(int_type character)
{
    if (traits_type::eq_int_type(character, traits_type::eof())) {
        return traits_type::not_eof(character);
    }
    m_line += traits_type::to_char_type(character);
    if (m_line.back() == '\n') {
        pass();
    }
    return character;
}

void LineFilter::pass()
{
    const std::string_view line = m_line;
    if (m_isTakenOut(line.substr(0, line.find('\n')))) {
        m_trace << m_line;
    } else {
        m_talk.sputn(m_line.data(), static_cast<std::streamsize>(m_line.size()));
    }
    m_line.clear();
}

} // namespace scenariomatch
