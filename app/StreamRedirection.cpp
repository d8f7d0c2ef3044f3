#include "app/StreamRedirection.h"

#include <string_view>
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

MissingParameterFilter::MissingParameterFilter(
    std::set<std::string> given, std::streambuf& talk, std::ostream& trace)
    : m_given(std::move(given))
    , m_talk(talk)
    , m_trace(trace)
{
}

MissingParameterFilter::~MissingParameterFilter()
{
    pass();
}

MissingParameterFilter::int_type MissingParameterFilter::overflow(int_type character)
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

void MissingParameterFilter::pass()
{
    if (isTakenOut()) {
        m_trace << m_line;
    } else {
        m_talk.sputn(m_line.data(), static_cast<std::streamsize>(m_line.size()));
    }
    m_line.clear();
}

bool MissingParameterFilter::isTakenOut() const
{
    constexpr std::string_view kBegin = "The parameter, ";
    constexpr std::string_view kEnd = ", is missing, default value is used";
    const std::size_t end = m_line.find(kEnd);
    if (!m_line.starts_with(kBegin) || end == std::string::npos) {
        return false;
    }
    const std::string key = m_line.substr(kBegin.size(), end - kBegin.size());
    // The context's message stands for another parameter as well.
    return key == "RHMContext" || !m_given.contains(key);
}

} // namespace scenariomatch
