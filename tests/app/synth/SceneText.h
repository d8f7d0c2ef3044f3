#pragma once

#include "app/SceneReader.h"
#include "app/SceneTracks.h"
#include "app/TrackWriter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace scenariomatch
{

// The scene of a text that is right.
inline Scene sceneOf(const std::string& text)
{
    SceneReading reading = readScene(text, "scene.yaml");
    EXPECT_EQ(reading.problem, "");
    return reading.scene.value_or(Scene{});
}

inline std::vector<TrackFrame> framesOf(const std::string& text)
{
    const Scene scene = sceneOf(text);
    std::vector<TrackFrame> frames;
    SceneTracks tracks(scene);
    TrackFrame frame;
    while (tracks.next(frame)) {
        frames.push_back(frame);
    }
    return frames;
}

inline std::string tracksOf(const std::vector<TrackFrame>& frames, TrackFormat format)
{
    std::ostringstream out;
    const std::unique_ptr<TrackWriter> writer = makeTrackWriter(format, out);
    for (const TrackFrame& frame : frames) {
        writer->write(frame);
    }
    writer->finish();
    return out.str();
}

} // namespace scenariomatch
