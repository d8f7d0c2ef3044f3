#pragma once

#include "app/Scene.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <yaml-cpp/node/node.h>

namespace scenariomatch
{

// Sizes beyond which a scene is refused, so that no scene file can take all memory or time. Numbers
// with decimals are thousandths, as in Scene.
struct SceneLimits
{
    std::size_t fileBytes = std::size_t{4} * 1024 * 1024;
    std::size_t objects = 10'000;
    // Way points, gaps and switches of all objects together; one anchor can stand for many of them.
    std::size_t points = 200'000;
    std::int64_t people = 10'000;
    std::int64_t frames = 10'000'000;
    // Distance from the origin along an axis.
    std::int64_t coordinate = 100'000'000;
    // Width, height and depth of an object in metres and in pixels.
    std::int64_t metres = 1'000'000;
    std::int64_t pixels = 10'000'000;
    std::int64_t time = 1'000'000'000;
    std::int64_t frameRate = 1'000'000;
    std::int64_t pixelsPerMetre = 1'000'000;
    std::int64_t speed = 1'000'000;
    std::int64_t areaPerPerson = 10'000'000;
    std::int64_t aspect = 1000;
};

// A scene, or what is wrong with its file.
struct SceneReading
{
    std::optional<Scene> scene;
    // "FILE:LINE:COLUMN: REASON", the source line and a caret, three lines.
    std::string problem;
};

// Reads the text of a scene file, whose name stands in messages.
SceneReading
readScene(const std::string& text, const std::string& fileName, const SceneLimits& limits = {});

// Reads a scene that stands within another file. Throws a SceneFault or a YAML::Exception where it
// is none.
Scene readSceneNode(const YAML::Node& node, const SceneLimits& limits = {});

} // namespace scenariomatch
