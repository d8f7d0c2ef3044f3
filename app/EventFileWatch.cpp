#include "app/EventFileWatch.h"

#include <array>
#include <fcntl.h>
#include <fmt/format.h>
#include <fstream>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr std::string_view kFrameEnd = " </RHVideoFrame>\n";
constexpr std::string_view kFileEnd = "</Tarvos>\n";

enum class Kind { Missing, File, Device, Other };

Kind kindOf(const std::string& path, std::int64_t& size)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return Kind::Missing;
    }
    size = status.st_size;
    if (S_ISREG(status.st_mode)) {
        return Kind::File;
    }
    return S_ISCHR(status.st_mode) ? Kind::Device : Kind::Other;
}

// Writes nothing, which a full device refuses, too.
bool takesAnything(const std::string& path)
{
    const int device = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY);
    if (device < 0) {
        return false;
    }
    const bool isTaken = ::write(device, "", 0) == 0;
    ::close(device);
    return isTaken;
}

bool endsWith(const std::string& path, std::int64_t size, std::string_view end)
{
    std::array<char, 32> last{};
    const auto length = static_cast<std::int64_t>(end.size());
    const int file = size < length ? -1 : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    const ssize_t count = ::pread(file, last.data(), end.size(), size - length);
    ::close(file);
    return count == static_cast<ssize_t>(end.size()) &&
           std::string_view(last.data(), end.size()) == end;
}

} // namespace

EventFileWatch::EventFileWatch(std::string path)
    : m_path(std::move(path))
{
    kindOf(m_path, m_size);
}

bool EventFileWatch::hasFrameArrived()
{
    std::int64_t size = 0;
    const Kind kind = kindOf(m_path, size);
    if (kind == Kind::Device) {
        return takesAnything(m_path);
    }
    const bool hasChanged = std::exchange(m_size, size) != size;
    return kind == Kind::Other ||
           (kind == Kind::File && hasChanged && endsWith(m_path, size, kFrameEnd));
}

void EventFileWatch::addFrame(int number)
{
    ++m_frames;
    if (!hasFrameArrived()) {
        m_firstLost = m_lost == 0 ? number : m_firstLost;
        ++m_lost;
    }
}

void EventFileWatch::cut() const
{
    std::int64_t size = 0;
    if (kindOf(m_path, size) == Kind::File && size > m_size) {
        static_cast<void>(::truncate(m_path.c_str(), m_size) == 0);
    }
}

void EventFileWatch::close() const
{
    cut();
    std::ofstream(m_path, std::ios::app) << kFileEnd;
}

std::string EventFileWatch::judgeEnd() const
{
    std::int64_t size = 0;
    const Kind kind = kindOf(m_path, size);
    const std::string lost = fmt::format(
        "{} of {} frames could not be written, the first is frame {}",
        m_lost,
        m_frames,
        m_firstLost);
    const bool isClosed = kind == Kind::Other || (kind == Kind::Device && takesAnything(m_path)) ||
                          (kind == Kind::File && endsWith(m_path, size, kFileEnd));
    const std::string nothing = isClosed ? "" : "its end could not be written";
    if (isClosed || kind != Kind::File) {
        return m_lost > 0 ? lost : nothing;
    }
    const std::string help = fmt::format("`scenariomatch repair {}` adds it", m_path);
    return m_lost > 0 ? fmt::format("{}; nor could its end: {}", lost, help)
                      : fmt::format("{}: {}", nothing, help);
}

} // namespace scenariomatch
