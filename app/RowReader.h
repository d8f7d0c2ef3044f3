#pragma once

#include "app/FieldReader.h"
#include "app/FrameOrder.h"
#include "app/IdSet.h"
#include "app/TrackReader.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch
{

// Base of the readers of files with one object a row. Rows may come in any order: the first call of
// next() reads all of them and sorts them by frame, so memory grows with the file, up to a limit of
// rows. Only frames that have rows are made. Lines that are empty or begin with "#" are passed
// over.
class RowReader : public TrackReader
{
public:
    bool next(TrackFrame& frame) override;

    const std::optional<TrackFailure>& failure() const override { return m_failure; }

    double progress() const override;

protected:
    // One object in one frame.
    struct Row
    {
        int frame = 0;
        int id = 0;
        std::size_t line = 0;
        TrackBox box;
        TrackPoint position;
        TrackSize size;
        bool hasSize = false;
        // Index into the types.
        std::uint8_t type = 0;
    };

    RowReader(
        std::unique_ptr<TrackInput> input,
        const TrackReaderOptions& options,
        TrackProblems& problems);

    const GroundMapper& ground() const { return m_ground; }

    FrameTimer& timer() { return m_order.timer(); }

    // Reads one row. False when the row says itself that it is not to be considered; what is wrong
    // with it goes to the reader.
    virtual bool parseRow(std::string_view text, FieldReader& reader, Row& row) = 0;

    // The text behind "#".
    virtual void noteComment(std::string_view /*text*/) {}

    // Why the rows that were read do not make tracks.
    virtual std::optional<TrackFailure> judge() { return std::nullopt; }

    // Names of the types that rows refer to; the first is the one given by the user.
    std::vector<std::string>& types() { return m_types; }

    std::size_t rowCount() const { return m_rows.size(); }

private:
    void readAll();
    void readRow(const TextLine& line);
    void fill(TrackFrame& frame, std::size_t end);

    std::unique_ptr<TrackInput> m_input;
    TrackProblems& m_problems;
    FrameOrder m_order;
    GroundMapper m_ground;
    TrackLimits m_limits;
    FieldReader m_fields;
    IdSet m_ids;
    std::vector<std::string> m_types;
    std::vector<Row> m_rows;
    std::size_t m_next = 0;
    bool m_isRead = false;
    std::optional<TrackFailure> m_failure;
};

} // namespace scenariomatch
