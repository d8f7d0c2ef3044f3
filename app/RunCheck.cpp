#include "app/RunCheck.h"

#include "app/CheckInput.h"
#include "app/DiagnosticWriter.h"
#include "lint/Checks.h"

#include <exception>
#include <ostream>

namespace scenariomatch
{

bool writeErrors(
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
        for (const lint::Diagnostic& diagnostic : found.all()) {
            if (diagnostic.rule->severity == lint::Severity::Error) {
                writeDiagnosticText(talk, diagnostic);
            }
        }
        return true;
    } catch (const std::exception& error) {
        talk << "scenariomatch: the models are not checked: " << error.what() << '\n';
        return false;
    }
}

} // namespace scenariomatch
