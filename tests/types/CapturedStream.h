#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace scenariomatch
{

// Collects what is written to a standard stream while it lives.
//
// Example:
//     CapturedStream errors(std::cerr);
//     EXPECT_EQ(errors.text(), "");
class CapturedStream
{
public:
    explicit CapturedStream(std::ostream& stream)
        : m_stream(stream)
        , m_before(stream.rdbuf(m_written.rdbuf()))
    {
    }

    CapturedStream(const CapturedStream&) = delete;
    CapturedStream(CapturedStream&&) = delete;
    CapturedStream& operator=(const CapturedStream&) = delete;
    CapturedStream& operator=(CapturedStream&&) = delete;

    ~CapturedStream() { m_stream.rdbuf(m_before); }

    std::string text() const { return m_written.str(); }

private:
    std::ostringstream m_written;
    std::ostream& m_stream;
    std::streambuf* m_before;
};

} // namespace scenariomatch
