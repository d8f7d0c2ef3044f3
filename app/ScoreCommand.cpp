#include "app/ScoreCommand.h"

#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/OptionChecks.h"
#include "app/Score.h"
#include "app/ScoreReport.h"
#include "types/TextFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <iterator>
#include <ostream>
#include <set>
#include <utility>

namespace scenariomatch
{

namespace
{

int fail(int status, std::ostream& talk, const std::string& reason)
{
    talk << "scenariomatch score: " << reason << '\n';
    return status;
}

// What was read of the files, or why they cannot be used.
struct ScoreInput
{
    RecordReading truth;
    std::vector<EventRecord> events;
    std::optional<std::string> problem;
};

std::optional<std::string> readFile(const std::string& name, std::string& text)
{
    errno = 0;
    std::optional<std::string> content = readTextInput(name);
    if (!content) {
        const std::string reason = errno == 0 ? "it is larger than 64 MiB" : std::strerror(errno);
        return fmt::format("scenariomatch score: cannot read {}: {}", name, reason);
    }
    text = *std::move(content);
    return std::nullopt;
}

// Empty where the labels name no recording.
std::string recordingOf(const std::string& fileName, bool hasRecordings)
{
    return hasRecordings ? std::filesystem::path(fileName).stem().string() : std::string();
}

ScoreInput readInput(const ScoreOptions& options)
{
    ScoreInput input;
    std::string text;
    if ((input.problem = readFile(options.truth, text))) {
        return input;
    }
    input.truth = readLabels(text, options.truth);
    input.problem = input.truth.problem;
    const std::vector<EventRecord>& labels = input.truth.records;
    const bool hasRecordings =
        std::any_of(labels.begin(), labels.end(), [](const EventRecord& label) {
            return !label.recording.empty();
        });
    for (const std::string& name : options.events) {
        if (input.problem || (input.problem = readFile(name, text))) {
            return input;
        }
        RecordReading reading = readEvents(text, name, input.truth.unit);
        input.problem = reading.problem;
        for (EventRecord& event : reading.records) {
            event.recording = recordingOf(name, hasRecordings);
            input.events.push_back(std::move(event));
        }
    }
    return input;
}

// Why labels and files of events do not belong together; empty when they do. A recording without
// events has a file too, which is empty.
std::string mismatchOf(const ScoreOptions& options, const RecordReading& truth)
{
    std::set<std::string> labelled;
    for (const EventRecord& label : truth.records) {
        labelled.insert(label.recording);
    }
    const bool hasRecordings = !labelled.empty() && !labelled.rbegin()->empty();
    if (!hasRecordings && options.events.size() > 1) {
        return "the labels name no recordings: --events takes one file";
    }
    std::set<std::string> given;
    for (const std::string& name : options.events) {
        if (!given.insert(recordingOf(name, hasRecordings)).second) {
            return fmt::format("two files of --events are named after one recording: {}", name);
        }
    }
    for (const std::string& recording : labelled) {
        if (!given.contains(recording)) {
            return recording.empty()
                       ? "some labels name a recording and some do not"
                       : fmt::format("no file of --events is named after {}", recording);
        }
    }
    if (truth.unit == RecordUnit::Frame && !options.framesPerSecond) {
        return "labels in frames need --fps";
    }
    return {};
}

} // namespace

CLI::App* addScoreCommand(CLI::App& program, ScoreOptions& options)
{
    CLI::App* const command =
        program.add_subcommand("score", "Hold recognised events against labels");
    command->add_option("--truth", options.truth, "Labels (CSV or JSON Lines, see docs/scoring.md)")
        ->type_name("FILE")
        ->required();
    command
        ->add_option(
            "--events",
            options.events,
            "Events in JSON Lines as run writes them; a file for each recording, named after it")
        ->type_name("FILE")
        ->required();
    command
        ->add_option(
            "--models",
            options.models,
            "Also score these models, separated by commas, which no label names")
        ->type_name("NAME")
        ->delimiter(',');
    command
        ->add_option(
            "--overlap",
            options.overlap,
            "Least intersection over union of label and event (default: 0.3)")
        ->type_name("SHARE")
        ->check(numberBetween(0, 1, "0 to 1"));
    command
        ->add_option(
            "--start-within",
            options.startWithin,
            "Seconds between the begins for which any overlap will do (default: 1)")
        ->type_name("SECONDS")
        ->check(numberBetween(0, 1e6, "0 to 1000000"));
    command->add_option("--fps", options.framesPerSecond, "Frames per second, for labels in frames")
        ->type_name("RATE")
        ->check(numberBetween(0.000001, 1e6, "0.000001 to 1000000"));
    const Choices<ScoreFormat> formats{{"text", ScoreFormat::Text}, {"json", ScoreFormat::Json}};
    addChoice(
        *command, "--format", options.format, formats, "Format of the figures (default: text)");
    command->add_flag("--list", options.isList, "Name every hit, miss and false alarm");
    command->footer(footerText(
        {.description =
             "Pairs labels, what really happened, with the events of one or several runs, and "
             "counts hits, misses and false alarms for each model. From these it has "
             "precision, recall, F1 and the median delay.",
         .examples = {
             "scenariomatch score --truth truth.csv --events hall.jsonl",
             "scenariomatch score --truth truth.csv --events hall.jsonl --format json"}}));
    return command;
}

int runScore(const ScoreOptions& options, std::ostream& out, std::ostream& talk)
{
    const ScoreInput input = readInput(options);
    if (input.problem) {
        talk << *input.problem << '\n';
        return kExitModel;
    }
    const std::string mismatch = mismatchOf(options, input.truth);
    if (!mismatch.empty()) {
        return fail(kExitUsage, talk, mismatch);
    }
    const RecordUnit unit = input.truth.unit;
    const double unitsPerSecond =
        unit == RecordUnit::Frame ? options.framesPerSecond.value_or(1) : 1000;
    const Score result = score(
        input.truth.records,
        input.events,
        options.models,
        {options.overlap, options.startWithin, unitsPerSecond});
    if (result.problem) {
        return fail(kExitModel, talk, options.truth + ": " + *result.problem);
    }
    const auto print = options.format == ScoreFormat::Json ? printScoreJson : printScore;
    print(result, unit, options.isList, out);
    if (result.unscored > 0 && options.format == ScoreFormat::Text) {
        talk << fmt::format(
            "not scored: {} events of models that no label names\n", result.unscored);
    }
    out.flush();
    return out.good() ? kExitDone : fail(kExitOutput, talk, "cannot write the figures");
}

} // namespace scenariomatch
