#include "bench/ChildProcess.h"

#include <chrono>
#include <fcntl.h>
#include <sched.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace scenariomatch
{

namespace
{

constexpr int kNotStarted = 127;

// Becomes the program; returns only when that fails.
void becomeProgram(const std::vector<std::string>& command)
{
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(static_cast<std::size_t>(sched_getcpu()), &cores);
    sched_setaffinity(0, sizeof cores, &cores);
    const int nothing = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    ::dup2(nothing, STDOUT_FILENO);
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    ::execv(arguments.front(), arguments.data());
}

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

} // namespace

ChildUsage runChild(const std::vector<std::string>& command)
{
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
        becomeProgram(command);
        ::_exit(kNotStarted);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child) {
        throw std::runtime_error(command.front() + " cannot be started");
    }
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
    ChildUsage result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : kNotStarted;
    result.wallSeconds = wall.count();
    result.processorSeconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    result.peakMebibytes = static_cast<double>(usage.ru_maxrss) / 1024.0;
    return result;
}

} // namespace scenariomatch
