#pragma once

#include "app/TrackReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>
#include <zlib.h>

namespace scenariomatch
{

// What came of reading a text as tracks: the frames, and what was said about it.
struct TrackReading
{
    std::vector<TrackFrame> frames;
    std::string talk;
    std::string summary;
    std::optional<TrackFailure> failure;
    std::size_t problems = 0;
    OddityCounts counts;
    std::uint64_t dropped = 0;
};

// The tests' own folder.
inline std::string temporaryFile(const std::string& name)
{
    // Tests with parameters have a stroke in their names.
    std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::replace(test.begin(), test.end(), '/', '-');
    return testing::TempDir() + "/" + test + "-" + name;
}

inline std::string writeTemporary(const std::string& name, const std::string& text)
{
    std::string path = temporaryFile(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

inline std::string writeCompressed(const std::string& name, const std::string& text)
{
    std::string path = temporaryFile(name);
    gzFile file = gzopen(path.c_str(), "wb");
    gzwrite(file, text.data(), static_cast<unsigned>(text.size()));
    gzclose(file);
    return path;
}

// Messages call the file "tracks".
inline TrackReading readTracksFile(
    const std::string& path,
    const TrackReaderOptions& options = {},
    const TrackProblemOptions& kind = {})
{
    TrackReading reading;
    std::ostringstream talk;
    TrackProblems problems("tracks", talk, kind);
    TrackFailure failure;
    const auto reader = openTracks(path, options, problems, failure);
    if (!reader) {
        reading.failure = failure;
        return reading;
    }
    TrackFrame frame;
    std::size_t used = 0;
    while (reader->next(frame)) {
        reading.frames.push_back(frame);
        used += frame.actors.size();
    }
    EXPECT_FALSE(reader->next(frame));
    EXPECT_EQ(problems.actorsRead(), used + problems.actorsDropped());
    reading.talk = talk.str();
    problems.printSummary();
    reading.summary = talk.str().substr(reading.talk.size());
    reading.failure = reader->failure();
    reading.problems = problems.total();
    reading.counts = problems.counts();
    reading.dropped = problems.actorsDropped();
    return reading;
}

inline TrackReading readTracks(
    const std::string& text,
    const TrackReaderOptions& options = {},
    const TrackProblemOptions& kind = {})
{
    return readTracksFile(writeTemporary("tracks", text), options, kind);
}

inline TrackReaderOptions withRate(double framesPerSecond)
{
    TrackReaderOptions options;
    options.framesPerSecond = framesPerSecond;
    return options;
}

} // namespace scenariomatch
