// Writes the program's manual pages and completions, as they lie below share/ when installed.
//
//     scenariomatch_manual FOLDER VERSION DATE

#include "app/CommandLine.h"
#include "app/manual/CommandTable.h"
#include "app/manual/Completion.h"
#include "app/manual/ManPage.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>

namespace
{

void write(const std::filesystem::path& path, const std::string& text)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file.good()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

void writeManual(const std::filesystem::path& folder, const scenariomatch::Edition& edition)
{
    const scenariomatch::CommandLine line;
    const scenariomatch::CommandEntry program = scenariomatch::describeProgram(line.program);
    for (const scenariomatch::CommandEntry* const command : allCommands(program)) {
        write(folder / "man/man1" / (command->path("-") + ".1"), manPage(*command, edition));
    }
    const std::string& name = program.words.front();
    write(folder / "bash-completion/completions" / name, bashCompletion(program));
    write(folder / "zsh/vendor-completions" / ("_" + name), zshCompletion(program));
    write(folder / "fish/vendor_completions.d" / (name + ".fish"), fishCompletion(program));
}

} // namespace

int main(int argc, char** argv)
{
    const std::span<char*> words(argv, static_cast<std::size_t>(argc));
    if (words.size() != 4) {
        std::cerr << "usage: scenariomatch_manual FOLDER VERSION DATE\n";
        return 1;
    }
    try {
        writeManual(words[1], {words[2], words[3]});
    } catch (const std::exception& error) {
        std::cerr << "scenariomatch_manual: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
