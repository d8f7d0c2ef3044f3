#include "app/TrackInput.h"

#include "app/Interrupt.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>
#include <zlib.h>

namespace scenariomatch
{

namespace
{

constexpr std::size_t kFirstCapacity = std::size_t{64} * 1024;
constexpr std::size_t kCompressedChunk = std::size_t{64} * 1024;
// Longest text of a line that is too long.
constexpr std::size_t kExcerpt = 1024;
// How soon an interruption is noticed while nothing arrives.
constexpr int kWaitMilliseconds = 100;
constexpr int kGzipWindow = 15 + 16;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string systemReason(int number)
{
    return std::generic_category().message(number);
}

} // namespace

// The state of decompression and the compressed bytes that wait for it.
struct TrackInput::Inflater
{
    Inflater()
    {
        stream.zalloc = nullptr;
        isGood = inflateInit2(&stream, kGzipWindow) == Z_OK;
    }

    Inflater(const Inflater&) = delete;
    Inflater(Inflater&&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    Inflater& operator=(Inflater&&) = delete;

    ~Inflater() { inflateEnd(&stream); }

    z_stream stream{};
    std::vector<char> chunk = std::vector<char>(kCompressedChunk);
    bool isGood = false;
    // Between two members of the file: the end may come here, and only here.
    bool isBetween = true;
};

std::unique_ptr<TrackInput>
TrackInput::open(const std::string& path, Limits limits, std::string& error)
{
    if (path == "-") {
        return std::unique_ptr<TrackInput>(new TrackInput(STDIN_FILENO, false, 0, limits));
    }
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        error = systemReason(errno);
        return nullptr;
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode)) {
        error = systemReason(S_ISDIR(status.st_mode) ? EISDIR : errno);
        ::close(descriptor);
        return nullptr;
    }
    const auto length = S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
    return std::unique_ptr<TrackInput>(new TrackInput(descriptor, true, length, limits));
}

TrackInput::TrackInput(int descriptor, bool isOwner, std::uint64_t length, Limits limits)
    : m_descriptor(descriptor)
    , m_isOwner(isOwner)
    , m_length(length)
    , m_limits(limits)
{
}

TrackInput::~TrackInput()
{
    if (m_isOwner) {
        ::close(m_descriptor);
    }
}

double TrackInput::progress() const
{
    if (m_length == 0) {
        return -1.0;
    }
    return std::min(1.0, static_cast<double>(m_read) / static_cast<double>(m_length));
}

bool TrackInput::readMore()
{
    if (!m_isStarted) {
        start();
        if (m_end > m_begin) {
            return true;
        }
    }
    if (m_isAtEnd) {
        return false;
    }
    makeRoom();
    if (m_end == m_capacity) {
        return false;
    }
    const std::size_t room = m_capacity - m_end;
    char* const into = m_buffer.data() + m_end;
    const std::size_t count = m_inflater ? readCompressed(into, room) : readPlain(into, room);
    m_end += count;
    m_isAtEnd = count == 0;
    return count > 0;
}

bool TrackInput::nextLine(TextLine& line)
{
    std::size_t searched = 0;
    std::size_t length = std::string_view::npos;
    while (length == std::string_view::npos) {
        length = buffered().find('\n', searched);
        searched = m_end - m_begin;
        if (length == std::string_view::npos && (searched > m_limits.longestLine || !readMore())) {
            break;
        }
    }
    const std::size_t size = std::min(length, m_end - m_begin);
    if (size == 0 && length == std::string_view::npos) {
        return false;
    }
    line = {buffered().substr(0, size), ++m_lineNumber, size > m_limits.longestLine};
    if (line.isTooLong) {
        m_excerpt = line.text.substr(0, kExcerpt);
        line.text = m_excerpt;
    }
    m_begin += length == std::string_view::npos ? size : size + 1;
    if (line.isTooLong && length == std::string_view::npos) {
        skipRestOfLine();
    }
    if (!line.text.empty() && line.text.back() == '\r') {
        line.text.remove_suffix(1);
    }
    return true;
}

bool TrackInput::nextPiece(TextPiece& piece)
{
    while (true) {
        const std::size_t size = std::min(m_end - m_begin, m_limits.longestPiece);
        const char* const begin = m_buffer.data() + m_begin;
        const void* const found = size > 0 ? std::memchr(begin, '\n', size) : nullptr;
        const bool isLine = found != nullptr;
        if (!isLine && size < m_limits.longestPiece && readMore()) {
            continue;
        }
        if (size == 0) {
            return false;
        }
        m_lineNumber += m_isMidLine ? 0 : 1;
        m_isMidLine = !isLine;
        const auto length =
            isLine ? static_cast<std::size_t>(static_cast<const char*>(found) - begin) + 1 : size;
        piece = {{begin, length}, m_lineNumber};
        m_begin += length;
        return true;
    }
}

// Reads the first bytes, to see whether they are compressed, and passes over a byte order mark.
void TrackInput::start()
{
    m_isStarted = true;
    m_capacity = kFirstCapacity;
    m_buffer.resize(m_capacity + kPadding);
    while (m_end < kByteOrderMark.size()) {
        const std::size_t count = readPlain(m_buffer.data() + m_end, m_capacity - m_end);
        m_end += count;
        if (count == 0) {
            break;
        }
    }
    if (buffered().starts_with("\x1F\x8B")) {
        m_inflater = std::make_unique<Inflater>();
        m_inflater->chunk.assign(m_buffer.data(), m_buffer.data() + m_end);
        m_inflater->stream.next_in = reinterpret_cast<Bytef*>(m_inflater->chunk.data());
        m_inflater->stream.avail_in = static_cast<uInt>(m_end);
        m_end = readCompressed(m_buffer.data(), m_capacity);
    }
    if (buffered().starts_with(kByteOrderMark)) {
        m_begin = kByteOrderMark.size();
    }
}

void TrackInput::skipRestOfLine()
{
    while (true) {
        const std::size_t found = buffered().find('\n');
        if (found != std::string_view::npos) {
            m_begin += found + 1;
            return;
        }
        m_begin = m_end;
        if (!readMore()) {
            return;
        }
    }
}

// Moves what is left to the front of the buffer and makes the buffer larger when it is full, up to
// a line's limit.
void TrackInput::makeRoom()
{
    if (m_end < m_capacity) {
        return;
    }
    const std::size_t left = m_end - m_begin;
    if (m_begin > 0) {
        std::memmove(m_buffer.data(), m_buffer.data() + m_begin, left);
        m_begin = 0;
        m_end = left;
    }
    if (m_end <= m_capacity / 2 || m_capacity > m_limits.longestLine) {
        return;
    }
    m_capacity *= 2;
    m_buffer.resize(m_capacity + kPadding);
}

std::size_t TrackInput::readPlain(char* into, std::size_t size)
{
    if (m_length == 0 && !waitForInput()) {
        return 0;
    }
    const ssize_t count = ::read(m_descriptor, into, size);
    if (count < 0) {
        m_damage = systemReason(errno);
        return 0;
    }
    m_read += static_cast<std::uint64_t>(count);
    return static_cast<std::size_t>(count);
}

// Waits until a pipe has something; false when the user wants to end.
bool TrackInput::waitForInput() const
{
    pollfd descriptor{m_descriptor, POLLIN, 0};
    while (!isInterrupted()) {
        if (::poll(&descriptor, 1, kWaitMilliseconds) > 0) {
            return true;
        }
    }
    return false;
}

std::size_t TrackInput::readCompressed(char* into, std::size_t size)
{
    if (!m_inflater->isGood) {
        return 0;
    }
    z_stream& stream = m_inflater->stream;
    stream.next_out = reinterpret_cast<Bytef*>(into);
    stream.avail_out = static_cast<uInt>(std::min<std::size_t>(size, std::size_t{1} << 30U));
    const uInt room = stream.avail_out;
    while (stream.avail_out == room && (stream.avail_in > 0 || refillCompressed())) {
        const int result = inflate(&stream, Z_NO_FLUSH);
        m_inflater->isBetween = result == Z_STREAM_END;
        if (result == Z_STREAM_END) {
            inflateReset(&stream);
        } else if (result != Z_OK && result != Z_BUF_ERROR) {
            m_damage = "the compressed data is damaged";
            m_inflater->isGood = false;
            break;
        }
    }
    return room - stream.avail_out;
}

// False at the end of the file, which is damage in the midst of a member.
bool TrackInput::refillCompressed()
{
    m_inflater->chunk.resize(kCompressedChunk);
    const std::size_t count = readPlain(m_inflater->chunk.data(), kCompressedChunk);
    m_inflater->stream.next_in = reinterpret_cast<Bytef*>(m_inflater->chunk.data());
    m_inflater->stream.avail_in = static_cast<uInt>(count);
    if (count == 0 && !m_inflater->isBetween && m_damage.empty()) {
        m_damage = "the compressed data ends too early";
    }
    return count > 0;
}

} // namespace scenariomatch
