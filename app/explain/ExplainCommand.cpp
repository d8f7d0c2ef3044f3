#include "app/explain/ExplainCommand.h"

#include "app/ExitStatus.h"
#include "app/explain/EvidenceObserver.h"
#include "app/explain/ExplanationJson.h"
#include "app/explain/ExplanationText.h"
#include "app/explain/WhyNotObserver.h"
#include "app/FrameClock.h"
#include "app/HelpFooter.h"
#include "app/OptionChecks.h"
#include "app/Replay.h"
#include "app/StreamRedirection.h"
#include "lint/NearNames.h"

#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <iostream>
#include <system_error>
#include <tuple>
#include <utility>

namespace scenariomatch
{

namespace
{

// A time of the command line: seconds from the first frame, or a clock.
struct AskedTime
{
    std::optional<double> seconds;
    std::optional<TrackClock> clock;

    std::int64_t milliseconds(const TrackClock& start) const
    {
        constexpr double kMilliseconds = 1000.0;
        return seconds ? clockToMilliseconds(start) +
                             static_cast<std::int64_t>(std::llround(*seconds * kMilliseconds))
                       : clockToMilliseconds(clock.value_or(start));
    }
};

std::optional<AskedTime> parseTime(const std::string& text)
{
    constexpr double kMost = 1e9;
    double seconds = 0.0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, seconds);
    if (error == std::errc() && rest == end) {
        return std::fabs(seconds) <= kMost ? std::optional(AskedTime{seconds, std::nullopt})
                                           : std::nullopt;
    }
    const std::optional<TrackClock> clock = parseClock(text);
    return clock ? std::optional(AskedTime{std::nullopt, clock}) : std::nullopt;
}

// One explanation, step by step; every step leaves the fault behind when it fails.
class Explain
{
public:
    Explain(const ExplainOptions& options, std::ostream& out, std::ostream& talk)
        : m_options(options)
        , m_data(out.rdbuf())
        , m_replay(options.input, "explain", talk)
    {
    }

    // The exit status.
    int perform();

private:
    bool fail(int status, const std::string& reason);
    bool readTimes();
    bool
    readTime(const std::string& option, const std::string& text, std::optional<AskedTime>& time);
    bool recognise();
    bool explainEvent();
    bool explainModel();
    WhyNotQuestion question() const;

    const ExplainOptions& m_options;
    // Writes to the caller's stream, also while that one is redirected.
    std::ostream m_data;
    std::optional<AskedTime> m_from;
    std::optional<AskedTime> m_to;
    Replay m_replay;
};

int Explain::perform()
{
    if (readTimes() && m_replay.prepare()) {
        m_replay.setup().warn();
        // From here on the plug-in's code runs, which writes to standard output as it likes.
        const StreamRedirection redirection(std::cout, nullptr);
        recognise();
        m_replay.end();
    }
    return m_replay.report();
}

bool Explain::fail(int status, const std::string& reason)
{
    return m_replay.fail(status, reason);
}

bool Explain::readTimes()
{
    return readTime("--from", m_options.from, m_from) && readTime("--to", m_options.to, m_to);
}

bool Explain::readTime(
    const std::string& option, const std::string& text, std::optional<AskedTime>& time)
{
    if (text.empty()) {
        return true;
    }
    time = parseTime(text);
    return time || fail(
                       kExitUsage,
                       fmt::format(
                           "{} needs seconds from the first frame or a time such as "
                           "2026-05-04T10:00:00, not \"{}\"",
                           option,
                           text));
}

bool Explain::recognise()
{
    if (!m_replay.start()) {
        return false;
    }
    const bool isExplained = m_options.event ? explainEvent() : explainModel();
    m_replay.view().setObserver(nullptr);
    m_data.flush();
    return isExplained && (m_data.good() || fail(kExitOutput, "the explanation cannot be written"));
}

bool Explain::explainEvent()
{
    EvidenceObserver observer(*m_options.event);
    m_replay.view().setObserver(&observer);
    const bool isRead =
        m_replay.showFrames([&observer](const TrackFrame& /*next*/) { return observer.isOver(); });
    if (!isRead) {
        return false;
    }
    const auto evidence = observer.evidence();
    if (!evidence) {
        return fail(kExitNo, fmt::format("there is no event {}", *m_options.event));
    }
    m_options.format == ExplainFormat::Json ? writeExplanation(*evidence, m_data)
                                            : printExplanation(*evidence, m_data);
    return true;
}

bool Explain::explainModel()
{
    RecognitionView& view = m_replay.view();
    const ModelSet models(view);
    if (models.find(m_options.model) == nullptr) {
        const std::string hint =
            lint::didYouMean(lint::nearestName(m_options.model, models.names()));
        return fail(
            kExitUsage,
            fmt::format(
                "there is no model '{}' in use{}",
                m_options.model,
                hint.empty() ? "" : "; " + hint));
    }
    WhyNotObserver observer(view, question());
    view.setObserver(&observer);
    const std::int64_t end = question().window.to;
    const bool isRead = m_replay.showFrames(
        [end](const TrackFrame& next) { return clockToMilliseconds(next.clock) > end; });
    if (!isRead) {
        return false;
    }
    const WhyNot why = observer.answer();
    m_options.format == ExplainFormat::Json ? writeExplanation(why, m_data)
                                            : printExplanation(why, m_data);
    return true;
}

WhyNotQuestion Explain::question() const
{
    WhyNotQuestion question;
    question.model = m_options.model;
    question.objects = m_options.objects;
    question.lookBack = m_replay.lookBack();
    question.mostCandidates = m_options.input.maximumCandidates;
    if (m_from) {
        question.window.from = m_from->milliseconds(m_replay.startClock());
    }
    if (m_to) {
        question.window.to = m_to->milliseconds(m_replay.startClock());
    }
    return question;
}

void addQuestionOptions(CLI::App& command, ExplainOptions& options)
{
    command
        .add_option(
            "--event", options.event, "Why this event was recognised: its id, as run writes it")
        ->type_name("ID");
    command.add_option("--model", options.model, "Why this model did not match")
        ->type_name("NAME")
        ->check(notEmpty());
    command
        .add_option(
            "--objects",
            options.objects,
            "Only with all of these: numbers of tracked objects, names of those of the scene, "
            "separated by commas")
        ->type_name("LIST")
        ->delimiter(',')
        ->allow_extra_args(false);
    for (const auto& [name, value, text] :
         {std::tuple("--from", &options.from, "Begin of the time that is looked at"),
          std::tuple("--to", &options.to, "End of the time that is looked at")}) {
        command
            .add_option(
                name, *value, std::string(text) + ": seconds from the first frame, or a clock")
            ->type_name("TIME");
    }
    const Choices<ExplainFormat> formats{
        {"text", ExplainFormat::Text}, {"json", ExplainFormat::Json}};
    addChoice(
        command, "--format", options.format, formats, "Format of the explanation (default: text)");
}

// Throws where the options do not go together.
void checkOptions(const ExplainOptions& options)
{
    if (options.input.tracks.empty()) {
        throw CLI::RequiredError("--tracks");
    }
    if (options.model.empty() && !options.event) {
        throw CLI::RequiredError("--event or --model");
    }
    if (!options.model.empty() && options.event) {
        throw CLI::ExcludesError("--event", "--model");
    }
    const bool isNarrowed =
        !options.objects.empty() || !options.from.empty() || !options.to.empty();
    if (options.model.empty() && isNarrowed) {
        throw CLI::RequiresError("--objects, --from and --to", "--model");
    }
}

} // namespace

CLI::App* addExplainCommand(CLI::App& program, ExplainOptions& options)
{
    CLI::App* const command =
        program.add_subcommand("explain", "Say why a model matched, or why it did not");
    addParameterOptions(*command, options.input);
    addTrackOptions(*command, options.input, "REQUIRED", "--tracks-format");
    addQuestionOptions(*command, options);
    command->callback([&options] { checkOptions(options); });
    command->footer(footerText(
        {.description =
             "Recognises events as run does and says why one was recognised, with the values that "
             "each constraint saw, down to primitive states; or why a model did not match: which "
             "constraint failed first how often, who came nearest, when and by how much, and which "
             "sub-event was missing.",
         .environment = {kPluginPathVariable, kTemporaryFolderVariable},
         .examples = {
             "scenariomatch synth examples/lobby/scenes/bag.yaml --output bag.jsonl",
             "scenariomatch explain --params examples/lobby/lobby.yaml --tracks bag.jsonl --model "
             "Meeting --objects 1,2"}}));
    return command;
}

int runExplain(const ExplainOptions& options, std::ostream& out, std::ostream& talk)
{
    return Explain(options, out, talk).perform();
}

} // namespace scenariomatch
