#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string>

namespace scenariomatch
{

// A line on a terminal that says how far the work is: part done, rate, remaining time. It is
// written anew a few times a second and wiped at the end.
//
// The stream must outlive the bar.
//
// Example:
//     ProgressBar bar(std::cerr);
//     bar.show(frames, reader.progress());
class ProgressBar
{
public:
    explicit ProgressBar(std::ostream& terminal);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar(ProgressBar&&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ProgressBar& operator=(ProgressBar&&) = delete;
    ~ProgressBar();

    // The part is 0 to 1, negative when it is not known.
    void show(std::size_t frames, double part);

    // Wipes the line, for other talk.
    void wipe();

    // The line for one moment.
    static std::string line(std::size_t frames, double part, double seconds);

private:
    using Clock = std::chrono::steady_clock;

    std::ostream& m_terminal;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_lastShown = m_start;
    std::size_t m_width = 0;
};

} // namespace scenariomatch
