#include "app/MotReader.h"

#include <array>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr std::size_t kTruthColumns = 9;
constexpr std::size_t kResultColumns = 10;

// Types of the classes, which are numbered from 1. People who stand or ride are persons of their
// own kind only where the tracks say more than "a person".
constexpr std::array<const char*, 13> kClasses{
    "PERSON",
    "PERSON_ON_VEHICLE",
    "CAR",
    "BICYCLE",
    "MOTORBIKE",
    "NON_MOT_VEHICLE",
    "PERSON",
    "DISTRACTOR",
    "OCCLUDER",
    "OCCLUDER_ON_GROUND",
    "OCCLUDER_FULL",
    "REFLECTION",
    "CROWD"};

} // namespace

MotReader::MotReader(
    std::unique_ptr<TrackInput> input, const TrackReaderOptions& options, TrackProblems& problems)
    : RowReader(std::move(input), options, problems)
{
    types().insert(types().end(), kClasses.begin(), kClasses.end());
}

bool MotReader::parseRow(std::string_view text, FieldReader& reader, Row& row)
{
    std::array<std::string_view, kResultColumns> fields;
    const std::size_t count = splitAt(',', text, fields);
    if (count != kTruthColumns && count != kResultColumns) {
        reader.fail(Oddity::Malformed, fields[0], "a row has 9 or 10 columns");
        return false;
    }
    row.frame = reader.whole(fields[0]);
    row.id = reader.whole(fields[1]);
    const MeasuredBox box{
        reader.number(fields[2]),
        reader.number(fields[3]),
        reader.number(fields[4]),
        reader.number(fields[5])};
    const double flag = reader.number(fields[6]);
    parseBox(box, fields[2], reader, row);
    if (row.frame < 0) {
        reader.fail(Oddity::OutOfRange, fields[0], "the frame number is negative");
    }
    if (count == kTruthColumns) {
        const int number = reader.whole(fields[7]);
        if (number < 1 || number > static_cast<int>(kClasses.size())) {
            reader.fail(Oddity::UnknownClass, fields[7], "classes are 1 to 13");
        }
        row.type = static_cast<std::uint8_t>(number);
        if (!reader.fault() && flag == 0.0) {
            m_hasTracked = true;
            return false;
        }
    } else {
        const std::array<double, 3> world{
            reader.number(fields[7]), reader.number(fields[8]), reader.number(fields[9])};
        if (world[0] != -1.0 || world[1] != -1.0 || world[2] != -1.0) {
            const std::optional<TrackPoint> position =
                ground().givenPosition(world[0], world[1], world[2]);
            row.position = position.value_or(TrackPoint());
            if (!position) {
                reader.fail(Oddity::OutOfRange, fields[7], "the position is out of range");
            }
        }
    }
    if (!reader.fault()) {
        (row.id < 0 ? m_hasUntracked : m_hasTracked) = true;
    }
    if (row.id < 0) {
        reader.fail(
            Oddity::Untracked, fields[1], "the identifier is negative: the object is not tracked");
    }
    return true;
}

void MotReader::parseBox(
    const MeasuredBox& box, std::string_view field, FieldReader& reader, Row& row) const
{
    const std::optional<TrackBox> rounded = GroundMapper::roundedBox(box);
    const std::optional<TrackPoint> position = ground().position(GroundMapper::foot(box));
    const std::optional<TrackSize> size = ground().size(box);
    if (GroundMapper::isNegative(box)) {
        reader.fail(Oddity::NegativeBox, field, "the box has a negative size");
        return;
    }
    if (!rounded || !position || !size) {
        reader.fail(Oddity::OutOfRange, field, "the box is out of range");
        return;
    }
    row.box = *rounded;
    row.position = *position;
    row.size = *size;
    row.hasSize = true;
}

std::optional<TrackFailure> MotReader::judge()
{
    if (m_hasUntracked && !m_hasTracked) {
        return TrackFailure{false, "these are detections, not tracks"};
    }
    return std::nullopt;
}

} // namespace scenariomatch
