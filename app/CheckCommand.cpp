#include "app/CheckCommand.h"

#include "app/CheckInput.h"
#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/InstalledFiles.h"
#include "app/OptionChecks.h"
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

// Everything that a parameter file names. False, with the reason, when it cannot be read itself.
bool readProject(
    const CheckOptions& options, CheckInput& input, lint::Diagnostics& found, std::string& error)
{
    const std::optional<StorageFile> file = readStorageFile(options.parameterFile, error);
    if (!file) {
        return false;
    }
    RunParameterSources sources;
    sources.file = options.parameterFile;
    if (!options.common.empty()) {
        sources.commonPath = options.common + (options.common.ends_with('/') ? "" : "/");
    }
    sources.operatorFolder = installedOperatorFolder().string();
    sources.operatorDescription = installedVocabulary().string();
    const std::optional<RunParameters> parameters = mergeParameters(*file, sources, error);
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
    addChoice(
        *command, "--format", options.format, formats, "Format of the messages (default: text)");
    command->callback([&options] {
        if (options.parameterFile.empty() == options.modelFiles.empty()) {
            throw CLI::ValidationError("either --params or MODELFILE is needed");
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
    writeDiagnostics(out, found.all(), options.format);
    writeSummary(found, talk);
    if (input.isIncomplete || project.isIncomplete()) {
        return kExitModel;
    }
    return found.hasErrors() ? kExitNo : kExitDone;
}

} // namespace scenariomatch
