// All that the checker reads: up to five texts, one behind the other with a line "====" between
// them, which are models, settings, constants, object types and a description of operators.
#include "app/DiagnosticWriter.h"
#include "app/OperatorsCommand.h"
#include "fuzz/FuzzFile.h"
#include "lint/Checks.h"

#include <array>
#include <sstream>

namespace
{

using namespace scenariomatch;

const std::map<std::string, lint::LoadedOperator>& loadedOperators()
{
    static const std::map<std::string, lint::LoadedOperator> loaded = [] {
        std::map<std::string, lint::LoadedOperator> found;
        for (OperatorModule& module : loadOperatorModules(OPERATOR_FOLDER).modules) {
            found[module.name] = {std::move(module.description), module.isTemporal};
        }
        return found;
    }();
    return loaded;
}

lint::ProjectFiles filesOf(std::string_view text)
{
    const std::array names{"models.txt", "settings.txt", "constants.txt", "types.txt", "words.txt"};
    std::array<std::string, names.size()> paths;
    for (std::size_t i = 0; i < names.size(); ++i) {
        paths.at(i) = fuzzFolder().write(names.at(i), takePart(text));
    }
    lint::ProjectFiles files;
    files.engine = {fuzzFolder().write("engine.txt", kEngineFile), {}};
    files.objectTypes = {paths[3], {}};
    files.operators = {paths[4], {}};
    files.loaded = loadedOperators();
    files.scene = {{"Zone", "A", "scene.xml:3", {}}};
    return files;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    silenceStreams();
    lint::Diagnostics found;
    const lint::Project project(filesOf(textOf(data, size)), found);
    lint::checkProject(project, found);
    found.sort();
    std::ostringstream written;
    for (const auto format :
         {DiagnosticFormat::Text, DiagnosticFormat::Json, DiagnosticFormat::Sarif}) {
        writeDiagnostics(written, found.all(), format);
    }
    return 0;
}
