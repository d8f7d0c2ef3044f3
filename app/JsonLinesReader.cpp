#include "app/JsonLinesReader.h"

#include "app/JsonLineParser.h"

#include <fmt/format.h>
#include <utility>

namespace scenariomatch
{

JsonLinesReader::JsonLinesReader(
    std::unique_ptr<TrackInput> input, const TrackReaderOptions& options, TrackProblems& problems)
    : m_input(std::move(input))
    , m_problems(problems)
    , m_order(FrameTimer(options.start, options.framesPerSecond), problems)
    , m_longestLine(options.limits.input.longestLine)
    , m_parser(std::make_unique<JsonLineParser>(options, problems, m_order))
{
}

JsonLinesReader::~JsonLinesReader() = default;

bool JsonLinesReader::next(TrackFrame& frame)
{
    TextLine line;
    while (!m_problems.isStopped() && m_input->nextLine(line)) {
        if (line.isTooLong) {
            m_problems.report(
                Oddity::TooLong,
                {line.number, 1, line.text},
                fmt::format("the line is longer than {} bytes", m_longestLine));
            continue;
        }
        if (line.text.find_first_not_of(" \t") == std::string_view::npos) {
            continue;
        }
        if (!m_parser->parse(line, frame)) {
            continue;
        }
        if (!m_problems.isStopped()) {
            return true;
        }
        m_problems.countDropped(frame.actors.size());
    }
    if (!m_problems.isStopped() && !m_input->damage().empty() && !m_isDamageReported) {
        m_isDamageReported = true;
        m_problems.report(Oddity::Damaged, {line.number, 0, {}}, m_input->damage());
    }
    return false;
}

} // namespace scenariomatch
