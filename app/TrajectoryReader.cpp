#include "app/TrajectoryReader.h"

#include <array>

namespace scenariomatch
{

namespace
{

constexpr std::size_t kFewestFields = 4;
constexpr std::size_t kMostFields = 5;
constexpr std::string_view kRateWord = "framerate:";

} // namespace

bool TrajectoryReader::parseRow(std::string_view text, FieldReader& reader, Row& row)
{
    std::array<std::string_view, kMostFields> fields;
    const std::size_t count = splitAtBlanks(text, fields);
    if (count != kFewestFields && count != kMostFields) {
        reader.fail(Oddity::Malformed, fields[0], R"(a row is "id frame x y" or "id frame x y z")");
        return false;
    }
    row.id = reader.whole(fields[0]);
    row.frame = reader.whole(fields[1]);
    const PlanePoint foot{reader.number(fields[2]), reader.number(fields[3])};
    const std::optional<TrackPoint> position = ground().position(foot);
    row.position = position.value_or(TrackPoint());
    if (!position) {
        reader.fail(Oddity::OutOfRange, fields[2], "the position is out of range");
    }
    if (count == kMostFields) {
        const std::optional<TrackSize> size =
            ground().givenSize(0.0, reader.number(fields[4]), 0.0);
        row.hasSize = size.has_value();
        row.size = size.value_or(TrackSize());
        if (!size) {
            reader.fail(Oddity::OutOfRange, fields[4], "the height is out of range");
        }
    }
    if (row.frame < 0) {
        reader.fail(Oddity::OutOfRange, fields[1], "the frame number is negative");
    }
    if (row.id < 0) {
        reader.fail(
            Oddity::Untracked, fields[0], "the identifier is negative: the object is not tracked");
    }
    return true;
}

void TrajectoryReader::noteComment(std::string_view text)
{
    const std::size_t found = text.find(kRateWord);
    if (found == std::string_view::npos || timer().hasRate()) {
        return;
    }
    std::array<std::string_view, 1> words;
    const std::string_view rest = text.substr(found + kRateWord.size());
    FieldReader reader;
    reader.start(rest);
    if (splitAtBlanks(rest, words) > 0) {
        const double rate = reader.number(words[0]);
        if (rate > 0.0) {
            timer().setRate(rate);
        }
    }
}

} // namespace scenariomatch
