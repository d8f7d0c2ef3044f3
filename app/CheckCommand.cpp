#include "app/CheckCommand.h"

#include "app/CheckInput.h"
#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/InstalledFiles.h"
#include "app/OptionChecks.h"
#include "app/sample/TrackSample.h"
#include "lint/Checks.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <ostream>
#include <utility>

namespace scenariomatch
{

namespace
{

RunParameterSources sourcesOf(const CheckOptions& options)
{
    RunParameterSources sources = RecognitionSetup::sourcesFor(options.parameterFile);
    if (!options.common.empty()) {
        sources.commonPath = options.common + (options.common.ends_with('/') ? "" : "/");
    }
    if (!options.context.empty()) {
        sources.settings.emplace_back("RHMContext", options.context);
    }
    return sources;
}

// Everything that a parameter file names. False, with the reason, when it cannot be read itself.
bool readProject(
    const CheckOptions& options, CheckInput& input, lint::Diagnostics& found, std::string& error)
{
    const std::optional<StorageFile> file = readStorageFile(options.parameterFile, error);
    if (!file) {
        return false;
    }
    const std::optional<RunParameters> parameters =
        mergeParameters(*file, sourcesOf(options), error);
    if (!parameters) {
        return false;
    }
    readCheckParameters(options.parameterFile, *file, *parameters, options.context, input, found);
    return true;
}

// Model files by themselves, with the operators that came with the program.
void readModels(const CheckOptions& options, CheckInput& input, lint::Diagnostics& found)
{
    for (const std::string& file : options.modelFiles) {
        input.files.models.push_back({file, {}});
    }
    input.files.operators = lint::NamedFile{installedVocabulary().string(), {}};
    readCheckOperators(installedOperatorFolder().string(), input);
    if (!options.context.empty()) {
        readCheckContext({options.context, {}}, input, found);
    }
}

// Tries the models on the sample, where nothing is wrong with them.
std::optional<RunFault> checkSample(
    const CheckOptions& options,
    const lint::Project& project,
    lint::Diagnostics& found,
    std::ostream& talk)
{
    if (found.hasErrors()) {
        talk << "scenariomatch check: the tracks are not looked at while there are errors\n";
        return std::nullopt;
    }
    RunParameterSources sources = sourcesOf(options);
    sources.leaveEventFileAlone();
    return checkTracks(options.sample, sources, project, found, talk);
}

void writeSummary(const lint::Diagnostics& found, std::ostream& talk)
{
    const auto errors =
        std::count_if(found.all().begin(), found.all().end(), [](const auto& diagnostic) {
            return diagnostic.rule->severity == lint::Severity::Error;
        });
    const auto all = static_cast<std::ptrdiff_t>(found.all().size());
    if (all != 0) {
        talk << fmt::format(
            "scenariomatch check: errors: {}, warnings: {}\n", errors, all - errors);
    }
}

} // namespace

CLI::App* addCheckCommand(CLI::App& program, CheckOptions& options)
{
    const Choices<DiagnosticFormat> formats{
        {"text", DiagnosticFormat::Text},
        {"json", DiagnosticFormat::Json},
        {"sarif", DiagnosticFormat::Sarif}};
    CLI::App* const command =
        program.add_subcommand("check", "Say what is wrong in models and all files of a project");
    command
        ->add_option(
            "--params", options.parameterFile, "Parameter file; all that it names is checked")
        ->type_name("FILE");
    command->add_option("MODELFILE", options.modelFiles, "Model files by themselves")
        ->type_name("FILE");
    command
        ->add_option(
            "--common",
            options.common,
            "Folder of the files that the parameter file names, instead of its own")
        ->type_name("FOLDER");
    command
        ->add_option(
            "--context",
            options.context,
            "Context, instead of the one that the parameter file names")
        ->type_name("FILE");
    addTrackOptions(
        *command,
        options.sample,
        "a sample that models are tried on; only with --params",
        "--tracks-format");
    addChoice(
        *command, "--format", options.format, formats, "Format of the messages (default: text)");
    command->callback([&options] {
        if (options.parameterFile.empty() == options.modelFiles.empty()) {
            throw CLI::ValidationError("either --params or MODELFILE is needed");
        }
        if (options.parameterFile.empty() && !options.sample.tracks.empty()) {
            throw CLI::ValidationError("--tracks needs --params");
        }
    });
    command->footer(footerText(
        {.description =
             "Reads a parameter file with all that it names, or model files by themselves, and "
             "tells what recognition would pass over in silence or take for something "
             "else: each mistake with its place, its source line and, where there is "
             "one, what was probably meant. The name in brackets behind a message is "
             "that of its kind; docs/diagnostics.md explains them all.",
         .examples = {
             "scenariomatch check --params examples/lobby/lobby.yaml",
             "scenariomatch check examples/gate/crossings.txt --format json"}}));
    return command;
}

int runCheck(const CheckOptions& options, std::ostream& out, std::ostream& talk)
{
    CheckInput input;
    lint::Diagnostics found;
    std::string error;
    if (options.parameterFile.empty()) {
        readModels(options, input, found);
    } else if (!readProject(options, input, found, error)) {
        talk << "scenariomatch check: " << error << '\n';
        return kExitModel;
    }
    const lint::Project project(input.files, found);
    lint::checkProject(project, found);
    const std::optional<RunFault> fault =
        options.sample.tracks.empty() ? std::nullopt : checkSample(options, project, found, talk);
    writeDiagnostics(out, found.all(), options.format);
    writeSummary(found, talk);
    if (fault) {
        talk << "scenariomatch check: " << fault->reason << '\n';
        return fault->status;
    }
    if (input.isIncomplete || project.isIncomplete()) {
        return kExitModel;
    }
    return found.hasErrors() ? kExitNo : kExitDone;
}

} // namespace scenariomatch
