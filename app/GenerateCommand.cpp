#include "app/GenerateCommand.h"

#include "app/AccessorCheck.h"
#include "app/DiagnosticWriter.h"
#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/NewFiles.h"
#include "app/OptionChecks.h"
#include "app/RunFiles.h"
#include "lint/Source.h"
#include "types/AccessorSources.h"
#include "types/CAllClasses.h"
#include "types/ConversionSources.h"
#include "types/TextFile.h"
#include "types/TypeSources.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <iterator>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

int fail(int status, std::ostream& talk, const std::string& reason)
{
    talk << "scenariomatch generate: " << reason << '\n';
    return status;
}

std::vector<SourceFile> sourcesOf(const std::vector<CClass>& types, GeneratedPart part)
{
    std::vector<SourceFile> files;
    const auto add = [&files](std::vector<SourceFile> more) {
        std::move(more.begin(), more.end(), std::back_inserter(files));
    };
    if (part == GeneratedPart::All || part == GeneratedPart::Types) {
        files.push_back(objectHeader(types));
        for (const CClass& type : types) {
            add(typeSources(type));
        }
    }
    if (part == GeneratedPart::All || part == GeneratedPart::Accessor) {
        add(accessorSources(types));
    }
    if (part == GeneratedPart::All || part == GeneratedPart::Conversion) {
        add(conversionSources(types));
    }
    return files;
}

// No file may be written over the description itself.
std::string clashWithObjects(const GenerateOptions& options, const std::vector<SourceFile>& files)
{
    for (const SourceFile& file : files) {
        std::string clash =
            clashOf({{"--objects", options.objects}}, {{"--output", pathIn(options.output, file)}});
        if (!clash.empty()) {
            return clash;
        }
    }
    return "";
}

int writeAll(
    const GenerateOptions& options,
    const std::vector<SourceFile>& files,
    std::ostream& out,
    std::ostream& talk)
{
    const std::string clash = clashWithObjects(options, files);
    if (!clash.empty()) {
        return fail(kExitUsage, talk, clash);
    }
    const OldFiles oldFiles = options.isForced ? OldFiles::Replace : OldFiles::Keep;
    const std::string fault = writeNewFiles(options.output, files, oldFiles, out);
    if (fault.empty()) {
        return kExitDone;
    }
    const bool isKept = fault.ends_with("nothing is written");
    return fail(kExitOutput, talk, fault + (isKept ? " (--force replaces it)" : ""));
}

} // namespace

CLI::App* addGenerateCommand(CLI::App& program, GenerateOptions& options)
{
    CLI::App* const command =
        program.add_subcommand("generate", "Write accessor sources for object types");
    command->add_option("--objects", options.objects, "Object-type file (see docs/file-formats.md)")
        ->type_name("FILE")
        ->required();
    command->add_option("--output", options.output, "Folder to write to; made where it is missing")
        ->type_name("FOLDER")
        ->check(notEmpty())
        ->required();
    const Choices<GeneratedPart> parts{
        {"types", GeneratedPart::Types},
        {"accessor", GeneratedPart::Accessor},
        {"conversion", GeneratedPart::Conversion}};
    addChoice(
        *command,
        "--only",
        options.part,
        parts,
        "Only the types' classes (types), the functions over them (accessor) or the skeleton that "
        "converts objects (conversion)");
    command->add_flag("--force", options.isForced, "Replace files that are there");
    command->footer(footerText(
        {.description =
             "Writes C++ classes for the object types of a description, functions that reach any "
             "attribute of any object by its name, and the skeleton of a class that "
             "turns an application's objects into them. All files are written or none, "
             "and each is named on standard output.",
         .examples = {
             "scenariomatch generate --objects examples/accessors/objects.txt --output accessors",
             "scenariomatch generate --objects examples/lobby/objects.txt --output lobby --only "
             "types"}}));
    return command;
}

int runGenerate(const GenerateOptions& options, std::ostream& out, std::ostream& talk)
{
    errno = 0;
    const std::optional<std::string> text = readTextInput(options.objects);
    if (!text) {
        const std::string reason = errno == 0 ? "it is larger than 64 MiB" : std::strerror(errno);
        return fail(kExitModel, talk, fmt::format("cannot read {}: {}", options.objects, reason));
    }
    const lint::Source source(options.objects, *text);
    CAllClasses types;
    types.readText(source.text());
    const bool areAttributesWritten = options.part != GeneratedPart::Accessor;
    const std::vector<PlacedFault> faults =
        accessorFaults(source, types.m_classes, areAttributesWritten);
    for (const PlacedFault& fault : faults) {
        writePlacedMessage(talk, fault.range, fault.reason);
    }
    if (!faults.empty()) {
        return kExitModel;
    }
    return writeAll(options, sourcesOf(types.m_classes, options.part), out, talk);
}

} // namespace scenariomatch
