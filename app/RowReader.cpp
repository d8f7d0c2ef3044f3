#include "app/RowReader.h"

#include "app/Interrupt.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace scenariomatch
{

RowReader::RowReader(
    std::unique_ptr<TrackInput> input, const TrackReaderOptions& options, TrackProblems& problems)
    : m_input(std::move(input))
    , m_problems(problems)
    , m_order(FrameTimer(options.start, options.framesPerSecond), problems)
    , m_ground(options.ground)
    , m_limits(options.limits)
    , m_types{options.defaultType}
{
}

bool RowReader::next(TrackFrame& frame)
{
    if (!m_isRead) {
        m_isRead = true;
        readAll();
    }
    while (!m_failure && !m_problems.isStopped() && m_next < m_rows.size()) {
        const int number = m_rows[m_next].frame;
        const TrackPlace place{m_rows[m_next].line, 0, {}};
        std::size_t end = m_next;
        while (end < m_rows.size() && m_rows[end].frame == number) {
            ++end;
        }
        const bool isAdmitted = m_order.admit(frame, number, std::nullopt, place);
        fill(frame, end);
        if (isAdmitted && !m_problems.isStopped()) {
            return true;
        }
        m_problems.countDropped(frame.actors.size());
    }
    return false;
}

double RowReader::progress() const
{
    return m_rows.empty() ? 0.0 : static_cast<double>(m_next) / static_cast<double>(m_rows.size());
}

void RowReader::readAll()
{
    TextLine line;
    while (!m_problems.isStopped() && !isInterrupted() && m_input->nextLine(line)) {
        if (m_rows.size() == m_limits.mostRows) {
            m_failure = {false, fmt::format("there are more than {} rows", m_limits.mostRows)};
            return;
        }
        readRow(line);
    }
    if (!m_input->damage().empty()) {
        m_problems.report(Oddity::Damaged, {line.number, 0, {}}, m_input->damage());
    }
    m_failure = judge();
    if (!m_failure && !m_rows.empty() && !timer().hasRate()) {
        m_failure = {true, "the tracks have no clock; give the frame rate with --fps"};
    }
    const auto isEarlier = [](const Row& left, const Row& right) {
        return left.frame < right.frame;
    };
    if (!m_failure && !std::is_sorted(m_rows.begin(), m_rows.end(), isEarlier)) {
        std::stable_sort(m_rows.begin(), m_rows.end(), isEarlier);
    }
}

void RowReader::readRow(const TextLine& line)
{
    const std::size_t first = line.text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return;
    }
    if (line.isTooLong) {
        m_problems.report(
            Oddity::TooLong,
            {line.number, 1, line.text},
            fmt::format("the line is longer than {} bytes", m_limits.input.longestLine));
        return;
    }
    if (line.text[first] == '#') {
        noteComment(line.text.substr(first + 1));
        return;
    }
    Row row;
    row.line = line.number;
    m_fields.start(line.text);
    const bool isWanted = parseRow(line.text, m_fields, row);
    const std::optional<FieldFault>& fault = m_fields.fault();
    if (isWanted && !fault) {
        m_rows.push_back(row);
        return;
    }
    m_problems.countRead();
    m_problems.countDropped(1);
    if (fault) {
        m_problems.report(fault->kind, {line.number, fault->offset + 1, line.text}, fault->reason);
    } else {
        m_problems.note(Oddity::NotConsidered);
    }
}

// Takes the rows up to the end into the frame; only now do they count as read.
void RowReader::fill(TrackFrame& frame, std::size_t end)
{
    frame.actors.clear();
    m_ids.clear();
    for (; m_next < end; ++m_next) {
        const Row& row = m_rows[m_next];
        const TrackPlace place{row.line, 0, {}};
        m_problems.countRead();
        if (frame.actors.size() == m_limits.mostActors) {
            m_problems.countDropped(1);
            m_problems.report(
                Oddity::TooManyObjects,
                place,
                fmt::format("the frame has more than {} objects", m_limits.mostActors));
            continue;
        }
        if (!m_ids.insert(row.id)) {
            m_problems.countDropped(1);
            m_problems.report(
                Oddity::DuplicateId,
                place,
                fmt::format("the identifier {} is in frame {} already", row.id, row.frame));
            continue;
        }
        TrackedActor& actor = frame.actors.emplace_back();
        actor.id = row.id;
        actor.type = m_types[row.type];
        actor.box = row.box;
        actor.position = row.position;
        actor.size = row.hasSize ? std::optional(row.size) : std::nullopt;
    }
}

} // namespace scenariomatch
