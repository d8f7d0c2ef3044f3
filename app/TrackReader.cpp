#include "app/TrackReader.h"

#include "app/CvmlReader.h"
#include "app/JsonLinesReader.h"
#include "app/MotReader.h"
#include "app/TrajectoryReader.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::size_t kMostSequenceLines = 1000;

// The first line that is neither empty nor a comment; nothing when the text has none.
std::optional<std::string_view> firstRow(std::string_view text, bool isWhole)
{
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos && !isWhole) {
            return std::nullopt;
        }
        const std::string_view line = text.substr(0, end);
        const std::size_t first = line.find_first_not_of(kBlanks);
        if (first != std::string_view::npos && line[first] != '#') {
            return line.substr(first);
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return std::nullopt;
}

bool beginsNumber(char character)
{
    return (character >= '0' && character <= '9') || character == '-' || character == '+' ||
           character == '.';
}

// Reads on until the format shows; Auto when the text ends, or the buffer is full, before it does.
TrackFormat detectFormat(TrackInput& input)
{
    while (true) {
        const std::optional<TrackFormat> format = detectTrackFormat(input.buffered(), false);
        if (format) {
            return *format;
        }
        if (!input.readMore()) {
            return detectTrackFormat(input.buffered(), true).value_or(TrackFormat::Auto);
        }
    }
}

std::optional<double> frameRateOf(const std::filesystem::path& file)
{
    std::ifstream input(file);
    std::string line;
    for (std::size_t i = 0; i < kMostSequenceLines && std::getline(input, line); ++i) {
        constexpr std::string_view kKey = "frameRate=";
        if (!line.starts_with(kKey)) {
            continue;
        }
        double rate = 0.0;
        const auto result =
            std::from_chars(line.data() + kKey.size(), line.data() + line.size(), rate);
        if (result.ec == std::errc() && std::isfinite(rate) && rate > 0.0) {
            return rate;
        }
    }
    return std::nullopt;
}

std::unique_ptr<TrackReader> makeReader(
    TrackFormat format,
    std::unique_ptr<TrackInput> input,
    const TrackReaderOptions& options,
    TrackProblems& problems)
{
    switch (format) {
    case TrackFormat::JsonLines:
        return std::make_unique<JsonLinesReader>(std::move(input), options, problems);
    case TrackFormat::Mot:
        return std::make_unique<MotReader>(std::move(input), options, problems);
    case TrackFormat::Cvml:
        return std::make_unique<CvmlReader>(std::move(input), options, problems);
    case TrackFormat::Trajectory:
        return std::make_unique<TrajectoryReader>(std::move(input), options, problems);
    case TrackFormat::Auto:
        break;
    }
    return nullptr;
}

} // namespace

std::unique_ptr<TrackReader> openTracks(
    const std::string& path,
    const TrackReaderOptions& options,
    TrackProblems& problems,
    TrackFailure& failure)
{
    std::string error;
    std::unique_ptr<TrackInput> input = TrackInput::open(path, options.limits.input, error);
    if (!input) {
        failure = {false, error};
        return nullptr;
    }
    TrackReaderOptions chosen = options;
    if (chosen.format == TrackFormat::Auto) {
        chosen.format = detectFormat(*input);
    }
    if (chosen.format == TrackFormat::Auto) {
        const bool isEmpty = input->buffered().find_first_not_of(kBlanks) == std::string_view::npos;
        failure = {
            !isEmpty,
            "the format of the tracks is not known" +
                (options.formatOption.empty() ? "" : "; name it with " + options.formatOption)};
        if (isEmpty) {
            failure.reason =
                input->damage().empty() ? "there are no tracks in it" : input->damage();
        }
        return nullptr;
    }
    if (chosen.format == TrackFormat::Mot && !chosen.framesPerSecond && path != "-") {
        chosen.framesPerSecond = sequenceFrameRate(path);
    }
    return makeReader(chosen.format, std::move(input), chosen, problems);
}

std::optional<TrackFormat> detectTrackFormat(std::string_view beginning, bool isWhole)
{
    const std::size_t first = beginning.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    if (beginning[first] == '{') {
        return TrackFormat::JsonLines;
    }
    if (beginning[first] == '<') {
        return TrackFormat::Cvml;
    }
    const std::optional<std::string_view> row = firstRow(beginning, isWhole);
    if (!row) {
        return std::nullopt;
    }
    if (!beginsNumber(row->front())) {
        return TrackFormat::Auto;
    }
    return row->find(',') == std::string_view::npos ? TrackFormat::Trajectory : TrackFormat::Mot;
}

std::optional<double> sequenceFrameRate(const std::string& path)
{
    const std::filesystem::path folder = std::filesystem::absolute(path).parent_path();
    const std::optional<double> rate = frameRateOf(folder / "seqinfo.ini");
    return rate ? rate : frameRateOf(folder.parent_path() / "seqinfo.ini");
}

} // namespace scenariomatch
