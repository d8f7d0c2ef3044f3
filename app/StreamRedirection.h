#pragma once

#include <ostream>
#include <set>
#include <streambuf>
#include <string>

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

// Takes the process's lines about missing parameters out of a stream of messages when the user has
// not given these parameters: that their default values are used is what he asked for.
class MissingParameterFilter : public std::streambuf
{
public:
    // Lines go on to talk, those taken out to trace.
    MissingParameterFilter(std::set<std::string> given, std::streambuf& talk, std::ostream& trace);
    MissingParameterFilter(const MissingParameterFilter&) = delete;
    MissingParameterFilter(MissingParameterFilter&&) = delete;
    MissingParameterFilter& operator=(const MissingParameterFilter&) = delete;
    MissingParameterFilter& operator=(MissingParameterFilter&&) = delete;
    ~MissingParameterFilter() override;

protected:
    int_type overflow(int_type character) override;

private:
    void pass();
    bool isTakenOut() const;

    std::set<std::string> m_given;
    std::streambuf& m_talk;
    std::ostream& m_trace;
    std::string m_line;
};

} // namespace scenariomatch
