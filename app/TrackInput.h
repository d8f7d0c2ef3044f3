#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch
{

// One line of a text input, without its line end.
struct TextLine
{
    // Valid until the next line is read; at least TrackInput::kPadding bytes behind it may be read
    // as well.
    std::string_view text;
    // Counts from 1.
    std::size_t number = 0;
    // The line is longer than the limit; the text is its beginning and the rest has been skipped.
    bool isTooLong = false;
};

// A piece of a text input: a line with its line feed, or a part of a line too long for one piece.
struct TextPiece
{
    // Valid until the next piece is read.
    std::string_view text;
    std::size_t lineNumber = 0;
};

// Text from a file or from standard input, plain or gzip (told apart by the first bytes), handed
// out in lines as it arrives: a line that came through a pipe is handed out before the next one is
// waited for. Memory is bounded by the longest line.
//
// Owns the file. One thread.
//
// Example:
//     std::string error;
//     auto input = TrackInput::open("hall.jsonl.gz", {}, error);
//     TextLine line;
//     while (input && input->nextLine(line)) { ... }
class TrackInput
{
public:
    // Bytes behind a line that may be read, as fast parsers ask for.
    static constexpr std::size_t kPadding = 64;

    struct Limits
    {
        std::size_t longestLine = std::size_t{16} * 1024 * 1024;
        std::size_t longestPiece = std::size_t{64} * 1024;
    };

    // "-" is standard input. Null, and the reason in error, when the file cannot be opened.
    static std::unique_ptr<TrackInput>
    open(const std::string& path, Limits limits, std::string& error);

    TrackInput(const TrackInput&) = delete;
    TrackInput(TrackInput&&) = delete;
    TrackInput& operator=(const TrackInput&) = delete;
    TrackInput& operator=(TrackInput&&) = delete;
    ~TrackInput();

    // What has arrived and was not yet handed out.
    std::string_view buffered() const { return {m_buffer.data() + m_begin, m_end - m_begin}; }

    // Waits for more behind buffered(); false at the end, or when the buffer is full.
    bool readMore();

    // False at the end or where the data is damaged. A carriage return before the line feed is
    // dropped.
    bool nextLine(TextLine& line);
    bool nextPiece(TextPiece& piece);

    // Not empty when reading stopped because compressed data is damaged or the system refused.
    const std::string& damage() const { return m_damage; }

    // Part of the file that has been read, 0 to 1; negative when its length is not known.
    double progress() const;

private:
    struct Inflater;

    TrackInput(int descriptor, bool isOwner, std::uint64_t length, Limits limits);

    void start();
    void skipRestOfLine();
    void makeRoom();
    bool waitForInput() const;
    std::size_t readPlain(char* into, std::size_t size);
    std::size_t readCompressed(char* into, std::size_t size);
    bool refillCompressed();

    int m_descriptor;
    bool m_isOwner;
    bool m_isStarted = false;
    bool m_isAtEnd = false;
    std::uint64_t m_length;
    std::uint64_t m_read = 0;
    Limits m_limits;
    std::string m_damage;
    std::string m_excerpt;
    std::vector<char> m_buffer;
    // Without the padding.
    std::size_t m_capacity = 0;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::size_t m_lineNumber = 0;
    bool m_isMidLine = false;
    std::unique_ptr<Inflater> m_inflater;
};

} // namespace scenariomatch
