#include "app/GenerateCommand.h"

#include "app/AccessorCheck.h"
#include "app/ExitStatus.h"
#include "app/OptionChecks.h"
#include "app/RunFiles.h"
#include "types/AccessorSources.h"
#include "types/CAllClasses.h"
#include "types/ConversionSources.h"
#include "types/TextFile.h"
#include "types/TypeSources.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <iterator>
#include <optional>
#include <ostream>
#include <system_error>
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

std::string pathOf(const std::string& folder, const SourceFile& file)
{
    return (std::filesystem::path(folder) / file.name).string();
}

// Whether anything is there, a link to nowhere too.
bool isThere(const std::string& path)
{
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

// Makes sure that all files can be written without loss before the first one is.
int prepareFolder(
    const GenerateOptions& options, const std::vector<SourceFile>& files, std::ostream& talk)
{
    for (const SourceFile& file : files) {
        const std::string path = pathOf(options.output, file);
        const std::string clash = clashOf({{"--objects", options.objects}}, {{"--output", path}});
        if (!clash.empty()) {
            return fail(kExitUsage, talk, clash);
        }
    }
    const auto old = std::find_if(files.begin(), files.end(), [&options](const SourceFile& file) {
        return !options.isForced && isThere(pathOf(options.output, file));
    });
    if (old != files.end()) {
        return fail(
            kExitOutput,
            talk,
            fmt::format(
                "{} is there already; nothing is written (--force writes over it)",
                pathOf(options.output, *old)));
    }
    std::error_code error;
    std::filesystem::create_directories(options.output, error);
    if (error) {
        return fail(
            kExitOutput, talk, fmt::format("cannot make {}: {}", options.output, error.message()));
    }
    return kExitDone;
}

int writeFiles(
    const std::string& folder,
    const std::vector<SourceFile>& files,
    std::ostream& out,
    std::ostream& talk)
{
    for (const SourceFile& file : files) {
        const std::string path = pathOf(folder, file);
        if (!writeSourceFile(folder, file)) {
            const std::string reason = std::strerror(errno);
            return fail(kExitOutput, talk, fmt::format("cannot write {}: {}", path, reason));
        }
        out << path << '\n';
    }
    out.flush();
    if (!out.good()) {
        return fail(kExitOutput, talk, "cannot write the names of the files");
    }
    return kExitDone;
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
    command->add_flag("--force", options.isForced, "Write over files that are there");
    command->footer(
        "Examples:\n"
        "  scenariomatch generate --objects examples/accessors/objects.txt --output accessors\n"
        "  scenariomatch generate --objects examples/lobby/objects.txt --output lobby --only "
        "types");
    return command;
}

int runGenerate(const GenerateOptions& options, std::ostream& out, std::ostream& talk)
{
    errno = 0;
    const std::optional<std::string> text = readTextFile(options.objects);
    if (!text) {
        const std::string reason = errno == 0 ? "it is larger than 64 MiB" : std::strerror(errno);
        return fail(kExitModel, talk, fmt::format("cannot read {}: {}", options.objects, reason));
    }
    CAllClasses types;
    types.readText(*text);
    const bool areAttributesWritten = options.part != GeneratedPart::Accessor;
    const std::vector<std::string> problems =
        accessorProblems(options.objects, types.m_classes, areAttributesWritten);
    for (const std::string& problem : problems) {
        talk << problem << '\n';
    }
    if (!problems.empty()) {
        return kExitModel;
    }
    const std::vector<SourceFile> files = sourcesOf(types.m_classes, options.part);
    const int status = prepareFolder(options, files, talk);
    return status == kExitDone ? writeFiles(options.output, files, out, talk) : status;
}

} // namespace scenariomatch
