#include "app/NewCommand.h"

#include "app/CppNames.h"
#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/NewFiles.h"
#include "app/OptionChecks.h"
#include "types/TextFile.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>
#include <ostream>
#include <set>
#include <string_view>
#include <vector>

namespace scenariomatch
{

namespace
{

// The template is a project of its own, which the tests build; this is what it is called.
constexpr std::string_view kTemplateName = "LeftOf";
constexpr std::array<std::string_view, 3> kTemplateFiles{
    "CMakeLists.txt", "LeftOf.cpp", "LeftOfTest.cpp"};

// What the standard operators and their files are called, where C++ could have it as a name. An
// operator of such a name would take the place of a standard one.
bool isStandardName(std::string_view name)
{
    static const std::set<std::string_view> names{
        "abs",           "add",          "after",         "and",
        "before",        "contains",     "crossed",       "crossedLeft",
        "crossedRight",  "crossed_left", "crossed_right", "displacement",
        "distance",      "divide",       "duration",      "during",
        "equal",         "equals",       "finishedBy",    "finished_by",
        "finishes",      "gap",          "greater",       "greater_equal",
        "heading",       "in",           "less",          "less_equal",
        "max",           "meets",        "metBy",         "met_by",
        "min",           "multiply",     "near",          "not",
        "not_equal",     "or",           "out",           "overlappedBy",
        "overlapped_by", "overlaps",     "speed",         "startedBy",
        "started_by",    "starts",       "stationary",    "subtract",
        "value"};
    return names.contains(name);
}

// Why no operator may have the name; empty when one may.
std::string operatorNameFault(const std::string& name)
{
    std::string fault = cppNameFault(name);
    if (fault.empty() && isStandardName(name)) {
        fault = "names a standard operator: expected another name";
    }
    return fault;
}

std::string renamed(std::string text, const std::string& name)
{
    for (std::size_t at = text.find(kTemplateName); at != std::string::npos;
         at = text.find(kTemplateName, at + name.size())) {
        text.replace(at, kTemplateName.size(), name);
    }
    return text;
}

// Nothing when the template is not complete.
std::vector<SourceFile>
filesOf(const std::filesystem::path& templateFolder, const std::string& name)
{
    std::vector<SourceFile> files;
    for (const std::string_view file : kTemplateFiles) {
        const std::optional<std::string> text = readTextFile((templateFolder / file).string());
        if (!text) {
            return {};
        }
        files.push_back({renamed(std::string(file), name), renamed(*text, name)});
    }
    return files;
}

// As a shell takes it for one word, and no program for an option.
std::string shellWord(const std::string& text)
{
    if (text.starts_with('-')) {
        return shellWord("./" + text);
    }
    const auto isPlain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("_./-").find(c) != std::string_view::npos;
    };
    if (std::all_of(text.begin(), text.end(), isPlain)) {
        return text;
    }
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return word + "'";
}

int fail(int status, std::ostream& talk, const std::string& reason)
{
    talk << "scenariomatch new operator: " << reason << '\n';
    return status;
}

} // namespace

CLI::App* addNewCommand(CLI::App& program, NewOperatorOptions& options)
{
    CLI::App* const command = program.add_subcommand("new", "Write a project to begin with");
    command->require_subcommand(1);
    const std::vector<std::string> examples{
        "scenariomatch new operator LeftOf",
        "scenariomatch new operator Faster --output my-operators/faster"};
    command->footer(footerText(
        {.description =
             "Writes a small project of one kind into a folder of its own, ready to be built.",
         .examples = examples}));
    CLI::App* const made =
        command->add_subcommand("operator", "Write an operator with its test, ready to build");
    made->add_option("NAME", options.name, "Name of the operator and its file")
        ->type_name("")
        ->required();
    made->add_option("--output", options.output, "Folder to write into; default: NAME")
        ->type_name("FOLDER")
        ->check(notEmpty());
    made->footer(footerText(
        {.description =
             "Writes the operator plug-in, a test of it and a build file that finds the installed "
             "package, and prints the commands that build and try them. "
             "docs/writing-operators.md goes on from there. Nothing is written over.",
         .examples = examples}));
    return made;
}

int runNewOperator(
    const NewOperatorOptions& options,
    const std::filesystem::path& templateFolder,
    std::ostream& out,
    std::ostream& talk)
{
    const std::string nameFault = operatorNameFault(options.name);
    if (!nameFault.empty()) {
        return fail(kExitUsage, talk, fmt::format("{:?} {}", options.name, nameFault));
    }
    const std::vector<SourceFile> files = filesOf(templateFolder, options.name);
    if (files.empty()) {
        return fail(kExitOutput, talk, fmt::format("no template in {}", templateFolder.string()));
    }
    const std::string folder = options.output.empty() ? options.name : options.output;
    const std::string fault = writeNewFiles(folder, files, OldFiles::Keep, out);
    if (!fault.empty()) {
        return fail(kExitOutput, talk, fault);
    }
    const std::string where = shellWord(folder);
    talk << fmt::format(
        "scenariomatch new operator: build and test {0} with\n  cmake -S {1} -B {1}/build && cmake "
        "--build {1}/build && ctest --test-dir {1}/build\n",
        options.name,
        where);
    return kExitDone;
}

} // namespace scenariomatch
