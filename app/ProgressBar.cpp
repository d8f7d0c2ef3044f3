#include "app/ProgressBar.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <ostream>

namespace scenariomatch
{

namespace
{

constexpr std::chrono::milliseconds kPause{200};
constexpr int kBarWidth = 24;
constexpr double kLongestSeconds = 359'999.0;

} // namespace

ProgressBar::ProgressBar(std::ostream& terminal)
    : m_terminal(terminal)
{
}

ProgressBar::~ProgressBar()
{
    wipe();
}

void ProgressBar::show(std::size_t frames, double part)
{
    const Clock::time_point now = Clock::now();
    if (now - m_lastShown < kPause) {
        return;
    }
    m_lastShown = now;
    const std::string text =
        line(frames, part, std::chrono::duration<double>(now - m_start).count());
    m_terminal << '\r' << fmt::format("{:<{}}", text, m_width) << std::flush;
    m_width = text.size();
}

void ProgressBar::wipe()
{
    if (m_width > 0) {
        m_terminal << '\r' << std::string(m_width, ' ') << '\r' << std::flush;
        m_width = 0;
    }
}

std::string ProgressBar::line(std::size_t frames, double part, double seconds)
{
    const double rate = seconds > 0.0 ? static_cast<double>(frames) / seconds : 0.0;
    std::string work = fmt::format("{} frames, {:.0f}/s", frames, rate);
    if (part < 0.0) {
        return work;
    }
    const auto filled = static_cast<std::size_t>(std::lround(std::min(part, 1.0) * kBarWidth));
    std::string text = "[" + std::string(filled, '#') + std::string(kBarWidth - filled, ' ');
    text += fmt::format("] {:3.0f} %  {}", std::min(part, 1.0) * 100.0, work);
    if (part > 0.0) {
        const auto left =
            static_cast<int>(std::min(seconds * (1.0 - part) / part, kLongestSeconds));
        text += fmt::format("  {}:{:02}:{:02} left", left / 3600, left / 60 % 60, left % 60);
    }
    return text;
}

} // namespace scenariomatch
