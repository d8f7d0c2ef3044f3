#include "app/explain/ExplainCommand.h"

#include "app/ExitStatus.h"
#include "app/explain/EvidenceObserver.h"
#include "app/explain/ExplanationJson.h"
#include "app/explain/ExplanationText.h"
#include "app/explain/WhyNotObserver.h"
#include "app/FrameClock.h"
#include "app/FrameFeed.h"
#include "app/HelpFooter.h"
#include "app/Interrupt.h"
#include "app/OptionChecks.h"
#include "app/RecognitionSetup.h"
#include "app/RunParameters.h"
#include "app/RunTracks.h"
#include "app/StreamRedirection.h"
#include "lint/NearNames.h"
#include "types/NumberText.h"

#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <iostream>
#include <memory>
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
        , m_talk(talk)
        , m_data(out.rdbuf())
        , m_problems(
              options.input.tracks == "-" ? "standard input" : options.input.tracks,
              talk,
              TrackProblemOptions{.isStrict = options.input.isStrict})
        , m_setup(talk, "scenariomatch explain: --set")
    {
    }

    // The exit status.
    int perform();

private:
    bool fail(int status, const std::string& reason);
    bool readTimes();
    bool
    readTime(const std::string& option, const std::string& text, std::optional<AskedTime>& time);
    bool prepareParameters();
    bool prepareReader();
    bool recognise();
    bool explainEvent(RecognitionView& view);
    bool explainModel(RecognitionView& view);
    WhyNotQuestion question() const;
    template <class IsOver>
    bool showFrames(IsOver&& isOver);

    const ExplainOptions& m_options;
    std::ostream& m_talk;
    // Writes to the caller's stream, also while that one is redirected.
    std::ostream m_data;
    std::optional<AskedTime> m_from;
    std::optional<AskedTime> m_to;
    TrackProblems m_problems;
    std::unique_ptr<TrackReader> m_reader;
    RecognitionSetup m_setup;
    std::unique_ptr<rhmAbstractProcessEventRecognition> m_process;
    // The frame that is shown next, and the clock of the first.
    TrackFrame m_frame;
    bool m_hasFrame = false;
    TrackClock m_start;
    std::optional<RunFault> m_fault;
};

int Explain::perform()
{
    if (readTimes() && prepareParameters() && prepareReader()) {
        m_setup.warn();
        // From here on the plug-in's code runs, which writes to standard output as it likes.
        const StreamRedirection redirection(std::cout, nullptr);
        recognise();
        m_process.reset();
    }
    m_problems.printSummary();
    if (m_fault) {
        m_talk << "scenariomatch explain: " << m_fault->reason << '\n';
        return m_fault->status;
    }
    return kExitDone;
}

// Keeps the first fault; always false.
bool Explain::fail(int status, const std::string& reason)
{
    if (!m_fault) {
        m_fault = {status, reason};
    }
    return false;
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

bool Explain::prepareParameters()
{
    RunParameterSources sources = RecognitionSetup::sourcesFor(
        m_options.input.parameterFile, m_options.input.maximumCandidates);
    sources.commonPath = m_options.input.commonPath;
    for (const std::string& text : m_options.input.settings) {
        const std::optional<NamedText> setting = parseSetting(text);
        if (!setting) {
            return fail(kExitUsage, "--set needs KEY=VALUE, not \"" + text + "\"");
        }
        sources.settings.push_back(*setting);
    }
    // The last setting wins: no event file is written.
    sources.settings.emplace_back("saveXML3File", "false");
    sources.settings.emplace_back("XML3FileName", "/dev/null");
    return m_setup.read(std::move(sources)) ||
           fail(m_setup.fault()->status, m_setup.fault()->reason);
}

bool Explain::prepareReader()
{
    m_reader = openRunTracks(m_options.input, m_problems, m_fault);
    return m_reader != nullptr;
}

bool Explain::recognise()
{
    m_process = m_setup.createProcess();
    if (!m_process) {
        return fail(m_setup.fault()->status, m_setup.fault()->reason);
    }
    auto* const view = dynamic_cast<RecognitionView*>(m_process.get());
    if (view == nullptr) {
        return fail(kExitPlugin, "the plug-in does not tell what it does");
    }
    m_hasFrame = m_reader->next(m_frame);
    m_start = m_hasFrame ? m_frame.clock : TrackClock();
    const bool isExplained = m_options.event ? explainEvent(*view) : explainModel(*view);
    view->setObserver(nullptr);
    m_data.flush();
    return isExplained && (m_data.good() || fail(kExitOutput, "the explanation cannot be written"));
}

// Shows the frames to the process until there are no more, or it is over with the next one.
template <class IsOver>
bool Explain::showFrames(IsOver&& isOver)
{
    FrameFeed feed(*m_process);
    const bool hasFrames = m_hasFrame;
    while (m_hasFrame && !isInterrupted() && !isOver()) {
        feed.addFrame(m_frame);
        m_hasFrame = m_reader->next(m_frame);
    }
    if (isInterrupted()) {
        m_talk << "scenariomatch explain: interrupted; only what was read is explained\n";
    }
    const std::optional<RunFault> fault =
        faultOfReading(m_options.input, *m_reader, m_problems, hasFrames);
    return !fault || fail(fault->status, fault->reason);
}

bool Explain::explainEvent(RecognitionView& view)
{
    EvidenceObserver observer(*m_options.event);
    view.setObserver(&observer);
    if (!showFrames([&observer] { return observer.isOver(); })) {
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

bool Explain::explainModel(RecognitionView& view)
{
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
    if (!showFrames([&] { return clockToMilliseconds(m_frame.clock) > end; })) {
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
    question.lookBack = stringToDouble(m_process->parameter("constTimeSearch").value_or("0"));
    question.mostCandidates = m_options.input.maximumCandidates;
    if (m_from) {
        question.window.from = m_from->milliseconds(m_start);
    }
    if (m_to) {
        question.window.to = m_to->milliseconds(m_start);
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
