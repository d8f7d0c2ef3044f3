#include "app/CvmlReader.h"

#include <QStringView>

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr std::size_t kLongestRole = 64;
constexpr std::string_view kBagRole = "leaving object";

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, last - first + 1);
}

std::string_view withoutLineEnd(std::string_view text)
{
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace

CvmlReader::CvmlReader(
    std::unique_ptr<TrackInput> input, const TrackReaderOptions& options, TrackProblems& problems)
    : m_input(std::move(input))
    , m_problems(problems)
    , m_order(
          FrameTimer(options.start, options.framesPerSecond.value_or(kFramesPerSecond)), problems)
    , m_ground(options.ground)
    , m_limits(options.limits)
{
}

bool CvmlReader::next(TrackFrame& frame)
{
    while (!m_failure && !m_problems.isStopped() && advance()) {
        if (m_xml.isStartElement()) {
            readStart(frame);
        } else if (m_xml.isCharacters()) {
            readText();
        } else if (m_xml.isEndElement() && readEnd(frame)) {
            if (!m_problems.isStopped()) {
                return true;
            }
            m_problems.countDropped(frame.actors.size());
        }
    }
    dropFrame(frame);
    return false;
}

// Goes to the next tag or text, taking in more of the input where needed; false at the end.
bool CvmlReader::advance()
{
    while (!m_isFinished) {
        const QXmlStreamReader::TokenType token = m_xml.readNext();
        if (token == QXmlStreamReader::EndDocument) {
            m_isFinished = true;
        } else if (token != QXmlStreamReader::Invalid) {
            m_fedSinceToken = 0;
            return true;
        } else if (m_xml.error() != QXmlStreamReader::PrematureEndOfDocumentError) {
            finish("the XML is damaged: " + m_xml.errorString().toStdString());
        } else if (m_fedSinceToken > m_limits.longestToken) {
            finish(fmt::format("a tag or text is longer than {} bytes", m_limits.longestToken));
        } else if (!feed()) {
            const bool isComplete = m_hasRoot && m_depth == 0 && m_input->damage().empty();
            finish(
                isComplete                  ? ""
                : m_input->damage().empty() ? "the XML ends too early"
                                            : m_input->damage());
        }
    }
    return false;
}

bool CvmlReader::feed()
{
    TextPiece piece;
    if (!m_input->nextPiece(piece)) {
        return false;
    }
    m_lastPiece = piece.text;
    m_lastPieceLine = piece.lineNumber;
    m_fedSinceToken += piece.text.size();
    m_xml.addData(QByteArray(piece.text.data(), static_cast<qsizetype>(piece.text.size())));
    return true;
}

void CvmlReader::finish(const std::string& damage)
{
    m_isFinished = true;
    if (!damage.empty()) {
        m_problems.report(Oddity::Damaged, place(), damage);
    }
}

void CvmlReader::readStart(TrackFrame& frame)
{
    ++m_depth;
    const QStringView name = m_xml.name();
    if (m_depth > m_limits.deepestElement) {
        finish(fmt::format("elements are nested more than {} deep", m_limits.deepestElement));
    } else if (!m_hasRoot) {
        m_hasRoot = true;
        if (name != QLatin1String("dataset")) {
            m_failure = {
                false,
                fmt::format(
                    R"(the root element is "{}", not "dataset")", name.toString().toStdString())};
        }
    } else if (name == QLatin1String("frame")) {
        readFrameStart(frame);
    } else if (!m_isInFrame) {
        countRefused(name);
    } else if (!m_object && (name == QLatin1String("object") || name == QLatin1String("group"))) {
        readObjectStart();
    } else if (m_object && name == QLatin1String("box") && m_depth == m_objectDepth + 1) {
        readBox();
    } else if (m_object && name == QLatin1String("role")) {
        m_role = std::string();
    }
}

// True when a frame is complete.
bool CvmlReader::readEnd(TrackFrame& frame)
{
    const QStringView name = m_xml.name();
    --m_depth;
    if (m_object && m_depth + 1 == m_objectDepth) {
        readObjectEnd(frame);
        m_object.reset();
    } else if (m_role && name == QLatin1String("role")) {
        m_object->isBag = m_object->isBag || trimmed(*m_role) == kBagRole;
        m_role.reset();
    }
    const bool isFrame = name == QLatin1String("frame");
    m_isRefused = m_isRefused && !isFrame;
    if (isFrame && m_isInFrame) {
        m_isInFrame = false;
        return true;
    }
    return false;
}

// Objects of a frame that is left out.
void CvmlReader::countRefused(QStringView name)
{
    if (m_isRefused && (name == QLatin1String("object") || name == QLatin1String("group"))) {
        m_problems.countRead();
        m_problems.countDropped(1);
    }
}

// What a frame holds that does not come to its end.
void CvmlReader::dropFrame(TrackFrame& frame)
{
    if (!m_isInFrame) {
        return;
    }
    const bool hasOpenObject = m_object && !m_object->isFaulty;
    m_problems.countDropped(frame.actors.size() + (hasOpenObject ? 1U : 0U));
    m_isInFrame = false;
    m_object.reset();
}

void CvmlReader::readText()
{
    if (m_role && m_role->size() < kLongestRole) {
        *m_role += m_xml.text().left(static_cast<qsizetype>(kLongestRole)).toString().toStdString();
    }
}

void CvmlReader::readFrameStart(TrackFrame& frame)
{
    bool isNumber = false;
    const int number = m_xml.attributes().value(QLatin1String("number")).toInt(&isNumber);
    dropFrame(frame);
    m_object.reset();
    m_role.reset();
    frame.actors.clear();
    m_ids.clear();
    if (!isNumber || number < 0) {
        m_problems.report(Oddity::Malformed, place(), "the frame has no number");
        m_isInFrame = false;
        m_isRefused = true;
        return;
    }
    m_isInFrame = m_order.admit(frame, number, std::nullopt, place());
    m_isRefused = !m_isInFrame;
}

void CvmlReader::readObjectStart()
{
    m_problems.countRead();
    m_object.emplace();
    m_objectDepth = m_depth;
    m_object->isGroup = m_xml.name() == QLatin1String("group");
    const std::optional<int> id = wholeAttribute(QLatin1String("id"));
    const int first = m_object->isGroup ? kFirstGroup : 0;
    if (!id) {
        refuseObject(Oddity::Malformed, "\"id\" is missing or not a whole number");
    } else if (*id < 0) {
        refuseObject(Oddity::Untracked, "the identifier is negative: the object is not tracked");
    } else if (*id > std::numeric_limits<int>::max() - first) {
        refuseObject(Oddity::OutOfRange, "the identifier is out of range");
    } else {
        m_object->id = *id + first;
        if (!m_ids.insert(m_object->id)) {
            refuseObject(Oddity::DuplicateId, "the identifier is in this frame already");
        }
    }
}

void CvmlReader::readBox()
{
    const std::optional<double> xc = attribute(QLatin1String("xc"));
    const std::optional<double> yc = attribute(QLatin1String("yc"));
    const std::optional<double> width = attribute(QLatin1String("w"));
    const std::optional<double> height = attribute(QLatin1String("h"));
    if (!xc || !yc || !width || !height) {
        refuseObject(Oddity::Malformed, "the box needs the numbers xc, yc, w and h");
    } else if (!std::isfinite(*xc + *yc + *width + *height)) {
        refuseObject(Oddity::NotFinite, "a number is not finite");
    } else if (*width < 0.0 || *height < 0.0) {
        refuseObject(Oddity::NegativeBox, "the box has a negative size");
    } else {
        m_object->box = MeasuredBox{*xc - *width / 2.0, *yc - *height / 2.0, *width, *height};
    }
}

void CvmlReader::readObjectEnd(TrackFrame& frame)
{
    if (m_object->isFaulty) {
        return;
    }
    if (!m_object->box) {
        refuseObject(Oddity::Malformed, "the object has no box");
        return;
    }
    if (frame.actors.size() == m_limits.mostActors) {
        refuseObject(
            Oddity::TooManyObjects,
            fmt::format("the frame has more than {} objects", m_limits.mostActors));
        return;
    }
    const std::optional<TrackBox> box = GroundMapper::roundedBox(*m_object->box);
    const std::optional<TrackPoint> position =
        m_ground.position(GroundMapper::foot(*m_object->box));
    const std::optional<TrackSize> size = m_ground.size(*m_object->box);
    if (!box || !position || !size) {
        refuseObject(Oddity::OutOfRange, "the box is out of range");
        return;
    }
    const char* const type = m_object->isGroup ? "GROUP" : m_object->isBag ? "BAG" : "PERSON";
    frame.actors.push_back({m_object->id, type, *box, position, size});
}

std::optional<double> CvmlReader::attribute(QLatin1String name)
{
    bool isNumber = false;
    const double number = m_xml.attributes().value(name).toDouble(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<int> CvmlReader::wholeAttribute(QLatin1String name)
{
    bool isNumber = false;
    const int number = m_xml.attributes().value(name).toInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

// Reports what is wrong with the open object, which is then left out.
void CvmlReader::refuseObject(Oddity kind, const std::string& reason)
{
    if (!m_object->isFaulty) {
        m_object->isFaulty = true;
        m_problems.countDropped(1);
        m_problems.report(kind, place(), reason);
    }
}

// The beginning of the tag read last, where its line is still there.
TrackPlace CvmlReader::place() const
{
    const auto line = static_cast<std::size_t>(m_xml.lineNumber());
    if (line != m_lastPieceLine) {
        return {line, 0, {}};
    }
    const std::string_view source = withoutLineEnd(m_lastPiece);
    const auto end = static_cast<std::size_t>(std::max<qint64>(m_xml.columnNumber(), 1));
    const std::size_t tag = source.rfind('<', end - 1);
    return {line, tag == std::string_view::npos ? 0 : tag + 1, source};
}

} // namespace scenariomatch
