#include "app/RunCheck.h"

#include "app/CheckInput.h"
#include "app/DiagnosticWriter.h"
#include "lint/Checks.h"

#include <algorithm>
#include <exception>
#include <ostream>

namespace scenariomatch
{

namespace
{

void writeErrors(const CheckInput& input, const lint::Diagnostics& found, std::ostream& talk)
{
    for (const lint::Diagnostic& diagnostic : found.all()) {
        const bool isOfRun = std::any_of(
            input.sources.begin(), input.sources.end(), [&](const lint::Source& source) {
                return &source == diagnostic.range.source;
            });
        if (!isOfRun && diagnostic.rule->severity == lint::Severity::Error) {
            writeDiagnosticText(talk, diagnostic);
        }
    }
}

} // namespace

void writeModelErrors(
    const std::string& parameterFile,
    const StorageFile& file,
    const RunParameters& parameters,
    std::ostream& talk)
{
    try {
        CheckInput input;
        lint::Diagnostics found;
        readCheckParameters(parameterFile, file, parameters, "", input, found);
        const lint::Project project(input.files, found);
        lint::checkProject(project, found);
        writeErrors(input, found, talk);
    } catch (const std::exception& error) {
        talk << "scenariomatch run: the models are not checked: " << error.what() << '\n';
    }
}

} // namespace scenariomatch
