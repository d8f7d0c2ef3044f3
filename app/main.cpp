#include "app/CommandLine.h"
#include "app/ExitStatus.h"
#include "app/InstalledFiles.h"
#include "app/Interrupt.h"
#include "app/RunCommand.h"

#include <cstdlib>
#include <exception>
#include <iostream>

namespace
{

using scenariomatch::kExitDone;
using scenariomatch::kExitOutput;
using scenariomatch::kExitUsage;

// Help and version are no mistakes; every mistake has the same status.
int answerParseError(const CLI::App& program, const CLI::ParseError& error)
{
    return program.exit(error) == 0 ? kExitDone : kExitUsage;
}

int runProgram(int argc, char** argv)
{
    scenariomatch::CommandLine line;
    try {
        line.program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return answerParseError(line.program, error);
    }
    if (line.run->parsed()) {
        return runRun(line.runOptions, std::cout, std::cerr);
    }
    if (line.check->parsed()) {
        return runCheck(line.checkOptions, std::cout, std::cerr);
    }
    if (line.synth->parsed()) {
        return runSynth(line.synthOptions, std::cout, std::cerr);
    }
    if (line.generate->parsed()) {
        return runGenerate(line.generateOptions, std::cout, std::cerr);
    }
    if (line.score->parsed()) {
        return runScore(line.scoreOptions, std::cout, std::cerr);
    }
    if (line.test->parsed()) {
        return runTest(line.testOptions, std::cout, std::cerr);
    }
    if (line.explain->parsed()) {
        return runExplain(line.explainOptions, std::cout, std::cerr);
    }
    if (line.repair->parsed()) {
        return runRepair(line.repairOptions, std::cerr);
    }
    if (line.report->parsed()) {
        return runReport(line.reportOptions, std::cerr);
    }
    if (line.newOperator->parsed()) {
        return runNewOperator(
            line.newOperatorOptions,
            scenariomatch::installedOperatorTemplate(),
            std::cout,
            std::cerr);
    }
    return runOperators(line.operatorsOptions, std::cout, std::cerr);
}

// What went to standard output has arrived, or the status says that it has not.
int judgeOutput(int status)
{
    std::cout.flush();
    if (std::cout.good() || status == kExitOutput) {
        return status;
    }
    std::cerr << "scenariomatch: cannot write to standard output\n";
    return kExitOutput;
}

} // namespace

int main(int argc, char** argv)
{
    // Seconds between two frames are those of the clocks as written, wherever the program runs:
    // some zones have left out hours or a day.
    setenv("TZ", "UTC0", 1);
    scenariomatch::ignoreWriteSignals();
    try {
        return judgeOutput(runProgram(argc, argv));
    } catch (const std::exception& error) {
        std::cerr << "scenariomatch: " << error.what() << '\n';
        return kExitUsage;
    }
}
