#pragma once

#include <functional>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace scenariomatch
{

// Sends what is written to a stream somewhere else for as long as it lives. With a null target the
// stream refuses all writing at once, which costs next to nothing.
class StreamRedirection
{
public:
    StreamRedirection(std::ostream& stream, std::streambuf* target);
    StreamRedirection(const StreamRedirection&) = delete;
    StreamRedirection(StreamRedirection&&) = delete;
    StreamRedirection& operator=(const StreamRedirection&) = delete;
    StreamRedirection& operator=(StreamRedirection&&) = delete;
    ~StreamRedirection();

private:
    std::ostream& m_stream;
    std::streambuf* m_original;
};

// Takes lines out of a stream of messages.
class LineFilter : public std::streambuf
{
public:
    // Says whether a line, without its end, is taken out.
    using Judge = std::function<bool(std::string_view)>;

    // Lines go on to talk, those taken out to trace.
    LineFilter(Judge isTakenOut, std::streambuf& talk, std::ostream& trace);
    LineFilter(const LineFilter&) = delete;
    LineFilter(LineFilter&&) = delete;
    LineFilter& operator=(const LineFilter&) = delete;
    LineFilter& operator=(LineFilter&&) = delete;
    ~LineFilter() override;

protected:
    int_type overflow(int_type character) override;

private:
    void pass();

    Judge m_isTakenOut;
    std::streambuf& m_talk;
    std::ostream& m_trace;
    std::string m_line;
};

} // namespace scenariomatch
