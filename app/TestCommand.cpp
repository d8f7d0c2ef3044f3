#include "app/TestCommand.h"

#include "app/ConstraintCoverage.h"
#include "app/ExitStatus.h"
#include "app/FileReplacement.h"
#include "app/HelpFooter.h"
#include "app/OptionChecks.h"
#include "app/RuleRun.h"
#include "app/RuleTest.h"
#include "app/RuleTestUpdate.h"
#include "app/RuleVerdict.h"
#include "types/TextFile.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fmt/format.h>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <system_error>
#include <utility>

namespace scenariomatch
{

namespace
{

// All files of one command.
class TestRun
{
public:
    TestRun(const TestOptions& options, std::ostream& out, std::ostream& talk)
        : m_options(options)
        , m_data(out.rdbuf())
        , m_talk(talk)
        , m_ruleTalk(talk)
    {
    }

    int perform();

private:
    bool readFiles();
    void runFile(const RuleTestFile& file, RuleReport& report);
    static void addReasons(const RuleCase& ruleCase, RuleVerdict& verdict);
    bool update(const RuleTestFile& file, const std::map<std::size_t, RuleVerdict>& verdicts);
    void printCoverage();
    void fail(int status);

    const TestOptions& m_options;
    // Writes to the caller's stream, also while that one is redirected.
    std::ostream m_data;
    std::ostream& m_talk;
    RuleTalk m_ruleTalk;
    std::vector<RuleTestFile> m_files;
    // By parameter file.
    std::map<std::string, ConstraintCoverage> m_coverage;
    int m_status = kExitDone;
};

int TestRun::perform()
{
    if (!readFiles()) {
        return kExitModel;
    }
    const std::unique_ptr<RuleReport> report = makeRuleReport(m_options.format, m_data);
    for (const RuleTestFile& file : m_files) {
        runFile(file, *report);
    }
    report->finish();
    printCoverage();
    m_data.flush();
    if (!m_data.good()) {
        m_talk << "scenariomatch test: cannot write the verdicts\n";
        fail(kExitOutput);
    }
    return m_status;
}

// The greatest status wins: what could not be written is worse than a case that fails.
void TestRun::fail(int status)
{
    m_status = std::max(m_status, status);
}

// Says what is wrong with each of the files before anything is run.
bool TestRun::readFiles()
{
    bool isGood = true;
    for (const std::string& name : m_options.files) {
        errno = 0;
        const std::optional<std::string> text = readTextInput(name);
        if (!text) {
            const std::string reason =
                errno == 0 ? "it is larger than 64 MiB" : std::strerror(errno);
            m_talk << fmt::format("scenariomatch test: cannot read {}: {}\n", name, reason);
            isGood = false;
            continue;
        }
        RuleTestReading reading = readRuleTest(*text, name);
        if (reading.file) {
            m_files.push_back(*std::move(reading.file));
        } else {
            m_talk << reading.problem;
            isGood = false;
        }
    }
    return isGood;
}

// Says below each missing event why it was not found; for the first ones, each of which takes a
// run.
void TestRun::addReasons(const RuleCase& ruleCase, RuleVerdict& verdict)
{
    constexpr std::size_t kMostReasons = 10;
    for (std::size_t i = std::min(verdict.missing.size(), kMostReasons); i-- > 0;) {
        const RuleVerdict::Missing& missing = verdict.missing[i];
        const std::optional<std::string> reason =
            whyMissing(ruleCase, (*ruleCase.events)[missing.expected]);
        if (reason) {
            verdict.differences.insert(
                verdict.differences.begin() + static_cast<std::ptrdiff_t>(missing.difference) + 1,
                "  " + *reason);
        }
    }
}

void TestRun::runFile(const RuleTestFile& file, RuleReport& report)
{
    std::map<std::size_t, RuleVerdict> differing;
    std::vector<RuleVerdict> verdicts;
    for (const RuleCase& ruleCase : file.cases) {
        ConstraintCoverage* const coverage =
            m_options.hasCoverage ? &m_coverage[ruleCase.parameterFile] : nullptr;
        const RuleRun run = runRuleCase(ruleCase, coverage, m_ruleTalk);
        verdicts.push_back(judge(ruleCase, run));
        const RuleVerdict& verdict = verdicts.back();
        if (!verdict.isPassed() && !verdict.fault && ruleCase.events) {
            differing.emplace(verdicts.size() - 1, verdict);
        }
    }
    const bool isUpdated = m_options.isUpdate && !differing.empty() && update(file, differing);
    for (std::size_t i = 0; i < verdicts.size(); ++i) {
        if (isUpdated && differing.contains(i)) {
            // What must be absent and was found is not made right by writing it down.
            verdicts[i].differences = verdicts[i].forbidden;
        }
        if (!isUpdated) {
            addReasons(file.cases[i], verdicts[i]);
        }
        report.add(file.name, file.cases[i], verdicts[i]);
        if (!verdicts[i].isPassed()) {
            fail(kExitNo);
        }
    }
}

bool TestRun::update(const RuleTestFile& file, const std::map<std::size_t, RuleVerdict>& verdicts)
{
    const std::optional<std::string> text = updatedRuleTest(file, verdicts);
    if (!text) {
        m_talk << fmt::format(
            "scenariomatch test: {}: the events cannot be replaced safely; write them as a list "
            "of their own\n",
            file.name);
        return false;
    }
    if (!replaceFile(file.name, *text)) {
        m_talk << fmt::format(
            "scenariomatch test: cannot write {}: {}\n", file.name, std::strerror(errno));
        fail(kExitOutput);
        return false;
    }
    m_talk << fmt::format("{}: events of {} cases written\n", file.name, verdicts.size());
    return true;
}

void TestRun::printCoverage()
{
    const bool isXml = m_options.format == RuleReportFormat::JUnit;
    const std::string prefix = m_options.format == RuleReportFormat::Tap ? "# " : "";
    std::ostream& out = isXml ? m_talk : m_data;
    for (const auto& [parameterFile, coverage] : m_coverage) {
        out << prefix << "coverage of " << parameterFile << '\n';
        coverage.print(out, prefix);
        if (m_options.needsCoverage && !coverage.isFull()) {
            fail(kExitNo);
        }
    }
}

} // namespace

CLI::App* addTestCommand(CLI::App& program, TestOptions& options)
{
    CLI::App* const command = program.add_subcommand("test", "Test rules");
    command
        ->add_option(
            "FILES", options.files, "Files of tests (YAML or JSON, see docs/testing-rules.md)")
        ->type_name("FILE")
        ->required();
    const Choices<RuleReportFormat> formats{
        {"text", RuleReportFormat::Text},
        {"tap", RuleReportFormat::Tap},
        {"junit", RuleReportFormat::JUnit}};
    addChoice(
        *command, "--format", options.format, formats, "Format of the verdicts (default: text)");
    command->add_flag("--update", options.isUpdate, "Write the events found over those expected");
    command->add_flag(
        "--coverage", options.hasCoverage, "Tell how often each constraint was true and false");
    command->add_flag(
        "--require-coverage",
        options.needsCoverage,
        "As --coverage; fail where a constraint was not both");
    command->footer(footerText(
        {.description =
             "Runs models on small scenes or tracks, and compares the events found with those that "
             "a file of tests expects. What differs is shown, and the exit status is 1.",
         .environment = {kPluginPathVariable, kTemporaryFolderVariable},
         .examples = {
             "scenariomatch test examples/gate/tests/door.yaml",
             "scenariomatch test examples/gate/tests/door.yaml --coverage --format tap"}}));
    return command;
}

int runTest(const TestOptions& options, std::ostream& out, std::ostream& talk)
{
    TestOptions complete = options;
    complete.hasCoverage = options.hasCoverage || options.needsCoverage;
    return TestRun(complete, out, talk).perform();
}

} // namespace scenariomatch
