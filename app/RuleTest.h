#pragma once

#include "app/RunParameters.h"
#include "app/Scene.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

// A file of tests for rules, as docs/testing-rules.md describes it.
namespace scenariomatch
{

// An event that has to be found, or that must not be. What is not said is not compared; times are
// milliseconds from the first frame.
struct ExpectedEvent
{
    std::string model;
    // Identifier or name by the model's variable.
    std::map<std::string, std::string> objects;
    std::optional<std::int64_t> begin;
    std::optional<std::int64_t> end;
    // Its own one; else that of the case.
    std::optional<std::int64_t> tolerance;
    std::string alarm;
    // In the file, from 1.
    int line = 0;
};

// What a case is run on: a file of tracks, or a scene.
struct RuleTracks
{
    std::string file;
    std::optional<double> framesPerSecond;
    double scale = 1.0;
    std::optional<Scene> scene;
};

// A place in the text of a file; line and column count from 0, columns count bytes.
struct TextPlace
{
    std::size_t line = 0;
    std::size_t column = 0;
};

// One run and what has to come out of it.
struct RuleCase
{
    std::string name;
    std::string parameterFile;
    std::vector<NamedText> settings;
    RuleTracks tracks;
    // Whose events are compared; empty for all models.
    std::vector<std::string> models;
    std::int64_t tolerance = 0;
    // Nothing where only the absence of some is asked for.
    std::optional<std::vector<ExpectedEvent>> events;
    std::vector<ExpectedEvent> absent;
    // Of the case's mapping and of the list of events.
    TextPlace place;
    TextPlace eventsPlace;

    int line() const { return static_cast<int>(place.line) + 1; }
};

struct RuleTestFile
{
    std::string name;
    std::string text;
    std::vector<RuleCase> cases;
};

// Sizes beyond which a file of tests is refused. Counts are of the whole file: one anchor can stand
// for many elements.
struct RuleTestLimits
{
    std::size_t fileBytes = std::size_t{4} * 1024 * 1024;
    std::size_t cases = 1000;
    std::size_t events = 10'000;
    std::size_t entries = 100;
    std::int64_t time = 1'000'000'000;
};

// A file of tests, or what is wrong with it.
struct RuleTestReading
{
    std::optional<RuleTestFile> file;
    // "FILE:LINE:COLUMN: REASON", the source line and a caret, three lines.
    std::string problem;
};

// Reads the text of a file of tests; files that it names are relative to its folder. Scenes in
// files of their own are read too.
RuleTestReading readRuleTest(
    const std::string& text, const std::string& fileName, const RuleTestLimits& limits = {});

} // namespace scenariomatch
