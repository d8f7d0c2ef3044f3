#include "app/EventFileRepair.h"

#include <QByteArray>
#include <QXmlStreamReader>

#include <algorithm>
#include <fmt/format.h>
#include <istream>
#include <optional>
#include <ostream>
#include <string_view>

namespace scenariomatch
{

namespace
{

constexpr std::string_view kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Tarvos version=\"3.00\">\n";
constexpr std::string_view kFrameStart = " <RHVideoFrame ";
constexpr std::string_view kFrameEnd = " </RHVideoFrame>\n";
constexpr std::string_view kClose = "</Tarvos>\n";
// Elements of a frame nest less deeply.
constexpr int kMostDepth = 8;

// Messages about torn frames before they are only counted.
constexpr std::uint64_t kMostMessages = 20;

// Why a frame is no well-formed XML; empty when it is.
std::string faultOfFrame(std::string_view frame)
{
    QXmlStreamReader reader(
        QByteArray::fromRawData(frame.data(), static_cast<qsizetype>(frame.size())));
    int depth = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : 0;
        depth -= token == QXmlStreamReader::EndElement ? 1 : 0;
        if (depth > kMostDepth) {
            return "elements nest too deeply";
        }
    }
    return reader.hasError() ? reader.errorString().toStdString() : "";
}

// Reads a file part by part.
class EventFileText
{
public:
    EventFileText(std::istream& in, std::size_t limit)
        : m_in(in)
        , m_limit(limit)
    {
    }

    // What has been read and not been passed.
    std::string_view text() const { return std::string_view(m_text).substr(m_begin); }

    std::uint64_t line() const { return m_line; }

    // Reads on until this much is there, or the file ends, or it is too much to hold.
    void need(std::size_t bytes)
    {
        while (text().size() < bytes && m_in.good() && !m_isTooLong) {
            m_isTooLong = text().size() > m_limit;
            fill();
        }
    }

    bool isTooLong() const { return m_isTooLong; }

    bool isUnreadable() const { return m_in.bad(); }

    // Where the next "<" stands, with what a mark needs behind it; nothing where the file ends
    // first.
    std::optional<std::size_t> tagFrom(std::size_t from)
    {
        std::size_t tag = text().find('<', from);
        while (tag == std::string_view::npos) {
            from = std::max(from, text().size());
            need(from + 1);
            if (text().size() <= from) {
                return std::nullopt;
            }
            tag = text().find('<', from);
        }
        need(tag + kFrameEnd.size());
        return m_isTooLong ? std::nullopt : std::optional(tag);
    }

    void pass(std::size_t bytes)
    {
        const std::string_view passed = text().substr(0, bytes);
        m_line += static_cast<std::uint64_t>(std::count(passed.begin(), passed.end(), '\n'));
        m_begin += passed.size();
    }

private:
    void fill()
    {
        constexpr std::size_t kPiece = 65'536;
        m_text.erase(0, m_begin);
        m_begin = 0;
        const std::size_t size = m_text.size();
        m_text.resize(size + kPiece);
        m_in.read(m_text.data() + size, static_cast<std::streamsize>(kPiece));
        m_text.resize(size + static_cast<std::size_t>(m_in.gcount()));
    }

    std::istream& m_in;
    std::size_t m_limit;
    bool m_isTooLong = false;
    std::string m_text;
    std::size_t m_begin = 0;
    std::uint64_t m_line = 1;
};

class Repair
{
public:
    Repair(
        std::istream& in,
        const std::string& fileName,
        std::ostream& out,
        std::ostream& talk,
        const EventFileLimits& limits)
        : m_fileName(fileName)
        , m_out(out)
        , m_talk(talk)
        , m_file(in, limits.frameBytes)
    {
    }

    EventFileRepair perform();

private:
    // What stands at the beginning of the text at hand, and how much of it there is.
    struct Part
    {
        enum class Kind { Frame, Torn, Close, Unknown };

        Kind kind = Kind::Unknown;
        std::size_t bytes = 0;
    };

    bool readHead();
    bool hasPartAt(std::size_t position);
    std::optional<std::size_t> lengthOf(std::string_view mark);
    Part nextPart();
    Part framePart();
    bool take(const Part& part);
    bool takeFrame(std::size_t bytes);
    void leaveOut(std::size_t bytes);
    bool refuse(const std::string& reason);

    const std::string& m_fileName;
    std::ostream& m_out;
    std::ostream& m_talk;
    EventFileText m_file;
    bool m_isClosed = false;
    EventFileRepair m_result;
};

EventFileRepair Repair::perform()
{
    if (!readHead()) {
        return m_result;
    }
    m_out << kHead;
    for (m_file.need(1); !m_file.text().empty(); m_file.need(1)) {
        if (!take(nextPart())) {
            return m_result;
        }
    }
    if (m_file.isUnreadable()) {
        refuse("the file cannot be read on");
    }
    m_out << kClose;
    m_result.isWhole = m_result.isWhole && m_isClosed;
    if (m_result.torn > kMostMessages) {
        m_talk << fmt::format(
            "{}: {} more frames break off and are left out\n",
            m_fileName,
            m_result.torn - kMostMessages);
    }
    return m_result;
}

bool Repair::refuse(const std::string& reason)
{
    m_result.isWhole = false;
    m_result.problem = fmt::format("{}:{}: {}", m_fileName, m_file.line(), reason);
    return false;
}

// Whether the file ends there, or a part begins; the last one may break off.
bool Repair::hasPartAt(std::size_t position)
{
    m_file.need(position + kFrameStart.size());
    const std::string_view rest = m_file.text().substr(position);
    return kFrameStart.starts_with(rest.substr(0, kFrameStart.size())) ||
           kClose.starts_with(rest.substr(0, kClose.size()));
}

// How much of the mark stands here: all of it, or the most behind which another part can be;
// nothing where that is not so.
std::optional<std::size_t> Repair::lengthOf(std::string_view mark)
{
    m_file.need(mark.size());
    const std::string_view text = m_file.text();
    const auto* const differs =
        std::mismatch(mark.begin(), mark.end(), text.begin(), text.end()).first;
    const auto same = static_cast<std::size_t>(differs - mark.begin());
    std::size_t length = same;
    while (length > 0 && same != mark.size() && !hasPartAt(length)) {
        --length;
    }
    return length > 0 || hasPartAt(0) ? std::optional(length) : std::nullopt;
}

// The head may break off, or be missing: there was no room for it then.
bool Repair::readHead()
{
    const std::optional<std::size_t> bytes = lengthOf(kHead);
    if (!bytes) {
        return refuse("this is not how an event file begins");
    }
    m_result.isWhole = *bytes == kHead.size();
    m_file.pass(*bytes);
    return true;
}

Repair::Part Repair::nextPart()
{
    const std::size_t start = lengthOf(kFrameStart).value_or(0);
    if (start == kFrameStart.size()) {
        return framePart();
    }
    const std::size_t close = lengthOf(kClose).value_or(0);
    if (close > 0) {
        return {Part::Kind::Close, close};
    }
    return start > 0 ? Part{Part::Kind::Torn, start} : Part{};
}

// Up to the frame's end, or to where another part begins in the middle of it: in values "<" is
// written in other words.
Repair::Part Repair::framePart()
{
    const std::size_t own = kFrameStart.find('<') + 1;
    for (auto tag = m_file.tagFrom(own); tag; tag = m_file.tagFrom(*tag + 1)) {
        const std::string_view rest = m_file.text().substr(*tag - 1);
        if (rest.starts_with(kFrameEnd)) {
            return {Part::Kind::Frame, *tag - 1 + kFrameEnd.size()};
        }
        if (rest.starts_with(kFrameStart)) {
            return {Part::Kind::Torn, *tag - 1};
        }
        if (rest.substr(1).starts_with(kClose)) {
            return {Part::Kind::Torn, *tag};
        }
    }
    return {Part::Kind::Torn, m_file.text().size()};
}

bool Repair::take(const Part& part)
{
    if (m_file.isTooLong()) {
        return refuse("a frame is too long");
    }
    m_result.isWhole = m_result.isWhole && !m_isClosed;
    switch (part.kind) {
    case Part::Kind::Frame:
        return takeFrame(part.bytes);
    case Part::Kind::Torn:
        leaveOut(part.bytes);
        return true;
    case Part::Kind::Close:
        m_isClosed = part.bytes == kClose.size();
        m_file.pass(part.bytes);
        return true;
    case Part::Kind::Unknown:
        break;
    }
    return refuse("this is neither a frame nor the beginning of one");
}

bool Repair::takeFrame(std::size_t bytes)
{
    const std::string_view frame = m_file.text().substr(0, bytes);
    const std::string fault = faultOfFrame(frame);
    if (!fault.empty()) {
        return refuse("the frame that begins here is damaged: " + fault);
    }
    m_out.write(frame.data(), static_cast<std::streamsize>(frame.size()));
    ++m_result.frames;
    m_file.pass(bytes);
    return true;
}

void Repair::leaveOut(std::size_t bytes)
{
    m_result.isWhole = false;
    ++m_result.torn;
    m_result.tornBytes += bytes;
    if (m_result.torn <= kMostMessages) {
        m_talk << fmt::format(
            "{}:{}: {} bytes of a frame that breaks off are left out\n",
            m_fileName,
            m_file.line(),
            bytes);
    }
    m_file.pass(bytes);
}

} // namespace

EventFileRepair repairEventFile(
    std::istream& in,
    const std::string& fileName,
    std::ostream& out,
    std::ostream& talk,
    const EventFileLimits& limits)
{
    return Repair(in, fileName, out, talk, limits).perform();
}

} // namespace scenariomatch
