#include "app/NewCommand.h"

#include "app/CppNames.h"
#include "app/ExitStatus.h"
#include "types/TextFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <ostream>
#include <string_view>
#include <system_error>
#include <vector>

namespace scenariomatch
{

namespace
{

// The template is a project of its own, which the tests build; this is what it is called.
constexpr std::string_view kTemplateName = "LeftOf";
constexpr std::array<std::string_view, 3> kTemplateFiles{
    "CMakeLists.txt", "LeftOf.cpp", "LeftOfTest.cpp"};

struct NewFile
{
    std::filesystem::path path;
    std::string text;
};

std::string renamed(std::string text, const std::string& name)
{
    for (std::size_t at = text.find(kTemplateName); at != std::string::npos;
         at = text.find(kTemplateName, at + name.size())) {
        text.replace(at, kTemplateName.size(), name);
    }
    return text;
}

// Nothing when the template is not complete.
std::vector<NewFile> filesOf(
    const std::filesystem::path& templateFolder,
    const std::filesystem::path& folder,
    const std::string& name)
{
    std::vector<NewFile> files;
    for (const std::string_view file : kTemplateFiles) {
        const std::optional<std::string> text = readTextFile((templateFolder / file).string());
        if (!text) {
            return {};
        }
        files.push_back({folder / renamed(std::string(file), name), renamed(*text, name)});
    }
    return files;
}

// Never over a file that is there.
bool writeNew(const NewFile& file)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(
        std::fopen(file.path.c_str(), "wbx"), std::fclose);
    return stream != nullptr &&
           std::fwrite(file.text.data(), 1, file.text.size(), stream.get()) == file.text.size() &&
           std::fflush(stream.get()) == 0;
}

// As a shell takes it for one word.
std::string shellWord(const std::string& text)
{
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

// Empty when all files are written.
std::string writeAll(const std::vector<NewFile>& files, const std::filesystem::path& folder)
{
    std::error_code error;
    for (const NewFile& file : files) {
        if (std::filesystem::exists(std::filesystem::symlink_status(file.path, error))) {
            return file.path.string() + " is there already; nothing is written";
        }
    }
    std::filesystem::create_directories(folder, error);
    if (error) {
        return "cannot make " + folder.string() + ": " + error.message();
    }
    for (const NewFile& file : files) {
        if (!writeNew(file)) {
            return "cannot write " + file.path.string() + ": " + std::strerror(errno);
        }
    }
    return "";
}

} // namespace

CLI::App* addNewCommand(CLI::App& program, NewOperatorOptions& options)
{
    CLI::App* const command = program.add_subcommand("new", "Write a project to begin with");
    command->require_subcommand(1);
    command->footer("Examples:\n"
                    "  scenariomatch new operator LeftOf\n"
                    "  scenariomatch new operator Faster --output my-operators/faster");
    CLI::App* const made =
        command->add_subcommand("operator", "Write an operator with its test, ready to build");
    made->add_option("NAME", options.name, "Name of the operator, its class and its file")
        ->required();
    made->add_option("--output", options.output, "Folder to write into; default: NAME")
        ->type_name("FOLDER");
    made->footer("Examples:\n"
                 "  scenariomatch new operator LeftOf\n"
                 "  scenariomatch new operator Faster --output my-operators/faster");
    return made;
}

int runNewOperator(
    const NewOperatorOptions& options,
    const std::filesystem::path& templateFolder,
    std::ostream& talk)
{
    talk << "scenariomatch new operator: ";
    const std::string nameFault = cppNameFault(options.name);
    if (!nameFault.empty()) {
        talk << '"' << options.name << "\" " << nameFault << '\n';
        return kExitUsage;
    }
    const std::filesystem::path folder = options.output.empty() ? options.name : options.output;
    const std::vector<NewFile> files = filesOf(templateFolder, folder, options.name);
    if (files.empty()) {
        talk << "no template in " << templateFolder.string() << '\n';
        return kExitModel;
    }
    const std::string fault = writeAll(files, folder);
    if (!fault.empty()) {
        talk << fault << '\n';
        return kExitOutput;
    }
    const std::string where = shellWord(folder.string());
    talk << options.name << " is in " << where << "; build and test it with\n  cmake -S " << where
         << " -B " << where << "/build && cmake --build " << where << "/build && ctest --test-dir "
         << where << "/build\n";
    return kExitDone;
}

} // namespace scenariomatch
