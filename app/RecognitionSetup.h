#pragma once

#include "app/RunFiles.h"
#include "app/RunParameters.h"
#include "app/StorageFile.h"
#include "host/rhmAbstractProcessEventRecognition.h"

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch
{

// How many candidates of a model are tried in a frame unless a run says otherwise: seconds of work.
constexpr unsigned kMaximumCandidates = 10'000'000;

// Why a run ends before its time: the exit status and the reason.
struct RunFault
{
    int status = 0;
    std::string reason;
};

// Makes recognition processes of a parameter file, and judges first what the process would take
// without a word.
//
// The steps are in this order; one that fails leaves the fault behind. The stream must outlive it.
//
// Example:
//     RecognitionSetup setup(std::cerr, "--set");
//     if (setup.read(RecognitionSetup::sourcesFor("lobby.yaml"))) {
//         const auto process = setup.createProcess();
//     }
class RecognitionSetup
{
public:
    // Warnings go to talk. What stands for the place of settings in messages.
    RecognitionSetup(std::ostream& talk, std::string settingsPlace);

    // A parameter file with what is installed where it names nothing. Settings are to be added
    // behind those that are there.
    static RunParameterSources
    sourcesFor(const std::string& parameterFile, unsigned maximumCandidates = kMaximumCandidates);

    // Reads the parameters and sees that the files that they name are there.
    bool read(RunParameterSources sources);

    // Warns of operators and settings, and prints the errors that the command "check" finds in the
    // parameter file and what it names.
    void warn();

    // A process that is ready for its first frame, with at least one model; null after a fault.
    //
    // The plug-in's code runs here, which writes to standard output as it likes.
    std::unique_ptr<rhmAbstractProcessEventRecognition> createProcess();

    // What was read.
    const StorageFile& parameterFile() const { return m_file; }

    const RunParameters& parameters() const { return m_parameters; }

    // Empty when the parameter is given nowhere.
    std::string textOf(const std::string& key) const;
    // The files that must be there, also those that are not named.
    std::vector<RunFile> neededFiles() const;

    const std::optional<RunFault>& fault() const { return m_fault; }

private:
    bool fail(int status, const std::string& reason);

    bool checkFiles();
    bool checkOperators();
    bool checkContext();
    void warnOfSettings();
    bool isToldBefore(std::string_view line) const;
    bool applySetters(rhmAbstractProcessEventRecognition& process);
    bool initProcess(rhmAbstractProcessEventRecognition& process);
    bool checkModels(const rhmAbstractProcessEventRecognition& process);

    std::ostream& m_talk;
    std::string m_settingsPlace;
    StorageFile m_file;
    RunParameterSources m_sources;
    RunParameters m_parameters;
    std::string m_operatorWarning;
    // What the process says of the context, line by line.
    std::set<std::string, std::less<>> m_contextErrors;
    bool m_isChecked = false;
    std::optional<RunFault> m_fault;
};

} // namespace scenariomatch
