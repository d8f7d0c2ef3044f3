#include "app/RepairCommand.h"

#include "app/EventFileRepair.h"
#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/RunFiles.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <ostream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace scenariomatch
{

namespace
{

namespace fs = std::filesystem;

// A file beside another one, to be given its name when all is written; it disappears otherwise.
class FileBeside
{
public:
    explicit FileBeside(const fs::path& place)
        : m_place(place)
        , m_path(place.string() + ".repair-XXXXXX")
        , m_descriptor(::mkstemp(m_path.data()))
    {
    }

    FileBeside(const FileBeside&) = delete;
    FileBeside(FileBeside&&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;
    FileBeside& operator=(FileBeside&&) = delete;

    ~FileBeside()
    {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
            std::error_code ignored;
            fs::remove(m_path, ignored);
        }
    }

    const std::string& path() const { return m_path; }

    bool isThere() const { return m_descriptor >= 0; }

    // Takes the permissions of the file that it is made from, and the name. The reason is in errno.
    bool finish(const struct stat& like)
    {
        // Only the owner of all files may give them away; another user keeps what he makes.
        static_cast<void>(::fchown(m_descriptor, like.st_uid, like.st_gid) == 0);
        if (::fchmod(m_descriptor, like.st_mode & 07777U) != 0 || ::fsync(m_descriptor) != 0 ||
            ::rename(m_path.c_str(), m_place.c_str()) != 0) {
            return false;
        }
        ::close(m_descriptor);
        m_descriptor = -1;
        return true;
    }

private:
    fs::path m_place;
    std::string m_path;
    int m_descriptor;
};

// One file's repair.
class RepairRun
{
public:
    RepairRun(const RepairOptions& options, std::ostream& talk)
        : m_options(options)
        , m_talk(talk)
        , m_output(options.output.empty() ? options.file : options.output)
    {
    }

    // The exit status.
    int perform();

private:
    int fail(int status, const std::string& reason);
    int write();
    int writeBeside();
    EventFileRepair copyTo(std::ostream& out, std::ostream& talk) const;
    bool hasChanged() const;

    const RepairOptions& m_options;
    std::ostream& m_talk;
    const std::string& m_output;
    struct stat m_status = {};
    EventFileRepair m_found;
};

int RepairRun::fail(int status, const std::string& reason)
{
    m_talk << "scenariomatch repair: " << reason << '\n';
    return status;
}

int RepairRun::perform()
{
    const std::string clash = clashOf({{"FILE", m_options.file}}, {{"--output", m_options.output}});
    if (!clash.empty()) {
        return fail(kExitUsage, clash);
    }
    if (::stat(m_options.file.c_str(), &m_status) != 0 ||
        !std::ifstream(m_options.file, std::ios::binary).is_open()) {
        return fail(kExitModel, m_options.file + ": " + std::strerror(errno));
    }
    if (!S_ISREG(m_status.st_mode)) {
        return fail(kExitModel, m_options.file + ": this is no file");
    }
    std::ostream nowhere(nullptr);
    m_found = copyTo(nowhere, m_talk);
    if (!m_found.problem.empty()) {
        m_talk << m_found.problem << '\n';
        return kExitModel;
    }
    if (!m_found.isWhole || !m_options.output.empty()) {
        const int status = write();
        if (status != kExitDone) {
            return status;
        }
    }
    m_talk << fmt::format(
        "{}: {}; frames: {}\n",
        m_output,
        m_found.isWhole ? "whole already" : "closed",
        m_found.frames);
    return kExitDone;
}

EventFileRepair RepairRun::copyTo(std::ostream& out, std::ostream& talk) const
{
    std::ifstream file(m_options.file, std::ios::binary);
    return repairEventFile(file, m_options.file, out, talk);
}

// A process may still be adding to the file.
bool RepairRun::hasChanged() const
{
    struct stat now = {};
    return ::stat(m_options.file.c_str(), &now) != 0 || now.st_ino != m_status.st_ino ||
           now.st_size != m_status.st_size || now.st_mtim.tv_sec != m_status.st_mtim.tv_sec ||
           now.st_mtim.tv_nsec != m_status.st_mtim.tv_nsec;
}

int RepairRun::write()
{
    std::error_code error;
    const fs::file_status status = fs::status(m_output, error);
    if (!fs::exists(status) || fs::is_regular_file(status)) {
        return writeBeside();
    }
    // A device or a pipe, which nothing can be put in place of.
    std::ofstream out(m_output, std::ios::binary);
    std::ostream nowhere(nullptr);
    copyTo(out, nowhere);
    out.close();
    return out ? kExitDone : fail(kExitOutput, m_output + ": " + std::strerror(errno));
}

int RepairRun::writeBeside()
{
    std::error_code error;
    FileBeside beside(fs::weakly_canonical(m_output, error));
    if (!beside.isThere()) {
        return fail(kExitOutput, fmt::format("{}: {}", beside.path(), std::strerror(errno)));
    }
    std::ofstream out(beside.path(), std::ios::binary);
    std::ostream nowhere(nullptr);
    copyTo(out, nowhere);
    out.close();
    if (!out) {
        return fail(kExitOutput, fmt::format("{}: {}", beside.path(), std::strerror(errno)));
    }
    if (hasChanged()) {
        return fail(kExitModel, m_options.file + ": somebody is writing it; nothing is changed");
    }
    return beside.finish(m_status)
               ? kExitDone
               : fail(kExitOutput, fmt::format("{}: {}", m_output, std::strerror(errno)));
}

} // namespace

CLI::App* addRepairCommand(CLI::App& program, RepairOptions& options)
{
    CLI::App* const command =
        program.add_subcommand("repair", "Close an XML event file that breaks off");
    command->add_option("FILE", options.file, "XML event file of a process that was ended")
        ->type_name("FILE")
        ->required();
    command
        ->add_option(
            "--output", options.output, "File to write instead of FILE, which stays as it is")
        ->type_name("FILE");
    command->footer(footerText(
        {.description =
             "Keeps every whole frame as it is, leaves out those that break off and says where, "
             "and adds what is missing of the file's beginning and end. A file that is whole stays "
             "as it is; one that is no event file, or is damaged in another way, is refused. Not "
             "for a file that is still being written.",
         .examples = {
             "scenariomatch repair examples/gate/cut-off.xml --output whole.xml",
             "scenariomatch repair whole.xml"}}));
    return command;
}

int runRepair(const RepairOptions& options, std::ostream& talk)
{
    return RepairRun(options, talk).perform();
}

} // namespace scenariomatch
